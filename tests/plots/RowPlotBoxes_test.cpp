// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"
#include "support/Pixels.h"
#include "support/RowPlots.h"

namespace tessel {

using Point = Chart2D::Point;

namespace {

class RowPlotBoxes : public OpenRowPlots {
  protected:
    // From above and left of one point to below and right of another, wherever they lie.
    void drawBox(Chart2D& chart, qsizetype from, qsizetype to,
                 Qt::KeyboardModifiers held = Qt::ShiftModifier) {
        const QPoint a = pixelOf(chart, Chart2D::kData, 1, from), b = pixelOf(chart, Chart2D::kData, 1, to);
        const auto [left, right] = std::minmax({a.x(), b.x()});
        const auto [top, bottom] = std::minmax({a.y(), b.y()});
        drawBox(chart, QRect(QPoint(left - 5, top - 5), QPoint(right + 5, bottom + 5)), held);
    }
    void drawBox(Chart2D& chart, const QRect& box, Qt::KeyboardModifiers held = Qt::ShiftModifier) {
        drag(chart, Qt::LeftButton, box.topLeft(), box.bottomRight(), held);
    }
    static QRect wholePlot(const Chart2D& chart) {
        return chart.plotArea().toAlignedRect().adjusted(1, 1, -1, -1);
    }
    static constexpr Qt::KeyboardModifiers kShiftAndCtrl = Qt::ShiftModifier | Qt::ControlModifier;
};

// Two sites at 120 where the logger paused.
Survey pausedRow() {
    return madeSurvey({{100, 10, 20, 40, 1},
                       {120, 10, 30, 45, 1},
                       {120, 12, 25, 50, 1},
                       {130, 12, 28, 55, 1},
                       {150, 10, 22, 48, 1}});
}

std::vector<SiteIndex> upTo(SiteIndex last) {
    std::vector<SiteIndex> points(static_cast<std::size_t>(last));
    std::iota(points.begin(), points.end(), SiteIndex{1});
    return points;
}

}  // namespace

TEST_F(RowPlotBoxes, SelectAllPointsOfTheFirstReadingInABoxOnTheProfile) {
    clickPoint(profile, 1, 3);
    drawBox(profile, 2, 4);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{3, 2, 4}));
    EXPECT_EQ(editor.lblSelected->text(), u"Sites selected: 3"_s);
    EXPECT_FALSE(editor.lblNotice->isVisible());
    EXPECT_TRUE(editor.Command5->isEnabled());
    EXPECT_FALSE(editor.Command6->isEnabled());
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 2) ==
                std::vector<Point>({{120, 50}, {110, 45}, {130, 55}}));
    EXPECT_TRUE(pointsOf(map, Chart2D::kHighlight, 1) ==
                std::vector<Point>({{120, 10}, {110, 11}, {130, 12}}));
    EXPECT_TRUE(profile.hasFocus());
}

TEST_F(RowPlotBoxes, SelectNothingBesideThePointsOfTheFirstReading) {
    const QPoint second = pixelOf(profile, Chart2D::kData, 2, 2);
    drawBox(profile, QRect(second - QPoint(6, 6), second + QPoint(6, 6)));
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
}

TEST_F(RowPlotBoxes, SelectAndDeselectOnTheMap) {
    drawBox(map, wholePlot(map));
    EXPECT_EQ(selected(), upTo(5));
    drawBox(map, 2, 4, kShiftAndCtrl);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{1, 3, 5}));
    drawBox(map, wholePlot(map), kShiftAndCtrl);
    EXPECT_EQ(editor.selection().SelCount, 0);
    EXPECT_FALSE(editor.Command5->isEnabled());
}

TEST_F(RowPlotBoxes, HoldWhatIsInViewOnly) {
    profile.setAxisRange(Chart2D::Axis::kX, 105, 145);
    profile.setFocus();
    drawBox(profile, QRect(wholePlot(profile).topLeft(), profile.rect().bottomRight()));
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{2, 3, 4, 5}));
}

