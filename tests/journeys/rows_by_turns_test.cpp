// SPDX-License-Identifier: GPL-3.0-or-later
// Rows by turns in the whole program: what is found is shown, taken over and taken back.
#include "journal/journal.h"
#include "plots/Chart2D.h"
#include "plots/chart_views.h"
#include "rows/frmTurns.h"
#include "support/PlotWindow.h"
#include "support/RunningProgram.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

Survey walk() {
    std::vector<MadeSite> sites;
    for (int row = 0; row < 3; ++row) {
        for (int i = 0; i <= 40; ++i)
            sites.push_back({row * 6.0, row % 2 == 0 ? i : 40.0 - i, 20, 30, 1, 0});
        for (int i = 1; i < 6 && row < 2; ++i)
            sites.push_back({row * 6.0 + i, row % 2 == 0 ? 40.0 : 0, 20, 30, 1, 0});
    }
    return madeSurvey(sites);
}

class RowsByTurnsJourney : public testing::Test, protected RunningProgram {
  protected:
    RowsByTurnsJourney() : RunningProgram(walk()) {}

    frmTurns& openTurns() {
        chooseItem(*main, u"mnuTurns"_s);
        return dynamic_cast<frmTurns&>(shownWindow(u"frmTurns"_s));
    }
    Chart2D& grid() { return controlAs<Chart2D>(*main, u"Chart2D2"_s); }
};

}  // namespace

TEST_F(RowsByTurnsJourney, ShowWhatWouldComeOutOnTheGridAndLeaveTheSurveyAlone) {
    frmTurns& window = openTurns();
    EXPECT_TRUE(grid().isVisible());
    EXPECT_EQ(grid().headerText(), u"Rows found, not yet taken over"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 4) << "three rows and the turns";
    EXPECT_GE(grid().pointCount(Chart2D::kData, 2), 40);
    EXPECT_GT(grid().pointCount(Chart2D::kData, 4), 4);
    clickOn(window, u"cmdCancel"_s);
    EXPECT_EQ(grid().headerText(), u"Sample Grid Plot"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 1);
    expectSameSurvey(theSurvey(), before);
}

TEST_F(RowsByTurnsJourney, AreTakenOverAndTakenBack) {
    frmTurns& window = openTurns();
    clickOn(window, u"optTurnsDelete"_s);
    clickOn(window, u"cmdOk"_s);
    EXPECT_FALSE(isShown(u"frmTurns"_s));
    EXPECT_EQ(theSurvey().NumRows, 3);
    EXPECT_LT(theSurvey().NumSites, before.NumSites);
    EXPECT_EQ(grid().headerText(), u"Sample Grid Plot"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 3);
    EXPECT_EQ(main->mnuUndo->text(), u"&Undo: find rows by turns"_s);
    chooseItem(*main, u"mnuUndo"_s);
    expectSameSurvey(theSurvey(), before);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 1);
}

TEST_F(RowsByTurnsJourney, AreFoundWhereGapsFoundTooManyRows) {
    surveyUnderTest().RowIndex = kMaxRows + 1;
    frmTurns& window = openTurns();
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 4);
    clickOn(window, u"cmdCancel"_s);
    EXPECT_FALSE(isVisible(u"Chart2D2"_s)) << "the survey's own rows cannot be shown";
    clickOn(openTurns(), u"cmdOk"_s);
    EXPECT_EQ(theSurvey().NumRows, 3);
    EXPECT_TRUE(main->mnuRow->isEnabled());
}

TEST_F(RowsByTurnsJourney, FollowASurveyThatChangesBesideThemAndLeaveOtherPlotsInPlace) {
    frmTurns& window = openTurns();
    chooseItem(*main, u"mnuTrue_Dis"_s);
    const QString text = window.lblTurns->text();
    clickOn(window, u"cmdOk"_s);
    EXPECT_TRUE(isVisible(u"Chart2D1"_s));
    frmTurns& again = openTurns();
    EXPECT_EQ(again.lblTurns->text(), text);
    chooseItem(*main, u"mnuTrue_Dis"_s);
    deleteRow(2);
    EXPECT_TRUE(isVisible(u"Chart2D1"_s));
    EXPECT_TRUE(again.isVisible());
    EXPECT_NE(again.lblTurns->text(), text);
}

TEST_F(RowsByTurnsJourney, SayWhichRowASiteWouldBeIn) {
    openTurns();
    const auto footerAt = [&](const Chart2D::Point& point) {
        const QPoint pixel = grid().dataToPixel(point.x, point.y).toPoint();
        QTest::mouseMove(&grid(), pixel + QPoint(20, 20));
        QTest::mouseMove(&grid(), pixel);
        return grid().footerText();
    };
    EXPECT_EQ(footerAt(grid().point(Chart2D::kData, 2, 20)).left(7), u"Row #2,"_s);
    EXPECT_EQ(footerAt(grid().point(Chart2D::kData, 4, 1)).left(10), u"In a turn,"_s);
}

TEST_F(RowsByTurnsJourney, AreNoLongerShownWhereValuesFindNone) {
    frmTurns& window = openTurns();
    typeInto(window, u"txtShortest"_s, u"1000"_s);
    EXPECT_EQ(grid().headerText(), u"Sample Grid Plot"_s);
    typeInto(window, u"txtShortest"_s, u"10"_s);
    EXPECT_EQ(grid().seriesCount(Chart2D::kData), 4);
}

TEST_F(RowsByTurnsJourney, KeepWhatTheUserHasZoomedInOn) {
    chooseItem(*main, u"mnuGrid"_s);
    QTest::keyClick(&grid(), Qt::Key_Plus);
    const Interval view = grid().views().view(ChartViews::kX);
    EXPECT_TRUE(grid().isZoomed());
    frmTurns& window = openTurns();
    typeInto(window, u"txtTurn"_s, u"50"_s);
    EXPECT_EQ(grid().views().view(ChartViews::kX), view);
    clickOn(window, u"cmdCancel"_s);
    EXPECT_EQ(grid().views().view(ChartViews::kX), view);
}

}  // namespace tessel
