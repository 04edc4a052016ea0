// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/MessageKind.h"

#include "base/run_time_error.h"
#include "desktop/MessageBox.h"
#include "import/import_report.h"
#include "rows/row_detection.h"

namespace tessel {

namespace {

constexpr auto I = QMessageBox::Information;
constexpr auto Q = QMessageBox::Question;
constexpr auto W = QMessageBox::Warning;
constexpr auto E = QMessageBox::Critical;

// Every message of the program as it begins, and its icon.
const std::pair<QString, QMessageBox::Icon> kMessages[] = {
    {QString::fromStdString(trimbleImportReport(3, 0)), I},
    {QString::fromStdString(trimbleImportReport(3, 2)), I},
    {QString::fromStdString(genericImportReport(3, 2)), I},
    {u"All masked sites have been deleted."_s, I},
    {u"All masked sites have been recovered."_s, I},
    {u"Output data saved to /a/b.txt"_s, I},
    {u"A generic signal data file must satisfy the following format restrictions:"_s, I},
    {u"Note: the text editor has been reset to the default program "_s, I},
    {u"Note: the new selected text editor is /usr/bin/gedit "_s, I},
    {u"The printer resolution has been temporarily redefined to be 300 DPI."_s, I},
    {QString::fromLatin1(kTooManyRows), W},
    {u"There is no more point left in the file!"_s, W},
    {u"This option is only available when 2 signal data columns are present."_s, W},
    {u"Invalid Input"_s, W},
    {u"Invalid Input: you have to enter a numeric value"_s, W},
    {u"Invalid Input: row number out of range"_s, W},
    {u"Invalid Input: you have to enter two consecutive numbers"_s, W},
    {u"You did not input anything"_s, W},
    {u"Non-numeric EM-cutoff or Minimum distance Input"_s, W},
    {u"Invalid EM-cutoff or Minimum distance Input"_s, W},
    {u"Please enter a valid input filename."_s, W},
    {u"Warning! Row count > 250."_s, W},
    {u"Warning!  The sites which you have deleted have resulted in the complete"_s, W},
    {u"Warning!  File resource error.  VARN can not find the following file:"_s, W},
    {u"The error log could not be written:\n/a/error_log.dat: No space left on device"_s, W},
    {u"Error: Minimum distance must be > 0"_s, E},
    {u"Error! The beginning row number is non-numeric!"_s, E},
    {u"Error! The specified beginning row number is < 1!"_s, E},
    {u"Error!  Non-numeric minimum EC cutoff value."_s, E},
    {u"Error! Non-numeric shift factor detected."_s, E},
    {u"Error! EM1 Scale factor must be >= 0.01"_s, E},
    {u"Fatal Error! Initial row # not equal to 1. Input aborted."_s, E},
    {u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s, E},
    {u"Unexpected error: request terminated."_s, E},
    {u"11"_s, E},
    {QString::fromStdString(RunTimeError::overflow().description()), E},
    {QString::fromStdString(RunTimeError::outOfMemory().description()), E},
    {QString::fromStdString(RunTimeError::file("/a", "cannot be read", "No such file").description()), E},
};

const std::pair<QString, QMessageBox::Icon> kQuestions[] = {
    {u"Attention: This will create a GRID file format, without any row numbers."_s, Q},
    {u"This action will restore (i.e., unmask) all currently masked site."_s, Q},
    {u"Note: you should use the PELR program if you wish to perminantly"_s, Q},
    {u"Attention: you have not exported an output VARN data file yet!"_s, W},
    {u"This action will permanently delete all currently masked site."_s, W},
    {u"Warning! You have not deleted all of the currently masked sites."_s, W},
};

// The icon of the box that comes up; closes it.
template <typename Show>
QMessageBox::Icon iconOfTheBox(Show show) {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QTimer::singleShot(0, qApp, [&icon] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        icon = box->icon();
        box->reject();
    });
    show();
    return icon;
}

}  // namespace

TEST(TheMessageBox, CarriesTheIconThatFitsEachMessageAndEachQuestion) {
    for (const auto& [text, icon] : kMessages)
        EXPECT_EQ(iconOfTheBox([&text = text] { tell(nullptr, text); }), icon) << text.toStdString();
    for (const auto& [text, icon] : kQuestions)
        EXPECT_EQ(iconOfTheBox([&text = text] { ask(nullptr, text); }), icon) << text.toStdString();
}

}  // namespace tessel
