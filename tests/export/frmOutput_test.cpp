// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/frmOutput.h"

#include "base/session.h"
#include "base/sha256.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

const QString kGridQuestion =
    u"Attention: This will create a GRID file format, without any row numbers.\n"
    u"Are you sure that you wish to do this?"_s;

// A survey, a folder, and a file dialog that is answered with a file in it.
class OutputWindow : public testing::Test {
  protected:
    OutputWindow() {
        surveyUnderTest() = surveyWithRows({{1, 2, 3, 4, 1, 11}, {5, 6, 7, 8, 2, 12}, {9, 8, 7, 6, 3, 13}});
        theSession().DataSaved = false;
        answerDialogWith(folder_ / "out.txt");
    }

    void answerDialogWith(const std::string& path) {
        setFileResponder([this, path](const FileQuestion& question) {
            questions_ << question;
            return fromPath(path);
        });
    }
    frmOutput& openWithoutPath() {
        window_ = std::make_unique<frmOutput>();
        window_->show();
        return *window_;
    }
    frmOutput& open() {
        choosePath(openWithoutPath());
        return *window_;
    }
    static void choosePath(frmOutput& window) { clickOn(window, u"Command1"_s); }
    static void exportFrom(frmOutput& window) { clickOn(window, u"Command2"_s); }
    void expectSaved(std::string_view name = "out.txt") {
        boxes.tell(u"Output data saved to "_s + fromPath(folder_ / name), u"VARN-Tesl"_s);
    }
    static void clickGrid(frmOutput& window) { clickOn(window, u"chkNoRow"_s); }
    static void clickRecord(frmOutput& window) { clickOn(window, u"chkRecord"_s); }
    std::string written() const { return readFile(folder_ / "out.txt"); }
    bool nothingWritten() const { return std::filesystem::is_empty(folder_.path()); }

    ExpectedBoxes boxes;
    TemporaryFolder folder_;
    std::unique_ptr<frmOutput> window_;
    QList<FileQuestion> questions_;
};

QColor colourOf(const QWidget* widget) {
    return widget->palette().color(QPalette::Active, QPalette::WindowText);
}

}  // namespace

TEST_F(OutputWindow, OpensWithTheRecordFormatOfTheSurvey) {
    for (const bool ids : {false, true}) {
        for (const bool two : {false, true}) {
            surveyUnderTest().SiteIDPresent = ids;
            surveyUnderTest().TwoEMColumns = two;
            const frmOutput window;
            const QString expected = (ids ? u"Site_#  "_s : QString()) + u"X_coord  Y_coord  EM1"_s +
                                     (two ? u"  EM2"_s : QString()) + u"  Row_#"_s;
            EXPECT_EQ(window.Text1->text(), expected);
            EXPECT_TRUE(window.Text1->isReadOnly());
        }
    }
    const frmOutput window;
    EXPECT_FALSE(window.Command2->isEnabled());
    EXPECT_EQ(window.txtBRN->text(), u"1"_s);
    EXPECT_EQ(window.Text2->text(), QString());
    EXPECT_FALSE(window.chkNoRow->isChecked());
}

TEST_F(OutputWindow, AsksForTheFileAndKeepsItWhenTheDialogIsCancelled) {
    frmOutput& window = openWithoutPath();
    for (const char* answer : {"", "out.txt", ""}) {
        answerDialogWith(*answer == 0 ? "" : folder_ / answer);
        choosePath(window);
        EXPECT_EQ(window.Command2->isEnabled(), questions_.size() > 1);
    }
    ASSERT_EQ(questions_.size(), 3);
    EXPECT_TRUE(questions_[0].toSave);
    EXPECT_EQ(questions_[0].filter, u"Text Files (*.txt)|*.TXT|Data Files (*.dat)|*.DAT|All Files (*.*)|*"_s);
    EXPECT_EQ(window.Text2->text(), fromPath(folder_ / "out.txt"));
    EXPECT_TRUE(nothingWritten());
}

