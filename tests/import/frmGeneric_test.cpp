#include "import/frmGeneric.h"

#include "app/CaptionColour.h"
#include "app/palette16.h"
#include "support/ImportTest.h"
#include "support/reads.h"

#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QString kReportTitle = u"VARN-Tessel File Import Message"_s;

class GenericImport : public ImportTest {
  protected:
    GenericImport() : window(main), imported(&window, &frmGeneric::imported) {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QRadioButton& option(int i) { return *window.findChild<QRadioButton*>(u"optCF_%1"_s.arg(i)); }

    // Imports a file of one of the layouts, 0 to 7, by its typed name.
    void importFile(int layout, std::string_view bytes) {
        type(*window.txtGFile, fromPath(sensorFile(bytes)));
        click(option(layout));
        click(*window.cmdImport);
    }
    void refuse(const QString& message) {
        boxes.tell(message);
        click(*window.cmdImport);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(imported.count(), 0);
        expectSurveyUntouched();
    }
    // Types the name of a file and waits until its beginning is shown.
    void look(std::string_view bytes) {
        const QString path = fromPath(sensorFile(bytes));
        QSignalSpy shown(window.tblPreview->model(), &QAbstractItemModel::modelReset);
        type(*window.txtGFile, window.txtGFile->text() == path ? path + u' ' : path);
        EXPECT_TRUE(shown.wait());
    }
    // A line of the table: the number of the file's line, then the values, marked ones in brackets.
    QString previewLine(int line) {
        const QAbstractItemModel& table = *window.tblPreview->model();
        QString text = table.headerData(line, Qt::Vertical).toString() + u':';
        for (int column = 0; column < table.columnCount(); ++column) {
            const QModelIndex cell = table.index(line, column);
            const bool marked = cell.data(Qt::ForegroundRole).value<QColor>() == captionColour(kRed, window);
            EXPECT_EQ(marked, !cell.data(Qt::ToolTipRole).toString().isEmpty());
            text += marked ? u" ["_s + cell.data().toString() + u']' : u' ' + cell.data().toString();
        }
        return text;
    }
    QString previewColumns() {
        QStringList names;
        for (int column = 0; column < window.tblPreview->model()->columnCount(); ++column)
            names << window.tblPreview->model()->headerData(column, Qt::Horizontal).toString();
        return names.join(u' ');
    }
    QColor fitColour() { return window.lblFit->palette().color(QPalette::WindowText); }

    // Drags onto the file name's box; false when nothing that is dragged can be dropped there.
    bool drop(const QMimeData& data) {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(window.txtGFile, &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.txtGFile, &event);
        return true;
    }

    frmGeneric window;
    QSignalSpy imported;
};

}  // namespace

TEST_F(GenericImport, OpensWithItsDefaultsAndTexts) {
    const auto caption = [](QString text) { return text.remove(u'&'); };
    EXPECT_EQ(window.windowTitle(), u"Import a Generic Sensor File"_s);
    EXPECT_EQ(caption(window.lblGFile->text()), u"Input data file path / filename:"_s);
    EXPECT_EQ(window.txtGFile->text(), QString());
    EXPECT_EQ(caption(window.lblminEC->text()), u"Minimum Ec2 and/or Ec1 data value:"_s);
    EXPECT_EQ(window.txtminEC->text(), u"0.0"_s);
    EXPECT_EQ(caption(window.cmdBrowse->text()), u"Browse"_s);
    EXPECT_EQ(caption(window.cmdImport->text()), u"Import Data"_s);
    EXPECT_EQ(window.cmdCancel->text(), u"Cancel"_s);
    EXPECT_EQ(window.fraFormat->title(), u"Input data file column format: "_s);
    EXPECT_EQ(caption(window.mnuI->title()), u"Help"_s);
    EXPECT_EQ(caption(window.mnuGSFIhelp->text()), u"Using the Generic Sensor File Import window"_s);
    const QStringList captions = {u"X-cord,  Y-cord,  Ec1,  Row_#"_s,
                                  u"X-cord,  Y-cord,  Ec1,  Ec2,  Row_#   (Sandia XYZ file)"_s,
                                  u"Site_#,  X-cord,  Y-cord,  Ec1,  Row_#"_s,
                                  u"Site_#,  X-cord,  Y-cord,  Ec1,  Ec2,  Row_#"_s,
                                  u"X-cord,  Y-cord,  Ec1"_s,
                                  u"X-cord,  Y-cord,  Ec1,  Ec2    (Verris 3100 file)"_s,
                                  u"Site_#,  X-cord,  Y-cord,  Ec1"_s,
                                  u"Site_#,  X-cord,  Y-cord,  Ec1,  Ec2"_s};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(option(i).text(), captions[i]);
        EXPECT_EQ(option(i).isChecked(), i == 6);
    }
}

