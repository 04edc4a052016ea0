// SPDX-License-Identifier: GPL-3.0-or-later
// The view in the main window stays when the survey changes, and shows the survey as it has become.
#include "journal/journal.h"
#include "plots/Chart2D.h"
#include "plots/RowPlotEditor.h"
#include "plots/chart_views.h"
#include "support/PlotWindow.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

// Longer than the tenth of a second by which a mnemonic's click is late.
constexpr int kLate = 300;

using Points = std::vector<Chart2D::Point>;

class FollowingPlots : public testing::Test, protected RunningProgram {
  protected:
    FollowingPlots() : RunningProgram(rowsAlongY(3)), editor(main->findChild<RowPlotEditor*>()) {}

    void adjust(const QString& shift) {
        chooseItem(*main, u"mnuAdjust"_s);
        QWidget& window = shownWindow(u"frmAdjustData"_s);
        typeInto(window, u"txtAdjEC1"_s, shift);
        clickOn(window, u"cmdCompute"_s);
        clickOn(window, u"cmdFinished"_s);
        waitUntilClosed(u"frmAdjustData"_s);
    }
    Chart2D& chart(const QString& name) { return controlAs<Chart2D>(*main, name); }
    static void expectSameView(const Chart2D& chart, const ChartViews& before) {
        for (const auto axis : {ChartViews::kX, ChartViews::kY})
            EXPECT_EQ(chart.views().view(axis), before.view(axis));
    }

    RowPlotEditor* const editor;
};

}  // namespace

TEST_F(FollowingPlots, KeepTheirPlaceInAZoomedView) {
    chooseItem(*main, u"mnuGrid"_s);
    Chart2D& grid = chart(u"Chart2D2"_s);
    QTest::keyClick(&grid, Qt::Key_Plus);
    const ChartViews seen = grid.views();
    deleteRow(3);
    EXPECT_TRUE(grid.isZoomed());
    expectSameView(grid, seen);
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_FALSE(grid.isZoomed()) << "a view that is chosen shows everything";
}

TEST_F(FollowingPlots, OfARowShowItsReadingsAnewAndKeepTheView) {
    chooseItem(*main, u"mnuY"_s);
    clickOn(*main, u"Command2"_s);
    QTest::keyClick(editor->Chart2D3, Qt::Key_Plus);
    clickPoint(*editor->Chart2D3, 1, 2);
    ASSERT_EQ(editor->selection().SelCount, 1);
    const ChartViews seen = editor->Chart2D3->views();
    adjust(u"1"_s);
    EXPECT_EQ(editor->CurrentRow, 2);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(pointsOf(*editor->Chart2D3, Chart2D::kData, 1), (Points{{9, 14}, {5, 15}, {0, 16}}));
    expectSameView(*editor->Chart2D3, seen);
    EXPECT_EQ(editor->selection().SelCount, 0) << "a row that is drawn anew has no selection";
    EXPECT_FALSE(editor->Command5->isEnabled());
    EXPECT_EQ(editor->Chart2D3->pointCount(Chart2D::kHighlight, 1), 0);
}

TEST_F(FollowingPlots, StandBesideWindowsThatFollowToo) {
    for (const QString& item : {u"mnuStat"_s, u"mnuHist"_s, u"mnuSigCorr"_s})
        chooseItem(*main, item);
    QWidget& histograms = shownWindow(u"frmHistForm"_s);
    QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(histograms, u"mnuPlot"_s);
    chooseItem(correlation, u"mnuPlot1"_s);
    deleteRow(3);
    EXPECT_EQ(controlAs<QLabel>(shownWindow(u"frmStat"_s), u"lblInfo"_s).text(),
              u"Total # of detected rows = 2"_s);
    EXPECT_EQ(controlAs<QLabel>(histograms, u"lblH1_3"_s).text(), u"15.00"_s);
    EXPECT_EQ(controlAs<Chart2D>(correlation, u"Chart2D1"_s).pointCount(Chart2D::kData, 1), 6);
}

TEST_F(FollowingPlots, BringTheRowDialogBesideThemUpToDate) {
    chooseItem(*main, u"mnuX"_s);
    chooseItem(*main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, u"Option2"_s);
    typeInto(dialog, u"Text4"_s, u"3"_s);
    // The first row goes, site by site: row 3 is another one then.
    for (int sites = 3; sites > 0; --sites) {
        EXPECT_EQ(controlAs<QLineEdit>(dialog, u"Text4"_s).text(), u"3"_s);
        clickPoint(*editor->Chart2D3, 1, 1);
        clickOn(*main, u"Command5"_s);
    }
    EXPECT_EQ(controlAs<QLineEdit>(dialog, u"Text4"_s).text(), QString());
    EXPECT_EQ(controlAs<QLabel>(dialog, u"lblInForce"_s).text(),
              u"In force now: 2 rows, minimum distance 7 m (true distance)"_s);
    typeInto(dialog, u"Text4"_s, u"1"_s);
    clickOn(dialog, u"Command1"_s);
    EXPECT_EQ(editor->CurrentRow, 1);
    EXPECT_EQ(pointsOf(*editor->Chart2D3, Chart2D::kData, 1), (Points{{20, 16}, {20, 17}, {20, 18}}));
}

TEST_F(FollowingPlots, AndTheMapKeepTheirSurveyUntilALateClickOfTheRowDialogIsLetThrough) {
    chooseItem(*main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, u"Option2"_s);
    typeInto(dialog, u"Text4"_s, u"1"_s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    controlAs<QPushButton>(dialog, u"Command1"_s).animateClick();
    chooseItem(*main, u"mnuIDEW"_s);
    QWidget& map = shownWindow(u"frmClip"_s);
    QTest::qWait(kLate);
    EXPECT_EQ(theSurvey().NumSites, 9);
    map.close();
    EXPECT_TRUE(QTest::qWaitFor([] { return theSurvey().NumSites == 6; }));
}

}  // namespace tessel
