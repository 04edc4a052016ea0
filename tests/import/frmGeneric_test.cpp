// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"
#include "import/GenericWindow.h"
#include "journal/journal.h"
#include "support/reads.h"

namespace tessel {

TEST_F(GenericImport, ShowsTheChosenLayoutInLightBlue) {
    for (const int chosen : {6, 2}) {
        if (chosen != 6) click(option(chosen));
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(option(i).isChecked(), i == chosen);
            EXPECT_EQ(colourOf(option(i)), captionColour(i == chosen ? kLightBlue : kBlack, window));
        }
    }
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

TEST_F(GenericImport, RefusesACutOffThatIsNoNumberFirstAndThenAFileThatIsNone) {
    for (const QString& cutoff : {u"abc"_s, u""_s}) {
        type(*window.txtminEC, cutoff);
        refuse(u"Error!  Non-numeric minimum EC cutoff value."_s);
        EXPECT_TRUE(window.txtminEC->hasFocus());
    }
    type(*window.txtminEC, u"0"_s);
    for (const QString& file : {u""_s, fromPath(folder / "none.txt"), fromPath(folder.path()), u"   "_s}) {
        type(*window.txtGFile, file);
        refuse(u"Please enter a valid input filename."_s);
        EXPECT_TRUE(window.txtGFile->hasFocus());
    }
}

TEST_F(GenericImport, PutsTheSurveyInPlaceAndCloses) {
    type(*window.txtminEC, u"5"_s);
    expectReport(3, 2);
    const auto changesBefore = surveyChanges();
    importFile(3, "Site,X,Y,Ec1,Ec2,Row\n1,0,0,5,6,1\n2,3,4,5,4.9,1\n3,3,4,7,8,1\n4,9,9,5,5,2\n");
    EXPECT_EQ(surveyChanges(), changesBefore + 1);
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

TEST_F(GenericImport, OfAnEmptyFileGivesItsMessageAndDisablesTheMenus) {
    main.menusFollow(MenuEvent::kSitesImported);
    expectReport(0);
    importFile(0, "");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(theSurvey().NumRows, 0);
    expectMenus(false, true);
}

TEST_F(GenericImport, StaysOpenAfterAFatalRowError) {
    main.menusFollow(MenuEvent::kSitesImported);
    const QString notFirst = u"Fatal Error! Initial row # not equal to 1. Input aborted."_s;
    const QString unsorted = u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s;
    const std::tuple<const char*, int, QString> files[] = {{"1,2,3,2\n1,2,3,3\n", 2, notFirst},
                                                           {"1,2,3,1\n1,2,3,2\n1,2,3,4\n", 3, unsorted},
                                                           {"1,2,3,1\n1,2,3,1.5\n", 2, unsorted}};
    for (const auto& [bytes, sites, message] : files) {
        imported.clear();
        expectReport(sites);
        boxes.tell(message);
        importFile(0, bytes);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(theSurvey().NumSites, sites);
        EXPECT_EQ(theSurvey().NumRows, 0);
        EXPECT_FALSE(theSession().DataSaved);
        EXPECT_EQ(imported.count(), 1);
        expectMenus(false, false);
    }
    expectReport(1);
    importFile(0, "1,2,3,1\n");
    EXPECT_FALSE(window.isVisible());
    expectMenus(true, true);
}

TEST_F(GenericImport, WarnsOfMoreThan250RowsAndImportsThem) {
    std::string bytes;
    for (int i = 1; i <= 250; ++i)
        bytes += "1 2 3 " + std::to_string(i) + "\n";
    expectReport(250);
    importFile(0, bytes);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().NumRows, 250);

    window.show();
    bytes += "1 2 3 251\n";
    expectReport(251);
    boxes.tell(
        u"Warning! Row count > 250.\n"
        u"This input data file may cause the VARN-Tessel program to crash."_s);
    importFile(0, bytes);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(theSurvey().NumRows, 251);
    expectMenus(true, true);
}

TEST_F(GenericImport, LeavesTheSurveyWhenReadingFails) {
    const std::string path = sensorFile("1,0,1\n");
    type(*window.txtGFile, fromPath(path));
    click(option(4));
    boxes.tell(fromPath(path) + u" cannot be read: Input/output error"_s);
    const BeforeReading breaks(1, breakDevice);
    click(*window.cmdImport);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(imported.count(), 0);
    expectSurveyUntouched();
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

}  // namespace tessel