TEST_F(GenericImport, ShowsTheChosenLayoutInLightBlue) {
    const auto colour = [this](int i) { return option(i).palette().color(QPalette::WindowText); };
    EXPECT_EQ(colour(6), captionColour(kLightBlue, window));
    EXPECT_EQ(colour(2), captionColour(kBlack, window));
    click(option(2));
    EXPECT_EQ(colour(6), captionColour(kBlack, window));
    EXPECT_EQ(colour(2), captionColour(kLightBlue, window));
    expectSurveyUntouched();
}

TEST_F(GenericImport, TellsTheFormatRules) {
    boxes.tell(
        u"A generic signal data file must satisfy the following format restrictions:\n"
        u"1.  All records must be either comma or space delimited.\n"
        u"2.  The file column structure must exactly match one of the 8 choices shown on the screen.\n"
        u"       (no extra data columns can be present in the file)\n"
        u"3.  There can be no missing data records.\n"
        u"4.  If your file contains row numbers, then the first row must start at 1\n"
        u"       and all remaining rows must increase in a sequential, incremental order."_s);
    window.mnuFormat->trigger();
}

TEST_F(GenericImport, OpensHelpFromButtonAndMenu) {
    for (int i = 0; i < 2; ++i)
        boxes.tell(u"Warning!  File resource error.  VARN can not find the following file:\n"_s +
                   fromPath(folder / "helpdocs/hdoc106.rtf"));
    click(*window.cmdHelp);
    window.mnuGSFIhelp->trigger();
}

TEST_F(GenericImport, RefusesACutOffThatIsNoNumberFirst) {
    type(*window.txtminEC, u"abc"_s);
    refuse(u"Error!  Non-numeric minimum EC cutoff value."_s);
    EXPECT_TRUE(window.txtminEC->hasFocus());
    type(*window.txtminEC, u""_s);
    refuse(u"Error!  Non-numeric minimum EC cutoff value."_s);
}

TEST_F(GenericImport, RefusesAFileThatIsNone) {
    const QString message = u"Please enter a valid input filename."_s;
    refuse(message);
    EXPECT_TRUE(window.txtGFile->hasFocus());
    type(*window.txtGFile, fromPath(folder / "none.txt"));
    refuse(message);
    type(*window.txtGFile, fromPath(folder.path()));
    refuse(message);
    type(*window.txtGFile, u"   "_s);
    refuse(message);
}

