// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "desktop/MessageBox.h"

namespace tessel {

/// What the program asks before it ends without an export.
inline const QString kProgramExitQuestion =
    u"Attention: you have not exported an output VARN data file yet!\n"
    u"Are you sure that you wish to exit the program?"_s;

/// And before another survey takes the place of one that has changed.
inline const QString kOpeningQuestion =
    u"The survey has changes that have not been saved.\n"
    u"Are you sure that you wish to open another one?"_s;
/// Before the user may choose a text editor.
inline const QString kEditorQuestion =
    u"Note: you should use the PELR program if you wish to perminantly\n"
    u"change the default text editor used by all VARN programs.\n\n"
    u"However, you can temporarily reset the text editor now (for this session only).\n\n"
    u"Would you like to temporarily reset the current, default text editor?"_s;

/// What is reported of an import of fixed columns, and of any other, and the titles.
QString trimbleReport(std::int64_t valid, std::int64_t rejected);
QString genericReport(std::int64_t valid, std::int64_t rejected);
inline const QString kTrimbleReportTitle = u"VARN-Tesl File Import Message"_s;
inline const QString kGenericReportTitle = u"VARN-Tessel File Import Message"_s;

/// Answers the program's message boxes for a test. A box that the test did not expect fails it, and so does
/// an expected one that never came.
class ExpectedBoxes {
  public:
    ExpectedBoxes();
    ~ExpectedBoxes();
    ExpectedBoxes(const ExpectedBoxes&) = delete;
    ExpectedBoxes& operator=(const ExpectedBoxes&) = delete;

    /// The next box has an OK button and this text and title.
    void tell(const QString& text, const QString& title = QString::fromUtf16(kProgramTitle));
    /// The next box is a Yes/No question with this text and title; `yes` is the answer.
    void ask(bool yes, const QString& text, const QString& title = QString::fromUtf16(kProgramTitle));
    /// The next box's text begins with this (for reasons that the system words).
    void tellBeginning(const QString& text);

    /// Boxes that are still expected.
    qsizetype pending() const { return expected_.size(); }
    /// The box that came last.
    const MessageBox& last() const { return last_; }

  private:
    struct Expected {
        MessageBox box;
        bool answer = true;
        bool beginningOnly = false;
    };
    bool respond(const MessageBox& box);

    QList<Expected> expected_;
    MessageBox last_;
};

}  // namespace tessel
