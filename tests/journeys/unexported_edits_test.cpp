// SPDX-License-Identifier: GPL-3.0-or-later
// Whether the program asks before it ends, after an export and what has been done since.
#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "base/survey_changes.h"
#include "desktop/FileDialogs.h"
#include "plots/Chart2D.h"
#include "plots/frmClip.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/PlotWindow.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

class UnexportedEdits : public testing::Test {
  protected:
    UnexportedEdits() {
        // Three rows, 10 m apart, of three sites each.
        theSurvey() = madeSurvey({{0, 0, 10, 20, 1},
                                  {0, 5, 11, 22, 1},
                                  {0, 9, 12, 21, 1},
                                  {10, 9, 13, 25, 2},
                                  {10, 5, 14, 27, 2},
                                  {10, 0, 15, 26, 2},
                                  {20, 0, 16, 28, 3},
                                  {20, 5, 17, 23, 3},
                                  {20, 9, 18, 24, 3}});
        theSurvey().MinDistance = 7;
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        main = createProgram();
        main->menusFollow(MenuEvent::SitesImported);
        main->show();
        exportSurvey();
    }

    void exportSurvey() {
        const QString file = fromPath(folder / "out.txt");
        boxes.tell(u"Output data saved to "_s + file, u"VARN-Tesl"_s);
        exportTransectFile(*main, file);
        changesBefore = surveyChanges();
    }
    void inRowDialog(const QString& option, const QString& box, const QString& text) {
        chooseItem(*main, u"mnuData"_s);
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, option);
        typeInto(dialog, box, text);
        clickOn(dialog, u"Command1"_s);
        waitUntilClosed(u"frmDataEdit"_s);
    }
    void joinRows() {
        chooseItem(*main, u"mnuData"_s);
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, u"Option1"_s);
        typeInto(dialog, u"Text2"_s, u"1"_s);
        typeInto(dialog, u"Text3"_s, u"2"_s);
        clickOn(dialog, u"Command1"_s);
        waitUntilClosed(u"frmDataEdit"_s);
    }
    void adjust(const QString& shift) {
        chooseItem(*main, u"mnuAdjust"_s);
        QWidget& window = shownWindow(u"frmAdjustData"_s);
        typeInto(window, u"txtAdjEC1"_s, shift);
        clickOn(window, u"cmdCompute"_s);
        clickOn(window, u"cmdFinished"_s);
        waitUntilClosed(u"frmAdjustData"_s);
    }
    void expectAsked() {
        EXPECT_GT(surveyChanges(), changesBefore);
        EXPECT_FALSE(theSession().DataSaved);
        boxes.ask(false,
                  u"Attention: you have not exported an output VARN data file yet!\n"
                  u"Are you sure that you wish to exit the program?"_s);
        EXPECT_FALSE(main->close());
        EXPECT_EQ(boxes.pending(), 0);
    }
    void expectNotAsked() {
        EXPECT_TRUE(theSession().DataSaved);
        EXPECT_TRUE(main->close());
        main->show();
    }

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
    std::uint64_t changesBefore = 0;
};

}  // namespace

TEST_F(UnexportedEdits, AreNoneAfterAnExportThatNothingFollows) {
    expectNotAsked();
    chooseItem(*main, u"mnuGrid"_s);
    chooseItem(*main, u"mnuX"_s);
    chooseItem(*main, u"mnuStat"_s);
    chooseItem(*main, u"mnuTrue_Dis"_s);
    expectNotAsked();
}

TEST_F(UnexportedEdits, AreAskedAboutAfterAJoinUntilTheNextExport) {
    joinRows();
    expectAsked();
    exportSurvey();
    expectNotAsked();
}

TEST_F(UnexportedEdits, AreAskedAboutAfterARowIsDeleted) {
    inRowDialog(u"Option2"_s, u"Text4"_s, u"3"_s);
    expectAsked();
}

TEST_F(UnexportedEdits, AreAskedAboutAfterARecalculationThatGivesOtherRows) {
    inRowDialog(u"Option3"_s, u"Text1"_s, u"20"_s);
    expectAsked();
}

TEST_F(UnexportedEdits, AreNoneAfterARecalculationThatGivesTheSameRows) {
    inRowDialog(u"Option3"_s, u"Text1"_s, u"6"_s);
    EXPECT_EQ(theSurvey().MinDistance, 6);
    expectNotAsked();
}

TEST_F(UnexportedEdits, AreAskedAboutAfterAnAdjustmentAndStayWhenItIsTakenBack) {
    adjust(u"0"_s);
    expectNotAsked();
    adjust(u"1"_s);
    expectAsked();
    adjust(u"-1"_s);
    expectAsked();
}

TEST_F(UnexportedEdits, AreAskedAboutAfterASiteIsDeletedOnARowPlot) {
    chooseItem(*main, u"mnuX"_s);
    clickPoint(controlAs<Chart2D>(*main, u"Chart2D3"_s), 1, 2);
    expectNotAsked();
    clickOn(*main, u"Command5"_s);
    expectAsked();
}

TEST_F(UnexportedEdits, AreAskedAboutAfterSitesAreDeletedOnTheMapOrRowsAreLostThere) {
    chooseItem(*main, u"mnuIDEW"_s);
    auto& map = dynamic_cast<frmClip&>(shownWindow(u"frmClip"_s));
    chooseItem(map, u"mnuFullMapTrue"_s);
    clickOn(map, u"cmdClipOn"_s);
    map.picMapZoom_MouseDown(0.4, 0.05);
    map.picMapZoom_MouseMove(0.6, 0.95);
    map.picMapZoom_MouseDown(0.6, 0.95);
    clickOn(map, u"cmdClipOff"_s);
    EXPECT_TRUE(theSession().DataSaved) << "masks alone are no change";
    boxes.ask(true,
              u"This action will permanently delete all currently masked site.\n"
              u"Are you sure you wish to delete these sites?"_s);
    boxes.tell(u"All masked sites have been deleted."_s);
    clickOn(map, u"cmdDelete"_s);
    EXPECT_LT(theSurvey().NumSites, 9);
    EXPECT_GT(surveyChanges(), changesBefore);
    changesBefore = surveyChanges();
    EXPECT_FALSE(theSession().DataSaved);
    theSession().DataSaved = true;  // whatever is exported now still has rows
    boxes.tell(
        u"Warning!  The sites which you have deleted have resulted in the complete\n"
        u"annihilation of 1 or more rows.  Due to this, all row information has been lost.\n\n"
        u"In order to fix this problem, you will need to recalculate the row numbering\n"
        u"information.  This can be done using the Delete / Join / Recalculate Rows menu\n"
        u"option (by choosing the recalculate row numbering sub-option procedure).\n\n"
        u"To avoid this problem in the future, you should avoid deleted entire rows\n"
        u"when clipping a survey grid."_s);
    chooseItem(map, u"mnuDone"_s);
    waitUntilClosed(u"frmClip"_s);
    expectAsked();
}

}  // namespace tessel
