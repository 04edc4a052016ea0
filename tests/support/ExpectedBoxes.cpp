// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ExpectedBoxes.h"

namespace tessel {

ExpectedBoxes::ExpectedBoxes() {
    setMessageResponder([this](const MessageBox& box) { return respond(box); });
}

ExpectedBoxes::~ExpectedBoxes() {
    setMessageResponder({});
    for (const Expected& missing : expected_)
        ADD_FAILURE() << "expected box did not come: " << missing.box.text.toStdString();
}

void ExpectedBoxes::tell(const QString& text, const QString& title) {
    expected_.append({{title, text, false}, true, false});
}

void ExpectedBoxes::ask(bool yes, const QString& text, const QString& title) {
    expected_.append({{title, text, true}, yes, false});
}

void ExpectedBoxes::tellBeginning(const QString& text) {
    expected_.append({{QString::fromUtf16(kProgramTitle), text, false}, true, true});
}

bool ExpectedBoxes::respond(const MessageBox& box) {
    last_ = box;
    if (expected_.isEmpty()) {
        ADD_FAILURE() << "unexpected box: " << box.title.toStdString() << ": " << box.text.toStdString();
        return false;
    }
    const Expected wanted = expected_.takeFirst();
    EXPECT_EQ(box.title.toStdString(), wanted.box.title.toStdString());
    EXPECT_EQ(box.question, wanted.box.question);
    if (wanted.beginningOnly)
        EXPECT_EQ(box.text.left(wanted.box.text.size()).toStdString(), wanted.box.text.toStdString());
    else
        EXPECT_EQ(box.text.toStdString(), wanted.box.text.toStdString());
    return wanted.answer;
}

QString trimbleReport(std::int64_t valid, std::int64_t rejected) {
    const QString text =
        u"There are  %1 valid records in this file.\n\nThere are  %2 records in this file\n"
        u"containing non-numeric or invalid numeric values."_s.arg(valid)
            .arg(rejected);
    return rejected == 0 ? text
                         : text + u"\n\nPlease refer to the error_log.dat text file for more details."_s;
}

QString genericReport(std::int64_t valid, std::int64_t rejected) {
    const QString text = u"There are %1 valid records in this file."_s.arg(valid);
    return rejected == 0
               ? text
               : text +
                     u"\n\nThere are %1 records in this file\n"
                     u"containing non-numeric or invalid numeric values.\n"
                     u"Please refer to the error_log.dat text file for more details."_s.arg(rejected);
}

}  // namespace tessel
