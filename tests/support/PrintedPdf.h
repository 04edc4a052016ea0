// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/temporary_folder.h"

namespace tessel {

/// Makes the program print onto a PDF file, as it does where no printer is installed, for as long as the
/// object lives, and looks at what came out with poppler's tools.
class PrintedPdf {
  public:
    PrintedPdf();
    ~PrintedPdf();
    PrintedPdf(const PrintedPdf&) = delete;
    PrintedPdf& operator=(const PrintedPdf&) = delete;

    /// From now on the question for the file is cancelled.
    void cancel() { cancels_ = true; }
    /// How often the program has asked for a file.
    int questions() const { return questions_; }
    bool exists() const;

    struct Word {
        QString text;
        QRectF box;  ///< points, from the upper left corner of the printable area
    };
    /// The words of the page, in reading order.
    QList<Word> words() const;
    /// The box of the first word with this text that begins below `top` (points); a null one when there is
    /// none.
    QRectF find(const QString& word, double top = 0) const;
    /// The printable area, kPixelsPerPoint pixels for a point.
    QImage picture() const;
    static constexpr int kPixelsPerPoint = 2;
    /// The names of the page's fonts, one a line.
    QString fonts() const;
    /// The printable area (points, from the corner of the page).
    static QRectF printableArea();

  private:
    QByteArray run(const QString& program, const QStringList& arguments) const;

    TemporaryFolder folder_;
    int questions_ = 0;
    bool cancels_ = false;
};

}  // namespace tessel