TEST_F(GenericImport, PutsTheSurveyInPlaceAndCloses) {
    type(*window.txtminEC, u"5"_s);
    boxes.tell(
        u"There are 3 valid records in this file.\n\nThere are 2 records in this file\n"
        u"containing non-numeric or invalid numeric values.\n"
        u"Please refer to the error_log.dat text file for more details."_s,
        kReportTitle);
    importFile(3, "Site,X,Y,Ec1,Ec2,Row\n1,0,0,5,6,1\n2,3,4,5,4.9,1\n3,3,4,7,8,1\n4,9,9,5,5,2\n");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(imported.count(), 1);
    const Survey& survey = theSurvey();
    EXPECT_EQ(survey.NumSites, 3);
    EXPECT_EQ(survey.NumRows, 2);
    EXPECT_EQ(survey.RowIndex, 2);
    EXPECT_EQ(survey.NumPoints[1], 2);
    EXPECT_EQ(survey.SiteID, (std::vector<double>{1, 3, 4}));
    EXPECT_TRUE(survey.TwoEMColumns);
    EXPECT_EQ(survey.MaxXDist, 6);
    EXPECT_EQ(survey.EMCutoff, -1);
    EXPECT_FALSE(theSession().DataSaved);
    EXPECT_EQ(theSession().InputFileName, folder / "sensor file ü.dat");
    EXPECT_EQ(errorLog(),
              "Line # 1 Site X Y Ec1 Ec2 Row  -> non-numeric site ID\r\n"
              "Line # 3 2 3 4 5 4.9 1  -> 2nd EM reading below cut-off\r\n");
    expectMenus(true, true);
}

TEST_F(GenericImport, ShowsTheHourglassUntilTheReportHasBeenRead) {
    Qt::CursorShape whileTold = Qt::ArrowCursor;
    setMessageResponder([&](const MessageBox&) {
        whileTold = window.cursor().shape();
        return true;
    });
    importFile(4, "1 2 3\n");
    EXPECT_EQ(whileTold, Qt::WaitCursor);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
}

// They are of the run of the program, not of the survey.
TEST_F(GenericImport, KeepsTheTotalsOfTheAdjustments) {
    theSession().EMAdjustTotalA = 3;
    theSession().EMAdjustTotalB = -4;
    boxes.tell(u"There are 1 valid records in this file."_s, kReportTitle);
    importFile(4, "1 2 3\n");
    EXPECT_EQ(theSession().EMAdjustTotalA, 3);
    EXPECT_EQ(theSession().EMAdjustTotalB, -4);
}

TEST_F(GenericImport, OfAnEmptyFileGivesItsMessageAndDisablesTheMenus) {
    main.menusFollow(MenuEvent::SitesImported);
    boxes.tell(u"There are 0 valid records in this file."_s, kReportTitle);
    importFile(0, "");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(theSurvey().NumRows, 0);
    expectMenus(false, true);
}

TEST_F(GenericImport, StaysOpenAfterAFatalRowError) {
    main.menusFollow(MenuEvent::SitesImported);
    boxes.tell(u"There are 2 valid records in this file."_s, kReportTitle);
    boxes.tell(u"Fatal Error! Initial row # not equal to 1. Input aborted."_s);
    importFile(0, "1,2,3,2\n1,2,3,3\n");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(theSurvey().NumSites, 2);
    EXPECT_EQ(theSurvey().NumRows, 0);
    EXPECT_FALSE(theSession().DataSaved);
    EXPECT_EQ(imported.count(), 1);
    expectMenus(false, false);

    boxes.tell(u"There are 3 valid records in this file."_s, kReportTitle);
    boxes.tell(u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s);
    importFile(0, "1,2,3,1\n1,2,3,2\n1,2,3,4\n");
    EXPECT_TRUE(window.isVisible());
    expectMenus(false, false);

    boxes.tell(u"There are 2 valid records in this file."_s, kReportTitle);
    boxes.tell(u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s);
    importFile(0, "1,2,3,1\n1,2,3,1.5\n");
    EXPECT_TRUE(window.isVisible());
    expectMenus(false, false);

    boxes.tell(u"There are 1 valid records in this file."_s, kReportTitle);
    importFile(0, "1,2,3,1\n");
    EXPECT_FALSE(window.isVisible());
    expectMenus(true, true);
}

