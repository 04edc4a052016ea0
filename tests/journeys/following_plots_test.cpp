// SPDX-License-Identifier: GPL-3.0-or-later
// The view in the main window stays when the survey changes, and shows the survey as it has become.
#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "plots/Chart2D.h"
#include "plots/RowPlotEditor.h"
#include "plots/frmClip.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/PlotWindow.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

using Point = Chart2D::Point;
// Longer than the tenth of a second by which a mnemonic's click is late.
constexpr int kLate = 300;

using Points = std::vector<Point>;

class FollowingPlots : public testing::Test {
  protected:
    FollowingPlots() {
        // Three rows along Y, 10 m apart, of three sites each.
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
        EXPECT_TRUE(QTest::qWaitForWindowActive(main.get()));
        editor = main->findChild<RowPlotEditor*>();
    }
    ~FollowingPlots() override {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window != main.get()) window->hide();
    }

    void inRowDialog(const QString& option, const QString& box, const QString& text) {
        chooseItem(*main, u"mnuData"_s);
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, option);
        typeInto(dialog, box, text);
        clickOn(dialog, u"Command1"_s);
    }
    void deleteRow(const QString& row) { inRowDialog(u"Option2"_s, u"Text4"_s, row); }
    void recalculate(const QString& distance) { inRowDialog(u"Option3"_s, u"Text1"_s, distance); }
    void joinRows(const QString& first, const QString& second) {
        chooseItem(*main, u"mnuData"_s);
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, u"Option1"_s);
        typeInto(dialog, u"Text2"_s, first);
        typeInto(dialog, u"Text3"_s, second);
        clickOn(dialog, u"Command1"_s);
    }
    void adjust(const QString& shift) {
        chooseItem(*main, u"mnuAdjust"_s);
        QWidget& window = shownWindow(u"frmAdjustData"_s);
        typeInto(window, u"txtAdjEC1"_s, shift);
        clickOn(window, u"cmdCompute"_s);
        clickOn(window, u"cmdFinished"_s);
        waitUntilClosed(u"frmAdjustData"_s);
    }
    // Masks and deletes what lies between two places of the map, in parts of its width.
    frmClip& deleteOnMap(double from, double to) {
        chooseItem(*main, u"mnuIDEW"_s);
        auto& map = dynamic_cast<frmClip&>(shownWindow(u"frmClip"_s));
        chooseItem(map, u"mnuFullMapTrue"_s);
        clickOn(map, u"cmdClipOn"_s);
        map.picMapZoom_MouseDown(from, 0.05);
        map.picMapZoom_MouseMove(to, 0.95);
        map.picMapZoom_MouseDown(to, 0.95);
        clickOn(map, u"cmdClipOff"_s);
        boxes.ask(true,
                  u"This action will permanently delete all currently masked site.\n"
                  u"Are you sure you wish to delete these sites?"_s);
        boxes.tell(u"All masked sites have been deleted."_s);
        clickOn(map, u"cmdDelete"_s);
        return map;
    }
    void expectTooManyRows() { boxes.tell(u"Too many rows: Please specify a larger distance value"_s); }
    // Sites 5 m apart and two rows: too many for a distance below 5.
    void openLongSurvey() {
        std::vector<MadeSite> sites;
        for (int i = 0; i < 300; ++i)
            sites.push_back({5.0 * i, 0, 10, 20, i < 150 ? 1 : 2});
        theSurvey() = madeSurvey(sites);
        theSurvey().MinDistance = 100;
    }

    Chart2D& chart(const QString& name) { return controlAs<Chart2D>(*main, name); }
    bool isVisible(const QString& name) const { return main->findChild<QWidget*>(name)->isVisible(); }
    void expectSummaryInstead() const {
        for (const QString& part : {u"Chart2D1"_s, u"Chart2D2"_s, u"Chart2D3"_s, u"Chart2D4"_s, u"Frame1"_s})
            EXPECT_FALSE(isVisible(part)) << part.toStdString();
        EXPECT_TRUE(isVisible(u"lblInvitation"_s));
    }
    static QRectF viewOf(const Chart2D& chart) {
        const auto at = [&](QPoint pixel) {
            const Chart2D::PixelData data = chart.pixelToData(pixel);
            return QPointF(data.x, data.y);
        };
        return {at(chart.rect().center()), at(chart.rect().center() + QPoint(100, 50))};
    }
    static void expectSameView(const QRectF& a, const QRectF& b) {
        EXPECT_NEAR(a.left(), b.left(), 1e-9);
        EXPECT_NEAR(a.top(), b.top(), 1e-9);
        EXPECT_NEAR(a.width(), b.width(), 1e-9);
        EXPECT_NEAR(a.height(), b.height(), 1e-9);
    }

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
    RowPlotEditor* editor = nullptr;
};

}  // namespace