TEST_F(RowPlotBoxes, MayBeginBesideThePlot) {
    const QPoint third = pixelOf(profile, Chart2D::kData, 1, 3);
    drawBox(profile, QRect(QPoint(3, 3), QPoint(third.x() + 5, profile.rect().bottom() - 3)));
    EXPECT_EQ(selected(), upTo(3));
    QTest::mouseClick(&profile, Qt::LeftButton, Qt::ShiftModifier, QPoint(3, third.y()),
                      QApplication::doubleClickInterval() + 1);
    EXPECT_EQ(selected(), upTo(3)) << "that is no box";
}

TEST_F(RowPlotBoxes, SelectNoMoreThanMayBeAndSayWhatTakesMore) {
    openByX(longRowSurvey(300));
    drawBox(map, wholePlot(map));
    EXPECT_EQ(selected(), upTo(101));
    EXPECT_TRUE(editor.lblNotice->isVisible());
    EXPECT_EQ(editor.lblNotice->text(),
              u"300 sites are in the box, and no more than 101 can be selected at a time. The map or the "
              u"search for suspicious sites takes more."_s);
    PlainSurvey expected = plainSurveyOf(longRowSurvey(300));
    deletePlainPoints(expected, 1, selected());
    click("Command5");
    expectAsPlain(theSurvey(), expected);
    EXPECT_FALSE(editor.lblNotice->isVisible());
}

TEST_F(RowPlotBoxes, SayNothingOfWhatIsSelectedAlready) {
    openByX(longRowSurvey(101));
    drawBox(map, wholePlot(map));
    drawBox(map, wholePlot(map));
    EXPECT_EQ(editor.selection().SelCount, 101);
    EXPECT_FALSE(editor.lblNotice->isVisible());
}

TEST_F(RowPlotBoxes, SelectSitesOfOneCoordinateEachForItself) {
    openByX(pausedRow());
    drawBox(map, 1, 4);
    EXPECT_EQ(selected(), upTo(4));
    PlainSurvey expected = plainSurveyOf(pausedRow());
    deletePlainPoints(expected, 1, upTo(4));
    click("Command5");
    expectAsPlain(theSurvey(), expected);
}

TEST_F(RowPlotBoxes, AreDrawnOverThePlotsWithoutDrawingThem) {
    const QImage before = profile.grab().toImage();
    QSignalSpy redrawn(&profile, &Chart2D::redrawn);
    const QRect box = wholePlot(profile).adjusted(20, 20, -20, -20);
    QTest::mousePress(&profile, Qt::LeftButton, Qt::ShiftModifier, box.topLeft());
    QTest::mouseMove(&profile, box.center());
    const QImage half = profile.grab().toImage();
    QTest::mouseMove(&profile, box.bottomRight());
    const QImage whole = profile.grab().toImage();
    EXPECT_NE(half, before);
    EXPECT_NE(whole, half);
    EXPECT_EQ(redrawn.count(), 0);
    EXPECT_EQ(editor.selection().SelCount, 0) << "before the button is released";
    QTest::mouseRelease(&profile, Qt::LeftButton, Qt::ShiftModifier, box.bottomRight());
    EXPECT_GT(editor.selection().SelCount, 0);
}

TEST_F(RowPlotBoxes, ThatAreNoneAreClicks) {
    const QPoint point = pixelOf(profile, Chart2D::kData, 1, 2);
    QTest::mouseClick(&profile, Qt::LeftButton, Qt::ShiftModifier, point);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
    QTest::mouseDClick(&profile, Qt::LeftButton, Qt::ShiftModifier, point);
    expectNothingSelected();
}

TEST_F(RowPlots, SayThatAnotherSiteOfTheSameCoordinateWasDeselected) {
    openByX(pausedRow());
    clickPoint(map, 1, 2);
    EXPECT_FALSE(editor.lblNotice->isVisible());
    clickPoint(map, 1, 3);
    expectNothingSelected();
    EXPECT_TRUE(editor.lblNotice->isVisible());
    EXPECT_EQ(
        editor.lblNotice->text(),
        u"Another site with the same X was deselected instead: sites with the same coordinate along the "
        u"row count as one."_s);
    clickPoint(map, 1, 3);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{3});
    EXPECT_FALSE(editor.lblNotice->isVisible());
    clickPoint(map, 1, 3);
    EXPECT_FALSE(editor.lblNotice->isVisible()) << "the site itself";
}

}  // namespace tessel