TEST_F(GenericImport, WarnsOfMoreThan250RowsAndImportsThem) {
    std::string bytes;
    for (int i = 1; i <= 250; ++i)
        bytes += "1 2 3 " + std::to_string(i) + "\n";
    boxes.tell(u"There are 250 valid records in this file."_s, kReportTitle);
    importFile(0, bytes);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().NumRows, 250);

    window.show();
    bytes += "1 2 3 251\n";
    boxes.tell(u"There are 251 valid records in this file."_s, kReportTitle);
    boxes.tell(
        u"Warning! Row count > 250.\n"
        u"This input data file may cause the VARN-Tessel program to crash."_s);
    importFile(0, bytes);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().NumRows, 251);
    expectMenus(true, true);
}

TEST_F(GenericImport, LeavesTheSurveyWhenReadingFails) {
    boxes.tell(u"Overflow"_s);
    importFile(4, "1e300,0,1\n-1e300,0,1\n-1e308,0,1\n1e308,0,1\n");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(imported.count(), 0);
    expectSurveyUntouched();
}

TEST_F(GenericImport, GoesOnWithoutALogThatCannotBeCreated) {
    theSession().DataDir = folder / "none";
    boxes.tell(u"The error log could not be written:\n"_s + fromPath(folder / "none/error_log.dat") +
               u" cannot be written: No such file or directory\n\nThe file has been read without it."_s);
    boxes.tell(u"There are 1 valid records in this file."_s, kReportTitle);
    importFile(4, "1 2 3");
    EXPECT_EQ(theSurvey().NumSites, 1);
}

TEST_F(GenericImport, BrowsesForAFileAndKeepsTheBoxWhenThatIsCancelled) {
    type(*window.txtGFile, u"typed"_s);
    click(*window.cmdBrowse);
    EXPECT_EQ(window.txtGFile->text(), u"typed"_s);
    EXPECT_EQ(lastQuestion().filter, u"All Files (*.*)|*"_s);
    chooseFile("/a folder/a file.txt");
    click(*window.cmdBrowse);
    EXPECT_EQ(window.txtGFile->text(), u"/a folder/a file.txt"_s);
}

TEST_F(GenericImport, TakesAFileThatIsDropped) {
    window.txtGFile->setText(u"typed"_s);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(fromPath(folder / "100% ü.txt"))});
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(window.txtGFile->text().toStdString(), folder / "100% ü.txt");
    QMimeData words;
    words.setText(u"words"_s);
    EXPECT_FALSE(drop(words));
    EXPECT_EQ(window.txtGFile->text().toStdString(), folder / "100% ü.txt");
}

TEST_F(GenericImport, TakesAPastedAddressAndAPathWithALineEnd) {
    const std::string path = sensorFile("1 2 3\n");
    for (const QString& text : {QUrl::fromLocalFile(fromPath(path)).toString(QUrl::FullyEncoded),
                                u"  "_s + fromPath(path) + u" "_s}) {
        window.show();
        window.txtGFile->setText(text);
        click(option(4));
        boxes.tell(u"There are 1 valid records in this file."_s, kReportTitle);
        click(*window.cmdImport);
    }
    EXPECT_EQ(imported.count(), 2);
}

TEST_F(GenericImport, CancelledLeavesEverythingAsItWas) {
    for (const bool escape : {false, true}) {
        window.show();
        type(*window.txtGFile, fromPath(sensorFile("1 2 3\n")));
        click(option(0));
        if (escape)
            QTest::keyClick(&window, Qt::Key_Escape);
        else
            click(*window.cmdCancel);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(imported.count(), 0);
        expectSurveyUntouched();
    }
}

TEST_F(GenericImport, ShowsTheColumnsOfTheLayoutBeforeAFileIsChosen) {
    EXPECT_EQ(previewColumns(), u"Site_# X-cord Y-cord Ec1"_s);
    EXPECT_EQ(window.tblPreview->model()->rowCount(), 0);
    EXPECT_TRUE(window.lblFit->text().startsWith(u"Choose a file"_s));
    EXPECT_FALSE(window.chkDecimalComma->isVisible());
    EXPECT_FALSE(window.lblKind->isVisible());
    click(option(3));
    EXPECT_EQ(previewColumns(), u"Site_# X-cord Y-cord Ec1 Ec2 Row_#"_s);
    click(option(5));
    EXPECT_EQ(previewColumns(), u"X-cord Y-cord Ec1 Ec2"_s);
}