TEST_F(FollowingPlots, OfLagDistancesShowTheGapsThatAreLeft) {
    chooseItem(*main, u"mnuX_Dis"_s);
    deleteRow(u"2"_s);
    EXPECT_EQ(pointsOf(chart(u"Chart2D1"_s), Chart2D::kData, 1),
              (Points{{1, 0}, {2, 0}, {3, 20}, {4, 0}, {5, 0}, {kHole, kHole}}));
    EXPECT_EQ(chart(u"Chart2D1"_s).axisRange(Chart2D::Axis::Y).maximum, 20);
    EXPECT_EQ(chart(u"Chart2D1"_s).headerText(), u"Sample Distance Plot (By X)"_s);
}

TEST_F(FollowingPlots, OfLagDistancesShowTheNewDistanceInRedAlsoWhenItGivesTooManyRows) {
    openLongSurvey();
    chooseItem(*main, u"mnuTrue_Dis"_s);
    recalculate(u"20"_s);
    EXPECT_EQ(chart(u"Chart2D1"_s).point(Chart2D::kData, 2, 1), (Point{1, 20}));
    expectTooManyRows();
    recalculate(u"2"_s);
    EXPECT_TRUE(isVisible(u"Chart2D1"_s));
    EXPECT_EQ(chart(u"Chart2D1"_s).point(Chart2D::kData, 2, 299), (Point{299, 2}));
}

TEST_F(FollowingPlots, OfTheGridShowTheRowsAsTheyAreNow) {
    chooseItem(*main, u"mnuGrid"_s);
    Chart2D& grid = chart(u"Chart2D2"_s);
    joinRows(u"2"_s, u"1"_s);
    ASSERT_EQ(grid.seriesCount(Chart2D::kData), 2);
    EXPECT_EQ(grid.pointCount(Chart2D::kData, 1), 6);
    EXPECT_EQ(grid.seriesStyle(Chart2D::kData, 2).colour, 2);
    EXPECT_EQ(pointsOf(grid, Chart2D::kData, 2), (Points{{20, 0}, {20, 5}, {20, 9}}));
    recalculate(u"6"_s);
    EXPECT_EQ(grid.seriesCount(Chart2D::kData), 3);
    deleteRow(u"3"_s);
    EXPECT_EQ(grid.seriesCount(Chart2D::kData), 2);
    EXPECT_EQ(grid.axisRange(Chart2D::Axis::X).maximum, 10.5);
    EXPECT_TRUE(grid.isVisible());
}

TEST_F(FollowingPlots, OfTheGridGiveWayWhereTheRowsAreOfNoUse) {
    openLongSurvey();
    chooseItem(*main, u"mnuGrid"_s);
    expectTooManyRows();
    recalculate(u"2"_s);
    expectSummaryInstead();
}