TEST_F(OutputWindow, AddsNoExtension) {
    const std::string name = "field 7, \"north\" 100%";
    answerDialogWith(folder_ / name);
    expectSaved(name);
    exportFrom(open());
    EXPECT_TRUE(std::filesystem::exists(folder_ / name));
}

TEST_F(OutputWindow, WritesTheFileAndCloses) {
    frmOutput& window = open();
    QSignalSpy exported(&window, &frmOutput::exported);
    const int beeps = beepCount();
    expectSaved();
    exportFrom(window);
    EXPECT_EQ(written(),
              " 11            1             2             3             4             1 \r\n"
              " 12            5             6             7             8             2 \r\n"
              " 13            9             8             7             6             3 \r\n");
    EXPECT_EQ(beepCount(), beeps + 1);
    EXPECT_TRUE(theSession().DataSaved);
    EXPECT_EQ(exported.count(), 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(OutputWindow, HasTheFileInPlaceBeforeItSaysSo) {
    frmOutput& window = open();
    bool said = false;
    setMessageResponder([&](const MessageBox&) {
        said = true;
        EXPECT_EQ(written().size(), 3u * (70 + 5));
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
        EXPECT_FALSE(theSession().DataSaved);
        EXPECT_TRUE(window.isVisible());
        return true;
    });
    exportFrom(window);
    EXPECT_TRUE(said);
}

TEST_F(OutputWindow, RefusesABeginningRowThatIsNoNumberOrOutOfRange) {
    const QString noNumber = u"Error! The beginning row number is non-numeric!"_s;
    const QString tooSmall = u"Error! The specified beginning row number is < 1!"_s;
    const QString tooLarge = u"Error! The specified beginning row number is > 2147483647!"_s;
    const std::pair<QString, QString> entries[] = {
        {u"abc"_s, noNumber},    {u""_s, noNumber},           {u"1,5"_s, noNumber},  {u"5 6"_s, noNumber},
        {u"nan"_s, noNumber},    {u"0"_s, tooSmall},          {u"-2"_s, tooSmall},   {u"0.5"_s, tooSmall},
        {u"-1e300"_s, tooSmall}, {u"2147483648"_s, tooLarge}, {u"1e300"_s, tooLarge}};
    frmOutput& window = open();
    for (const auto& [entry, message] : entries) {
        const int beeps = beepCount();
        window.txtBRN->setText(entry);
        boxes.tell(message);
        exportFrom(window);
        EXPECT_EQ(beepCount(), beeps + 1) << entry.toStdString();
        EXPECT_TRUE(window.isVisible());
    }
    EXPECT_TRUE(nothingWritten());
    EXPECT_FALSE(theSession().DataSaved);
}

TEST_F(OutputWindow, RoundsTheBeginningRowHalvesToEven) {
    surveyUnderTest() = surveyWithRows({{0, 0, 0, 0, 1}});
    surveyUnderTest().SiteIDPresent = surveyUnderTest().TwoEMColumns = false;
    for (const auto& [entry, row] : {std::pair("5", "5"),
                                     {"2.7", "3"},
                                     {"2.5", "2"},
                                     {"3.5", "4"},
                                     {" 1D1 ", "10"},
                                     {"0.6", "1"},
                                     {"2147483647", "2147483647"}}) {
        frmOutput& window = open();
        window.txtBRN->clear();
        QTest::keyClicks(window.txtBRN, QString::fromLatin1(entry));
        expectSaved();
        QTest::keyClick(window.txtBRN, Qt::Key_Return);
        EXPECT_EQ(written(), std::string(" 0             0             0             ") + row + " \r\n");
    }
}

TEST_F(OutputWindow, AsksBeforeItLeavesOutTheRowsAndTakesThemBackWithoutAQuestion) {
    frmOutput& window = openWithoutPath();
    const auto expectLeftOut = [&](bool out) {
        EXPECT_EQ(window.chkNoRow->isChecked(), out);
        EXPECT_EQ(colourOf(window.chkNoRow), captionColour(out ? kLightBlue : kBlack, window));
        EXPECT_EQ(window.Text1->text(),
                  u"Site_#  X_coord  Y_coord  EM1  EM2"_s + (out ? QString() : u"  Row_#"_s));
    };
    for (const bool answer : {false, true}) {
        boxes.ask(answer, kGridQuestion);
        clickGrid(window);
        expectLeftOut(answer);
    }
    clickGrid(window);
    expectLeftOut(false);
}

TEST_F(OutputWindow, ReportsAFailureAndStaysAsItWas) {
    frmOutput& window = openWithoutPath();
    answerDialogWith(folder_ / "gone/out.txt");
    choosePath(window);
    QSignalSpy exported(&window, &frmOutput::exported);
    const int beeps = beepCount();
    boxes.tell(fromPath(folder_ / "gone/out.txt") + u" cannot be written: No such file or directory"_s);
    exportFrom(window);
    EXPECT_EQ(beepCount(), beeps);
    EXPECT_FALSE(theSession().DataSaved);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.Command2->isEnabled());
    EXPECT_EQ(window.Text2->text(), fromPath(folder_ / "gone/out.txt"));
    EXPECT_EQ(exported.count(), 0);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(OutputWindow, CancelWritesNothing) {
    frmOutput& window = open();
    clickOn(window, u"Command3"_s);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(nothingWritten());
    EXPECT_FALSE(theSession().DataSaved);
}

TEST_F(OutputWindow, SaysWhichRowSitesWithoutARowNumberGet) {
    EXPECT_TRUE(openWithoutPath().lblNotice->isHidden());
    surveyUnderTest().SiteData(kRow, 1) = 0;
    frmOutput& window = openWithoutPath();
    EXPECT_TRUE(window.lblNotice->isVisible());
    EXPECT_EQ(colourOf(window.lblNotice), captionColour(kWarningColour, window));
    EXPECT_EQ(window.lblNotice->text(), u"1 site has no valid row number; it will be written with row 0."_s);
    window.txtBRN->setText(u"5"_s);
    EXPECT_EQ(window.lblNotice->text(), u"1 site has no valid row number; it will be written with row 4."_s);
    boxes.ask(true, kGridQuestion);
    clickGrid(window);
    EXPECT_TRUE(window.lblNotice->isHidden());
}

TEST_F(OutputWindow, WritesNoRecordUnlessItIsWanted) {
    frmOutput& window = openWithoutPath();
    window.recordWith([]() -> ProcessingRecord { throw std::logic_error("asked for a record"); });
    EXPECT_FALSE(window.chkRecord->isChecked());
    EXPECT_TRUE(window.lblRecord->isHidden());
    choosePath(window);
    EXPECT_TRUE(window.lblRecord->isHidden());
    const QSignalSpy exported(&window, &frmOutput::exported);
    expectSaved();
    exportFrom(window);
    EXPECT_EQ(filesIn(folder_), 1U);
    ASSERT_EQ(exported.count(), 1);
    auto file = exported[0][0].value<RecordedExport>();
    EXPECT_EQ(file.file.path, folder_ / "out.txt");
    EXPECT_EQ(file.file.state, stateOfInputFile(folder_ / "out.txt"));
    EXPECT_EQ(file.file.sha256, "");
    identify(file.file);
    EXPECT_EQ(file.file.sha256, sha256OfFile(folder_ / "out.txt"));
    EXPECT_EQ(file.format, "Site_#  X_coord  Y_coord  EM1  EM2  Row_#");
    EXPECT_EQ(file.sites, 3);
    EXPECT_EQ(file.firstRow, 1);
}

TEST_F(OutputWindow, WritesTheRecordBesideTheFileWhenItIsTicked) {
    frmOutput& window = openWithoutPath();
    window.recordWith([] {
        ProcessingRecord record;
        record.acts.resize(1);
        record.acts[0].words = "Deleted row 7";
        return record;
    });
    choosePath(window);
    clickRecord(window);
    window.txtBRN->setText(u"5"_s);
    const QSignalSpy exported(&window, &frmOutput::exported);
    expectSaved();
    exportFrom(window);
    EXPECT_EQ(filesIn(folder_), 2U);
    const std::string record = readFile(folder_ / "out.txt.record.yaml");
    EXPECT_NE(record.find("what: \"Deleted row 7\"\n"), std::string::npos) << record;
    EXPECT_NE(record.find("exports:\n  - path: \"" + (folder_ / "out.txt") +
                          "\"\n    size: " + std::to_string(written().size()) + "\n    sha256: \"" +
                          sha256OfFile(folder_ / "out.txt") + "\"\n"),
              std::string::npos)
        << record;
    EXPECT_NE(record.find("first_row: 5\n"), std::string::npos) << record;
    EXPECT_EQ(written().substr(70, 5), " 5 \r\n");
    EXPECT_EQ(exported[0][0].value<RecordedExport>().file.sha256, sha256OfFile(folder_ / "out.txt"));
}

TEST_F(OutputWindow, SaysHowTheRecordWillBeCalledAndWhetherItReplacesOne) {
    const QString name = u"Its name is the file's with .record.yaml behind it."_s;
    frmOutput& window = openWithoutPath();
    clickRecord(window);
    EXPECT_TRUE(window.lblRecord->isHidden());
    choosePath(window);
    EXPECT_EQ(window.lblRecord->text(), name);
    EXPECT_EQ(window.lblRecord->toolTip(), fromPath(folder_ / "out.txt.record.yaml"));
    EXPECT_TRUE(window.lblRecord->isVisible());
    clickRecord(window);
    EXPECT_TRUE(window.lblRecord->isHidden());
    writeFile(folder_ / "out.txt.record.yaml", "another");
    clickRecord(window);
    EXPECT_EQ(window.lblRecord->text(), name + u" It replaces the one that is there."_s);
    EXPECT_EQ(colourOf(window.lblRecord), captionColour(kWarningColour, window));
    answerDialogWith(folder_ / "other.txt");
    choosePath(window);
    EXPECT_EQ(window.lblRecord->text(), name);
    EXPECT_NE(colourOf(window.lblRecord), captionColour(kWarningColour, window));
}

TEST_F(OutputWindow, WritesNeitherFileWhenTheRecordCannotBeWritten) {
    std::filesystem::create_directory(folder_ / "out.txt.record.yaml");
    frmOutput& window = open();
    clickRecord(window);
    const QSignalSpy exported(&window, &frmOutput::exported);
    boxes.tell(fromPath(folder_ / "out.txt.record.yaml") + u" cannot be written: Is a directory"_s);
    exportFrom(window);
    EXPECT_EQ(filesIn(folder_), 1U);
    EXPECT_FALSE(theSession().DataSaved);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(exported.count(), 0);
}

TEST_F(OutputWindow, LooksAtTheRowsAgainWhenItComesToTheFront) {
    frmOutput& window = openWithoutPath();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    surveyUnderTest().SiteData(kRow, 1) = 0;
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(window.lblNotice->isVisible());
}

TEST_F(OutputWindow, ShowsBoxesThatCannotBeWrittenInOnItsOwnGround) {
    const frmOutput window;
    for (const QLineEdit* box : {window.Text1, window.Text2})
        EXPECT_EQ(box->palette().color(QPalette::Base), window.palette().color(QPalette::Window));
    EXPECT_NE(window.txtBRN->palette().color(QPalette::Base), window.palette().color(QPalette::Window));
}

}  // namespace tessel