TEST_F(GenericImport, ShowsTheBeginningOfTheFileAsTheLayoutReadsIt) {
    look("Site,X,Y,Ec1\n1,2,3,4\n5,6,,8\n9,10,11,\n12,13,14,15\n");
    EXPECT_EQ(previewLine(0), u"1: [Site] [X] [Y] [Ec1]"_s);
    EXPECT_EQ(previewLine(1), u"2: 1 2 3 4"_s);
    EXPECT_EQ(previewLine(2), u"3: 5 6 [(missing)] 8"_s);
    EXPECT_EQ(previewLine(3), u"4: 9 10 11 [(missing)]"_s);
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    EXPECT_EQ(fitColour(), captionColour(kBlack, window));
    EXPECT_EQ(window.lblKind->text(), u"The first line is a header."_s);
    EXPECT_TRUE(window.lblKind->isVisible());
    expectSurveyUntouched();
}

TEST_F(GenericImport, NamesTheLayoutsThatWouldFit) {
    look("1,2,3,4\n5,6,7,8\n9,10,11,12\n");
    click(option(4));
    EXPECT_EQ(previewLine(1), u"1: 4 5 6"_s);
    EXPECT_EQ(window.lblFit->text(),
              u"The lines hold 4 values, this layout takes 3: values would be read across line ends. These "
              u"layouts would fit: \"X-cord, Y-cord, Ec1, Row_#\"; \"X-cord, Y-cord, Ec1, Ec2 (Verris 3100 "
              u"file)\"; \"Site_#, X-cord, Y-cord, Ec1\"."_s);
    EXPECT_EQ(fitColour(), captionColour(kRed, window));
    click(option(0));
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    EXPECT_EQ(fitColour(), captionColour(kBlack, window));
    look("1,2,3,4,5,6,7\n");
    EXPECT_TRUE(window.lblFit->text().endsWith(u"line ends. No layout takes as many."_s));
}

TEST_F(GenericImport, LooksAtTheFileOnceItsNameHasBeenTyped) {
    writeFile(folder / "a", "1 2 3 4\n");
    writeFile(folder / "ab", "5 6 7 8\n");
    QSignalSpy shown(window.tblPreview->model(), &QAbstractItemModel::modelReset);
    window.txtGFile->setText(fromPath(folder / "a"));
    EXPECT_EQ(shown.count(), 0);
    QTest::keyClick(window.txtGFile, Qt::Key_B);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_TRUE(shown.wait());
    EXPECT_EQ(shown.count(), 1);
    EXPECT_EQ(previewLine(0), u"1: 5 6 7 8"_s);
    window.txtGFile->setText(fromPath(folder / "a"));
    click(option(4));
    EXPECT_EQ(previewLine(0), u"1: 1 2 3"_s) << "at once when a layout is chosen";
    type(*window.txtGFile, fromPath(folder / "abc"));
    EXPECT_TRUE(shown.wait());
    EXPECT_EQ(window.tblPreview->model()->rowCount(), 0);
    EXPECT_TRUE(window.lblFit->text().startsWith(u"There is no such file"_s));
}

TEST_F(GenericImport, SaysWhatKindOfFileItIs) {
    look("\x1F\x8B\x08 compressed");
    EXPECT_EQ(window.lblKind->text(), u"This is not a text file."_s);
    EXPECT_EQ(window.lblKind->palette().color(QPalette::WindowText), captionColour(kRed, window));
    look("1\t2\t3\t4\n");
    EXPECT_EQ(window.lblKind->text(), u"Tabs stand between its values."_s);
    EXPECT_EQ(window.lblKind->palette().color(QPalette::WindowText), captionColour(kBlack, window));
    look("1 2 3 4\n");
    EXPECT_FALSE(window.lblKind->isVisible());
}