TEST_F(FollowingPlots, ShowWhatIsLeftWhileTheMapIsStillOpen) {
    chooseItem(*main, u"mnuGrid"_s);
    frmClip& map = deleteOnMap(0.4, 0.6);
    EXPECT_TRUE(isVisible(u"Chart2D2"_s));
    EXPECT_EQ(pointsOf(chart(u"Chart2D2"_s), Chart2D::kData, 2), (Points{{20, 0}, {20, 5}, {20, 9}}));
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
    EXPECT_EQ(chart(u"Chart2D2"_s).seriesCount(Chart2D::kData), 1);
    EXPECT_EQ(chart(u"Chart2D2"_s).pointCount(Chart2D::kData, 1), 6);
}

TEST_F(FollowingPlots, GiveWayWhereNoSiteIsLeft) {
    for (const QString& item : {u"mnuGrid"_s, u"mnuTrue_Dis"_s, u"mnuX"_s}) {
        theSurvey() = madeSurvey({{0, 0, 10, 20, 1}, {0, 5, 11, 22, 1}});
        main->menusFollow(MenuEvent::SitesImported);
        chooseItem(*main, item);
        ASSERT_FALSE(isVisible(u"lblInvitation"_s));
        boxes.tell(u"There is no more point left in the file!"_s);
        deleteRow(u"1"_s);
        expectSummaryInstead();
        waitUntilClosed(u"frmDataEdit"_s);
    }
}

TEST_F(FollowingPlots, KeepTheirPlaceInAZoomedView) {
    chooseItem(*main, u"mnuGrid"_s);
    Chart2D& grid = chart(u"Chart2D2"_s);
    QTest::keyClick(&grid, Qt::Key_Plus);
    const QRectF before = viewOf(grid);
    deleteRow(u"3"_s);
    EXPECT_TRUE(grid.isZoomed());
    expectSameView(viewOf(grid), before);
    chooseItem(*main, u"mnuGrid"_s);
    EXPECT_FALSE(grid.isZoomed()) << "a view that is chosen shows everything";
}

TEST_F(FollowingPlots, OfARowShowItsReadingsAnewAndKeepTheView) {
    chooseItem(*main, u"mnuY"_s);
    clickOn(*main, u"Command2"_s);
    QTest::keyClick(editor->Chart2D3, Qt::Key_Plus);
    clickPoint(*editor->Chart2D3, 1, 2);
    ASSERT_EQ(editor->selection().SelCount, 1);
    const QRectF before = viewOf(*editor->Chart2D3);
    adjust(u"1"_s);
    EXPECT_EQ(editor->CurrentRow, 2);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(pointsOf(*editor->Chart2D3, Chart2D::kData, 1), (Points{{9, 14}, {5, 15}, {0, 16}}));
    expectSameView(viewOf(*editor->Chart2D3), before);
    EXPECT_EQ(editor->selection().SelCount, 0) << "a row that is drawn anew has no selection";
    EXPECT_FALSE(editor->Command5->isEnabled());
    EXPECT_EQ(editor->Chart2D3->pointCount(Chart2D::kHighlight, 1), 0);
}

TEST_F(FollowingPlots, OfARowShowTheLastOneWhereThereAreFewerNow) {
    chooseItem(*main, u"mnuY"_s);
    clickOn(*main, u"Command2"_s);
    clickOn(*main, u"Command2"_s);
    deleteRow(u"1"_s);
    EXPECT_EQ(editor->CurrentRow, 2);
    EXPECT_EQ(editor->Chart2D4->headerText(), u"Sample Row Plot:  Row #2 (3 points)"_s);
    EXPECT_EQ(pointsOf(*editor->Chart2D3, Chart2D::kData, 1), (Points{{0, 16}, {5, 17}, {9, 18}}));
    EXPECT_TRUE(editor->Command1->isEnabled());
    EXPECT_FALSE(editor->Command2->isEnabled());
    joinRows(u"1"_s, u"2"_s);
    EXPECT_EQ(editor->Chart2D4->headerText(), u"Sample Row Plot:  Row #1 (6 points)"_s);
    EXPECT_FALSE(editor->Command1->isEnabled());
    EXPECT_TRUE(editor->EditorStarted);
}