TEST_F(GenericImport, OffersDecimalCommasWhereTheyAreAndTakesThemWhenTicked) {
    const std::string bytes = "1;2,5;3,5;4,25\n2;3,5;4,5;-1,5\n";
    look(bytes);
    EXPECT_TRUE(window.chkDecimalComma->isVisible());
    EXPECT_FALSE(window.chkDecimalComma->isChecked());
    EXPECT_EQ(window.chkDecimalComma->text().remove(u'&'),
              u"values are separated by semicolons, decimal signs are commas"_s);
    EXPECT_EQ(window.lblFit->text(),
              u"No value with a decimal comma is read as a number unless the box above is ticked."_s);
    EXPECT_EQ(fitColour(), captionColour(kRed, window));
    click(*window.chkDecimalComma);
    EXPECT_EQ(previewLine(0), u"1: 1 2,5 3,5 4,25"_s);
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    boxes.tell(
        u"There are 1 valid records in this file.\n\nThere are 1 records in this file\n"
        u"containing non-numeric or invalid numeric values.\n"
        u"Please refer to the error_log.dat text file for more details."_s,
        kReportTitle);
    click(*window.cmdImport);
    EXPECT_EQ(theSurvey().SiteData(kX, 0), 2.5);
    EXPECT_EQ(theSurvey().SiteData(kEM1, 0), 4.25);
    EXPECT_EQ(errorLog(), "Line # 2 2 3,5 4,5 -1,5  -> 1st EM reading below cut-off\r\n");
}

TEST_F(GenericImport, ForgetsTheTickForDecimalCommasWithAnotherFile) {
    writeFile(folder / "other.csv", "1;2,5;3;4\n");
    look("1;2,5;3,5;4,25\n");
    click(*window.chkDecimalComma);
    window.txtGFile->setText(fromPath(folder / "other.csv"));
    EXPECT_FALSE(window.chkDecimalComma->isChecked());
    click(option(6));
    EXPECT_TRUE(window.chkDecimalComma->isVisible());
    look("1,2,3,4\n");
    EXPECT_FALSE(window.chkDecimalComma->isVisible());
}

TEST_F(GenericImport, ReadsAFileOfDecimalCommasByPointsUnlessItIsTicked) {
    look("1;2,5;3,5;4,25\n");
    boxes.tell(
        u"There are 0 valid records in this file.\n\nThere are 1 records in this file\n"
        u"containing non-numeric or invalid numeric values.\n"
        u"Please refer to the error_log.dat text file for more details."_s,
        kReportTitle);
    click(*window.cmdImport);
    EXPECT_EQ(errorLog(), "Line # 1 1;2 5;3 5;4 25  -> non-numeric site ID\r\n");
}

TEST_F(GenericImport, LooksIntoNothingButFiles) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {folder / "pipe", std::string("/dev/zero"), std::string("/proc/self/status"), folder.path()}) {
        type(*window.txtGFile, fromPath(path));
        click(option(4));
        EXPECT_TRUE(window.lblFit->text().startsWith(u"There is no such file"_s)) << path;
        click(option(6));
        refuse(u"Please enter a valid input filename."_s);
    }
}

TEST_F(GenericImport, LooksAtNoMoreThan64KiB) {
    const std::string path = folder / "long.csv";
    std::ofstream file(path);
    for (int line = 0; line < 200'000; ++line)
        file << (line < 12'000 ? "1,2,3,4\n" : "no number\n");
    file.close();
    const BeforeReading third(3, [](int) {});
    type(*window.txtGFile, fromPath(path));
    click(option(0));
    EXPECT_EQ(window.lblFit->text(), u"The lines hold 4 values, this layout takes 4."_s);
    for (int layout = 0; layout < 8; ++layout)
        click(option(layout));
    EXPECT_FALSE(third.happened());
}