TEST_F(FollowingPlots, OfARowShowTheLastRowThatTheMapHasLeft) {
    chooseItem(*main, u"mnuX"_s);
    clickOn(*main, u"Command2"_s);
    clickOn(*main, u"Command2"_s);
    frmClip& map = deleteOnMap(0.4, 0.6);
    EXPECT_EQ(editor->CurrentRow, 2);
    EXPECT_EQ(pointsOf(*editor->Chart2D3, Chart2D::kData, 1), (Points{{20, 16}, {20, 17}, {20, 18}}));
    map.hide();
}

TEST_F(FollowingPlots, OfARowGiveWayWhereTheRowsAreOfNoUse) {
    openLongSurvey();
    chooseItem(*main, u"mnuX"_s);
    expectTooManyRows();
    recalculate(u"2"_s);
    expectSummaryInstead();
    EXPECT_FALSE(editor->EditorStarted);
}

TEST_F(FollowingPlots, StandBesideWindowsThatFollowToo) {
    chooseItem(*main, u"mnuStat"_s);
    chooseItem(*main, u"mnuHist"_s);
    chooseItem(*main, u"mnuSigCorr"_s);
    QWidget& statistics = shownWindow(u"frmStat"_s);
    QWidget& histograms = shownWindow(u"frmHistForm"_s);
    QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(histograms, u"mnuPlot"_s);
    chooseItem(correlation, u"mnuPlot1"_s);
    deleteRow(u"3"_s);
    EXPECT_EQ(controlAs<QLabel>(statistics, u"lblInfo"_s).text(), u"Total # of detected rows = 2"_s);
    EXPECT_EQ(controlAs<QTableView>(statistics, u"Stats"_s).model()->rowCount(), 2);
    EXPECT_EQ(controlAs<QLabel>(histograms, u"lblH1_3"_s).text(), u"15.00"_s);
    EXPECT_EQ(controlAs<Chart2D>(correlation, u"Chart2D1"_s).pointCount(Chart2D::kData, 1), 6);
    chooseItem(*main, u"mnuX"_s);
    clickPoint(*editor->Chart2D3, 1, 2);
    clickOn(*main, u"Command5"_s);
    EXPECT_EQ(controlAs<QTableView>(statistics, u"Stats"_s).model()->index(0, 1).data().toInt(), 2)
        << "after a deletion on a row plot";
    EXPECT_EQ(controlAs<Chart2D>(correlation, u"Chart2D1"_s).pointCount(Chart2D::kData, 1), 5);
}

TEST_F(FollowingPlots, StandBesideRowStatisticsThatSayWhyTheyAreEmpty) {
    openLongSurvey();
    chooseItem(*main, u"mnuStat"_s);
    QWidget& statistics = shownWindow(u"frmStat"_s);
    expectTooManyRows();
    recalculate(u"2"_s);
    EXPECT_EQ(controlAs<QLabel>(statistics, u"lblInfo"_s).text(),
              u"Too many rows: Please specify a larger distance value"_s);
    EXPECT_EQ(controlAs<QTableView>(statistics, u"Stats"_s).model()->rowCount(), 0);
    EXPECT_EQ(theSurvey().RowIndex, 251) << "looking changes nothing";
}

TEST_F(FollowingPlots, StandBesideTheRowDialogAndShowWhatIsTypedThere) {
    chooseItem(*main, u"mnuTrue_Dis"_s);
    chooseItem(*main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, u"Option3"_s);
    const QImage without = chart(u"Chart2D1"_s).grab().toImage();
    typeInto(dialog, u"Text1"_s, u"8"_s);
    EXPECT_NE(chart(u"Chart2D1"_s).grab().toImage(), without);
    EXPECT_EQ(controlAs<QLabel>(dialog, u"lblRows"_s).text(), u"3 rows"_s);
    clickOn(dialog, u"Command2"_s);
    waitUntilClosed(u"frmDataEdit"_s);
    EXPECT_EQ(chart(u"Chart2D1"_s).grab().toImage(), without);
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
