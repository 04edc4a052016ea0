// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/Chart2D.h"

#include "base/run_time_error.h"
#include "support/Pixels.h"
#include "support/PlotWindow.h"

namespace tessel {

using Axis = Chart2D::Axis;

namespace {

constexpr auto kData = Chart2D::kData;
constexpr auto kHighlight = Chart2D::kHighlight;

class Chart2DTest : public testing::Test {
  protected:
    Chart2DTest() {
        chart.resize(800, 600);
        chart.setAxisRange(Axis::kX, 0, 100);
        chart.setAxisRange(Axis::kY, 0, 50);
        chart.setSeriesCount(kData, 1);
    }

    void show() {
        chart.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&chart));
        QCoreApplication::processEvents();
    }

    void addPoint(double x, double y, Chart2D::Group group = kData, int series = 1) {
        const qsizetype count = chart.pointCount(group, series);
        chart.setPointCount(group, series, count + 1);
        chart.setPoint(group, series, count + 1, x, y);
    }

    QPoint pixel(double x, double y) const {
        const QPointF p = chart.dataToPixel(x, y);
        return {int(std::floor(p.x())), int(std::floor(p.y()))};
    }

    // The colour that is seen where these data are.
    QColor seen(double x, double y) { return colourAt(chart.grab().toImage(), chart.dataToPixel(x, y)); }

    Chart2D chart;
};

}  // namespace

TEST_F(Chart2DTest, KeepsExactDoublesAndHolesWherePointsWereNotSetOrDropped) {
    constexpr Chart2D::Point kNone{kHole, kHole};
    chart.setPointCount(kData, 1, 3);
    for (qsizetype point = 0; point <= 3; ++point)
        EXPECT_EQ(chart.point(kData, 1, point), kNone);
    chart.setPoint(kData, 1, 0, 1, 2);
    EXPECT_EQ(chart.point(kData, 1, 0), (Chart2D::Point{1, 2}));
    EXPECT_EQ(chart.pointCount(kData, 1), 3);
    for (int i = 4; i <= 7; ++i)
        addPoint(436000.123456789 + i, -0.1);
    chart.setPointCount(kData, 1, 5);
    EXPECT_EQ(chart.pointCount(kData, 1), 5);
    EXPECT_EQ(chart.point(kData, 1, 5), (Chart2D::Point{436000.123456789 + 5, -0.1}));
    chart.setPointCount(kData, 1, 6);
    EXPECT_EQ(chart.point(kData, 1, 6), kNone);
}

TEST_F(Chart2DTest, GroupsKeepTheirSeriesApart) {
    chart.setSeriesCount(kData, 3);
    chart.setSeriesCount(kHighlight, 2);
    addPoint(1, 1, kData, 3);
    EXPECT_EQ(chart.seriesCount(kData), 3);
    EXPECT_EQ(chart.seriesCount(kHighlight), 2);
    EXPECT_EQ(chart.pointCount(kHighlight, 2), 0);
    chart.setSeriesCount(kData, 1);
    chart.setSeriesCount(kData, 3);
    EXPECT_EQ(chart.pointCount(kData, 3), 0);
}

TEST_F(Chart2DTest, SetsOrReplacesManyPointsAtOnceAndLeavesNoOthers) {
    constexpr Chart2D::Point kNone{kHole, kHole};
    const std::vector<double> x = {1, 2, 3};
    const std::vector<double> y = {4, 5, 6};
    chart.setPointCount(kData, 1, 4);
    chart.setPoint(kData, 1, 0, 7, 7);
    chart.setPoints(kData, 1, 2, x, y);
    EXPECT_THROW(chart.setPoints(kData, 1, 3, x, y), RunTimeError);
    EXPECT_EQ(pointsOf(chart, kData, 1), (std::vector<Chart2D::Point>{kNone, {1, 4}, {2, 5}, {3, 6}}));
    chart.replacePoints(kData, 1, x, y);
    EXPECT_THROW(chart.replacePoints(kData, 1, x, std::span(y).first(2)), RunTimeError);
    EXPECT_THROW(chart.replacePoints(kData, 2, x, y), RunTimeError);
    EXPECT_EQ(chart.point(kData, 1, 0), kNone);
    EXPECT_EQ(pointsOf(chart, kData, 1), (std::vector<Chart2D::Point>{{1, 4}, {2, 5}, {3, 6}}));
}

TEST_F(Chart2DTest, IsNotDrawnWhileItIsHiddenAndUpToDateWhenItIsShown) {
    QSignalSpy redrawn(&chart, &Chart2D::redrawn);
    for (const bool shownBefore : {false, true}) {
        if (shownBefore) {
            show();
            chart.hide();
            redrawn.clear();
        }
        chart.replacePoints(kData, 1, std::array{50.0}, std::array{25.0});
        chart.setSymbolColour(kData, 1, 12);
        QCoreApplication::processEvents();
        EXPECT_EQ(redrawn.count(), 0);
        show();
        EXPECT_GE(redrawn.count(), 1);
        EXPECT_GT(countColour(chart.grab().toImage(), paletteColour(12)), 5);
    }
}

TEST_F(Chart2DTest, WhatDoesNotExistIsSubscriptOutOfRange) {
    chart.setPointCount(kData, 1, 2);
    EXPECT_THROW(chart.point(kData, 1, 3), RunTimeError);
    EXPECT_THROW(chart.point(kData, 1, -1), RunTimeError);
    EXPECT_THROW(chart.setPoint(kData, 1, 3, 0, 0), RunTimeError);
    EXPECT_THROW(chart.setPoint(kData, 0, 1, 0, 0), RunTimeError);
    EXPECT_THROW(chart.setPointCount(kData, 2, 1), RunTimeError);
    EXPECT_THROW(chart.setSymbolColour(kHighlight, 1, 4), RunTimeError);
    EXPECT_THROW(chart.setSeriesCount(kData, -1), RunTimeError);
    EXPECT_THROW(chart.seriesCount(static_cast<Chart2D::Group>(3)), RunTimeError);
    EXPECT_EQ(chart.pointCount(kData, 1), 2);
}

TEST_F(Chart2DTest, AxisRangesAnswerWhatWasSetAndTheSecondYAxisFollowsTheFirstUntilThen) {
    EXPECT_EQ(chart.axisRange(Axis::kY2), (Interval{0, 50}));
    chart.setAxisRange(Axis::kY2, 0, 10);
    chart.setAxisRange(Axis::kX, 5, 5);
    chart.setAxisRange(Axis::kY, 10, -2);
    EXPECT_EQ(chart.axisRange(Axis::kX), (Interval{5, 5}));
    EXPECT_EQ(chart.axisRange(Axis::kY), (Interval{10, -2}));
    EXPECT_EQ(chart.axisRange(Axis::kY2), (Interval{0, 10}));
}

TEST_F(Chart2DTest, TheHighlightGroupIsMeasuredOnTheSecondYAxis) {
    chart.setAxisRange(Axis::kY2, 0, 100);
    chart.setSeriesCount(kHighlight, 1);
    addPoint(50, 50, kHighlight);
    EXPECT_EQ(chart.nearestPoint(kHighlight, pixel(50, 25)).distance, 0);
    EXPECT_GT(chart.nearestPoint(kHighlight, pixel(50, 50)).distance, 100);
}

TEST_F(Chart2DTest, AZeroWidthRangeShowsItsValueInTheMiddle) {
    const double middle = chart.dataToPixel(50, 0).x();
    chart.setAxisRange(Axis::kX, 436000.12, 436000.12);
    addPoint(436000.12, 25);
    EXPECT_NEAR(chart.dataToPixel(436000.12, 25).x(), middle, 30);
    EXPECT_EQ(chart.nearestPoint(kData, pixel(436000.12, 25)).point, 1);
    show();
    EXPECT_GT(countColour(chart.grab().toImage(), paletteColour(1)), 5);
}

TEST_F(Chart2DTest, KeepsTitlesHeaderAndFooter) {
    for (const Axis axis : {Axis::kX, Axis::kY, Axis::kY2})
        chart.setAxisTitle(axis, u"title %1"_s.arg(static_cast<int>(axis)));
    chart.setHeaderText(u"Sample Grid Plot"_s);
    chart.setFooterText(u"No Point Selected"_s);
    for (const Axis axis : {Axis::kX, Axis::kY, Axis::kY2})
        EXPECT_EQ(chart.axisTitle(axis), u"title %1"_s.arg(static_cast<int>(axis)));
    for (const QString& header : {chart.headerText(), chart.accessibleName()})
        EXPECT_EQ(header, u"Sample Grid Plot"_s);
    for (const QString& footer : {chart.footerText(), chart.accessibleDescription()})
        EXPECT_EQ(footer, u"No Point Selected"_s);
}

TEST_F(Chart2DTest, PixelsAndDataAreEachOthersInverseInThePlotArea) {
    chart.setAxisRange(Axis::kX, 436000, 437000);
    const Chart2D::PixelData data = chart.pixelToData(pixel(436123.4, 12.5));
    EXPECT_TRUE(data.inPlotArea);
    EXPECT_NEAR(data.x, 436123.4, 1.5);
    EXPECT_NEAR(data.y, 12.5, 0.1);
    for (const QPoint margin : {QPoint(2, 300), QPoint(400, 2), QPoint(400, 597)})
        EXPECT_FALSE(chart.pixelToData(margin).inPlotArea) << margin.x();
    EXPECT_TRUE(chart.pixelToData(QPoint(400, 300)).inPlotArea);
}

TEST_F(Chart2DTest, NearestPointMeasuresInBothDirectionsAsFarAsItIsAsked) {
    addPoint(50, 25);
    const QPoint at = pixel(50, 25);
    EXPECT_EQ(chart.nearestPoint(kData, at).distance, 0);
    EXPECT_EQ(chart.nearestPoint(kData, at + QPoint(3, 0)).distance, 3);
    EXPECT_EQ(chart.nearestPoint(kData, at - QPoint(0, 3)).distance, 3);
    EXPECT_NEAR(chart.nearestPoint(kData, at + QPoint(30, 40)).distance, 50, 1);
    EXPECT_EQ(chart.nearestPoint(kData, at).series, 1);
    EXPECT_EQ(chart.nearestPoint(kData, at).point, 1);
    for (const QPoint by : {QPoint(3, 3), QPoint(-3, 3), QPoint(3, -3), QPoint(-3, -3), QPoint(0, 3)}) {
        const int distance = chart.nearestPoint(kData, at + by).distance;
        EXPECT_EQ(chart.nearestPoint(kData, at + by, distance).point, 1) << by.x() << ' ' << by.y();
    }
    EXPECT_EQ(chart.nearestPoint(kData, at + QPoint(40, 0), 3).point, -1);
}

TEST_F(Chart2DTest, WithoutAPointToPickSeriesAndPointAreMinusOne) {
    addPoint(kHole, 25);
    addPoint(50, kHole);
    addPoint(kHole, kHole);
    for (const auto group : {kData, kHighlight}) {
        const Chart2D::Nearest none = chart.nearestPoint(group, pixel(50, 25));
        EXPECT_EQ(none.series, -1);
        EXPECT_EQ(none.point, -1);
    }
}

TEST_F(Chart2DTest, ManyChangesCostOneRedrawAndABatchNoneUntilItsEnd) {
    show();
    QSignalSpy redrawn(&chart, &Chart2D::redrawn);
    for (int i = 1; i <= 50; ++i)
        addPoint(i, i);
    chart.setAxisRange(Axis::kX, 0, 60);
    QCoreApplication::processEvents();
    EXPECT_EQ(redrawn.count(), 1);
    chart.beginBatch();
    chart.beginBatch();
    addPoint(10, 10);
    chart.repaint();
    chart.endBatch();
    chart.repaint();
    EXPECT_EQ(redrawn.count(), 1);
    chart.endBatch();
    QCoreApplication::processEvents();
    EXPECT_EQ(redrawn.count(), 2);
}

TEST_F(Chart2DTest, AFooterNeitherRedrawsNorMovesThePlot) {
    show();
    const QPointF before = chart.dataToPixel(10, 10);
    QSignalSpy redrawn(&chart, &Chart2D::redrawn);
    chart.setFooterText(u"UTM X = 436123.40, ECa = 52.11"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(redrawn.count(), 0);
    EXPECT_EQ(chart.dataToPixel(10, 10), before);
    const QImage image = chart.grab().toImage();
    EXPECT_LT(countColour(image.copy(0, image.height() - 20, image.width(), 20), Qt::white), 800 * 20);
}

TEST_F(Chart2DTest, PaleColoursHaveADarkOutline) {
    addPoint(50, 25);
    show();
    for (const int pale : {7, 10, 11, 14, 15}) {
        chart.setSymbolColour(kData, 1, pale);
        const QImage image = chart.grab().toImage();
        const QPointF at = chart.dataToPixel(50, 25) * image.devicePixelRatio();
        const QImage symbol = image.copy(int(at.x()) - 4, int(at.y()) - 4, 9, 9);
        int dark = 0;
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 9; ++x)
                dark += symbol.pixelColor(x, y).lightness() < 140;
        EXPECT_GE(dark, 8) << "colour " << pale;
    }
}

TEST_F(Chart2DTest, ThousandsOfSymbolsHaveHardEdgesUntilFewAreShown) {
    std::vector<double> x, y;
    for (int i = 0; i < 6000; ++i) {
        x.push_back(i < 3000 ? 20 : 20 + i / 100.0);
        y.push_back(20);
    }
    chart.replacePoints(kData, 1, x, y);
    chart.setSymbolColour(kData, 1, 1);
    show();
    // Colours between that of the symbols and the paper, above the plot's middle where no axis is.
    const auto softPixels = [&] {
        const QImage image = chart.grab().toImage();
        int count = 0;
        for (int dy = -6; dy <= 6; ++dy) {
            const QColor c = image.pixelColor(pixel(20, 20) + QPoint(-2, dy));
            count += c != paletteColour(1) && c != QColor(Qt::white);
        }
        return count;
    };
    EXPECT_EQ(softPixels(), 0);
    EXPECT_EQ(chart.grab().toImage().pixelColor(pixel(20, 20)), paletteColour(1));
    chart.setPointCount(kData, 1, 1000);
    EXPECT_GT(softPixels(), 0);
}

TEST_F(Chart2DTest, HighlightsAreRingsAroundTheDataBeneath) {
    addPoint(50, 25);
    chart.setSeriesCount(kHighlight, 1);
    addPoint(50, 25, kHighlight);
    show();
    EXPECT_EQ(seen(50, 25), paletteColour(1));
    EXPECT_GT(countColour(chart.grab().toImage(), paletteColour(12)), 8);
}

TEST_F(Chart2DTest, HolesAreNotDrawn) {
    addPoint(kHole, 25);
    addPoint(50, kHole);
    chart.setSeriesStyle(kData, 1, {ChartSymbol::kDisc, ChartLine::kThin, 12});
    show();
    EXPECT_EQ(countColour(chart.grab().toImage(), paletteColour(12)), 0);
}

TEST_F(Chart2DTest, ThePaperStaysWhiteInADarkTheme) {
    QPalette dark(Qt::black);
    dark.setColor(QPalette::Window, Qt::black);
    chart.setPalette(dark);
    show();
    const QImage image = chart.grab().toImage();
    EXPECT_EQ(image.pixelColor(5, image.height() / 2), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::white));
}

TEST_F(Chart2DTest, ThePointerIsReported) {
    show();
    QSignalSpy pressed(&chart, &Chart2D::pointerPressed);
    QSignalSpy moved(&chart, &Chart2D::pointerMoved);
    QSignalSpy left(&chart, &Chart2D::pointerLeft);
    QTest::mouseMove(&chart, QPoint(300, 200));
    QTest::mouseClick(&chart, Qt::LeftButton, Qt::NoModifier, QPoint(300, 200));
    QTest::mouseClick(&chart, Qt::MiddleButton, Qt::NoModifier, QPoint(310, 200));
    ASSERT_EQ(pressed.count(), 1);
    EXPECT_EQ(pressed.at(0).at(0).toPoint(), QPoint(300, 200));
    ASSERT_GE(moved.count(), 1);
    EXPECT_EQ(moved.at(0).at(0).toPoint(), QPoint(300, 200));
    leave(chart);
    EXPECT_EQ(left.count(), 1);
}

TEST_F(Chart2DTest, TheWheelZoomsAroundThePointerAndHomeReturns) {
    show();
    const QPoint at = pixel(30, 20);
    turnWheel(chart, at, 240);
    EXPECT_TRUE(chart.isZoomed());
    EXPECT_NEAR((chart.dataToPixel(30, 20) - QPointF(at)).manhattanLength(), 0, 2.5);
    EXPECT_LT(chart.pixelToData(at + QPoint(100, 0)).x - chart.pixelToData(at).x, 100.0 * 100 / 700 * 0.8);
    EXPECT_EQ(chart.axisRange(Axis::kX), (Interval{0, 100}));
    QTest::keyClick(&chart, Qt::Key_Home);
    EXPECT_FALSE(chart.isZoomed());
    EXPECT_EQ(pixel(30, 20), at);
}

TEST_F(Chart2DTest, PickingFollowsTheView) {
    addPoint(30, 20);
    addPoint(90, 45);
    show();
    for (int i = 0; i < 8; ++i)
        turnWheel(chart, pixel(30, 20), 120);
    EXPECT_EQ(chart.nearestPoint(kData, pixel(30, 20)).point, 1);
    // The other point is out of sight now, so it is never the nearest.
    EXPECT_EQ(chart.nearestPoint(kData, QPoint(780, 40)).point, 1);
}

TEST_F(Chart2DTest, DraggingWithTheRightOrMiddleButtonMovesTheView) {
    show();
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        chart.resetView();
        QSignalSpy pressed(&chart, &Chart2D::pointerPressed);
        const QPointF before = chart.dataToPixel(50, 25);
        drag(chart, button, {400, 300}, {460, 270});
        const QPointF by = chart.dataToPixel(50, 25) - before;
        EXPECT_NEAR(by.x(), 60, 1);
        EXPECT_NEAR(by.y(), -30, 1);
        EXPECT_EQ(pressed.count(), 0);
    }
}

TEST_F(Chart2DTest, ADoubleClickReturnsToTheLimitsAndReportsBothPresses) {
    show();
    turnWheel(chart, QPoint(400, 300), 360);
    QSignalSpy pressed(&chart, &Chart2D::pointerPressed);
    QTest::mouseClick(&chart, Qt::LeftButton, Qt::NoModifier, QPoint(400, 300));
    EXPECT_TRUE(chart.isZoomed());
    const QPointF at(400, 300);
    QMouseEvent second(QEvent::MouseButtonDblClick, at, chart.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                       Qt::NoModifier);
    QCoreApplication::sendEvent(&chart, &second);
    EXPECT_FALSE(chart.isZoomed());
    EXPECT_EQ(pressed.count(), 2);
}

TEST_F(Chart2DTest, KeysOfTheOwnerAreLeftToTheParent) {
    for (const auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp,
                           Qt::Key_PageDown, Qt::Key_Space, Qt::Key_Delete, Qt::Key_Return, Qt::Key_F1}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&chart, &press);
        EXPECT_FALSE(press.isAccepted()) << key;
    }
    EXPECT_TRUE(chart.focusPolicy() & Qt::TabFocus);
}

TEST_F(Chart2DTest, KeysZoomAndMoveTheView) {
    show();
    QTest::keyClick(&chart, Qt::Key_Plus);
    const double wide = chart.pixelToData(QPoint(500, 300)).x - chart.pixelToData(QPoint(400, 300)).x;
    EXPECT_TRUE(chart.isZoomed());
    QTest::keyClick(&chart, Qt::Key_Minus);
    EXPECT_GT(chart.pixelToData(QPoint(500, 300)).x - chart.pixelToData(QPoint(400, 300)).x, wide);
    const double x = chart.pixelToData(QPoint(400, 300)).x;
    QTest::keyClick(&chart, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GT(chart.pixelToData(QPoint(400, 300)).x, x);
}

TEST_F(Chart2DTest, TicksStandWhereTheirValuesLie) {
    show();
    const QImage image = chart.grab().toImage();
    const double scale = image.devicePixelRatio();
    const QPointF corner = chart.dataToPixel(0, 0);
    for (const double value : {0.0, 20.0, 50.0}) {
        const QPointF x = QPointF(chart.dataToPixel(2 * value, 0).x(), corner.y() + 3) * scale;
        const QPointF y = QPointF(corner.x() - 3, chart.dataToPixel(0, value).y()) * scale;
        for (const QPointF& tick : {x, y})
            EXPECT_LT(image.pixelColor(tick.toPoint()).lightness(), 128) << value;
    }
}

TEST_F(Chart2DTest, TheCrossLiesOverThePlotWithoutRedrawingIt) {
    show();
    const QImage before = chart.grab().toImage();
    QSignalSpy redrawn(&chart, &Chart2D::redrawn);
    chart.showCross(40, 20);
    EXPECT_NE(chart.grab().toImage(), before);
    chart.hideCross();
    EXPECT_EQ(chart.grab().toImage(), before);
    EXPECT_EQ(redrawn.count(), 0);
}

TEST_F(Chart2DTest, AClickWithCtrlIsAClickWhereNoLevelCanBeMoved) {
    show();
    chart.showLevel(20);
    QSignalSpy pressed(&chart, &Chart2D::pointerPressed);
    QSignalSpy moved(&chart, &Chart2D::levelMoved);
    QTest::mouseClick(&chart, Qt::LeftButton, Qt::ControlModifier, pixel(50, 20));
    EXPECT_EQ(pressed.count(), 1);
    EXPECT_EQ(moved.count(), 0);
}

TEST_F(Chart2DTest, ALevelLiesOverThePlotWithoutRedrawingItAndIsNotPrinted) {
    show();
    const auto paper = [this] { return printed(chart, {800, 600}, 96); };
    const QImage before = chart.grab().toImage(), paperBefore = paper();
    QSignalSpy redrawn(&chart, &Chart2D::redrawn);
    chart.showLevel(20);
    const QImage after = chart.grab().toImage();
    const auto y = static_cast<int>(std::lround(chart.dataToPixel(40, 20).y()));
    int changed = 0;
    for (int row = 0; row < before.height(); ++row)
        if (before.copy(0, row, before.width(), 1) != after.copy(0, row, after.width(), 1)) {
            EXPECT_NEAR(row, y, 1);
            ++changed;
        }
    EXPECT_GE(changed, 1);
    EXPECT_LE(changed, 2);
    EXPECT_EQ(paper(), paperBefore);
    chart.showLevel(1000);
    EXPECT_EQ(chart.grab().toImage(), before) << "beyond the plot area";
    chart.showLevel(20);
    chart.hideLevel();
    EXPECT_EQ(chart.grab().toImage(), before);
    EXPECT_EQ(redrawn.count(), 0);
}

TEST_F(Chart2DTest, PaperShowsWhatTheScreenShowsAndLeavesItAsItWas) {
    addPoint(20, 10);
    addPoint(80, 40);
    chart.setSymbolColour(kData, 1, 12);
    chart.setHeaderText(u"Header"_s);
    show();
    const QImage screen = chart.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QPointF place = chart.dataToPixel(20, 10);
    printed(chart, {1200, 700}, 200);
    EXPECT_EQ(chart.dataToPixel(20, 10), place);
    EXPECT_EQ(chart.grab().toImage().convertToFormat(QImage::Format_RGB32), screen);
    const QImage paper = printed(chart, screen.size(), 96);
    for (const QPointF at : {chart.dataToPixel(20, 10), chart.dataToPixel(80, 40)})
        EXPECT_EQ(paper.pixelColor(at.toPoint()), paletteColour(12));
    int differing = 0;
    for (int y = 2; y < 598; ++y)
        for (int x = 2; x < 798; ++x)
            differing +=
                std::abs(paper.pixelColor(x, y).lightness() - screen.pixelColor(x, y).lightness()) > 100;
    EXPECT_LT(differing, 2500);
}

TEST_F(Chart2DTest, APrintedChartLooksAlikeAtEveryResolution) {
    addPoint(50, 25);
    chart.setSymbolColour(kData, 1, 12);
    const auto redShare = [&](int dotsPerInch) {
        const QImage paper = printed(chart, {6 * dotsPerInch, 4 * dotsPerInch}, dotsPerInch);
        return double(countColour(paper, paletteColour(12))) / (dotsPerInch * dotsPerInch);
    };
    EXPECT_NEAR(redShare(600) / redShare(300), 1, 0.15);
    EXPECT_NEAR(redShare(300) * 96 * 96, 3.14159 * 2.5 * 2.5, 4);
}

TEST_F(Chart2DTest, APrintedSurveyIsASmallFile) {
    constexpr int kRows = 250;
    constexpr int kPerRow = 400;
    chart.setSeriesCount(kData, kRows);
    for (int r = 1; r <= kRows; ++r) {
        chart.setPointCount(kData, r, kPerRow);
        for (int i = 1; i <= kPerRow; ++i)
            chart.setPoint(kData, r, i, 100.0 * i / kPerRow, 50.0 * r / kRows);
        chart.setSymbolColour(kData, r, r % 15);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(1200);
    QPainter painter(&writer);
    chart.print(painter, QRectF(0, 0, writer.width(), writer.width() * 0.6));
    painter.end();
    const QByteArray pdf = buffer.data();
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_LT(pdf.size(), 1500000);
}

TEST_F(Chart2DTest, AChartTooSmallForItsMarginsIsNoError) {
    addPoint(50, 25);
    for (const QSize size : {QSize(40, 30), QSize(1, 1), QSize(300, 40)}) {
        chart.resize(size);
        show();
        EXPECT_FALSE(chart.grab().isNull());
        chart.nearestPoint(kData, QPoint(0, 0));
    }
}

namespace {

// Charts one below the other whose labels need unlike room: tenths above, millions below.
class AlignedCharts : public testing::Test {
  protected:
    AlignedCharts() {
        for (Chart2D* chart : {&upper, &lower}) {
            chart->setParent(&window);
            chart->resize(600, 300);
            chart->setAxisRange(Axis::kX, 0, 100);
        }
        lower.move(0, 300);
        window.resize(600, 600);
        upper.setAxisRange(Axis::kY, 0, 0.5);
        lower.setAxisRange(Axis::kY, 5512000, 5512150);
    }

    void show() {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
    }
    void expectAligned() const {
        EXPECT_EQ(upper.dataToPixel(0, 0).x(), lower.dataToPixel(0, 0).x());
        EXPECT_EQ(upper.dataToPixel(100, 0).x(), lower.dataToPixel(100, 0).x());
    }

    QWidget window;
    Chart2D upper, lower;
};

// Where the plot area begins and ends on a printed chart: the first and last column that is dark from the
// upper half to the lower.
std::pair<int, int> frameOnPaper(Chart2D& chart) {
    const QImage paper = printed(chart, {1200, 600}, 200);
    std::pair<int, int> columns(-1, -1);
    for (int x = 0; x < paper.width(); ++x) {
        bool dark = true;
        for (int y = 200; dark && y < 300; ++y)
            dark = qGray(paper.pixel(x, y)) < 160;
        if (dark && columns.first < 0) columns.first = x;
        if (dark) columns.second = x;
    }
    return columns;
}

}  // namespace

TEST_F(AlignedCharts, BeginAndEndAtTheSamePlacesAlsoWhenTheLabelsOfOneGrow) {
    show();
    EXPECT_NE(upper.dataToPixel(0, 0).x(), lower.dataToPixel(0, 0).x()) << "until they are aligned";
    upper.alignSides(lower);
    QCoreApplication::processEvents();
    expectAligned();
    const double before = lower.dataToPixel(0, 0).x();
    upper.setAxisRange(Axis::kY, 155120000, 155120000.5);
    QCoreApplication::processEvents();
    EXPECT_GT(lower.dataToPixel(0, 0).x(), before);
    expectAligned();
}

TEST_F(AlignedCharts, AreDrawnWhereTheyArePicked) {
    upper.alignSides(lower);
    for (Chart2D* chart : {&upper, &lower}) {
        chart->setSeriesCount(kData, 1);
        chart->setSymbolColour(kData, 1, 12);
    }
    show();
    upper.setPointCount(kData, 1, 1);
    upper.setPoint(kData, 1, 1, 50, 0.25);
    lower.setAxisRange(Axis::kY, 0, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(colourAt(upper.grab().toImage(), upper.dataToPixel(50, 0.25)), paletteColour(12));
}

TEST_F(AlignedCharts, AreAlignedOnPaper) {
    const auto apart = frameOnPaper(upper);
    EXPECT_NE(apart.first, frameOnPaper(lower).first);
    upper.alignSides(lower);
    EXPECT_EQ(frameOnPaper(upper), frameOnPaper(lower));
    EXPECT_GT(frameOnPaper(upper).first, apart.first);
}

TEST_F(AlignedCharts, OutliveEachOther) {
    auto passing = std::make_unique<Chart2D>();
    upper.alignSides(*passing);
    passing.reset();
    show();
    EXPECT_FALSE(upper.grab().isNull());
}

TEST_F(Chart2DTest, PicksTheDrawnSymbolAtEveryDisplayScale) {
    addPoint(33.3, 17.7);
    chart.setSymbolColour(kData, 1, 12);
    show();
    const QImage image = chart.grab().toImage();
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).green() < 160 && image.pixelColor(x, y).red() > 200)
                box |= QRect(x, y, 1, 1);
    const double scale = image.devicePixelRatio();
    EXPECT_NEAR(box.width(), 5 * scale, 1.6);
    const QPointF middle = QRectF(box).center() / scale;
    const QPointF place = chart.dataToPixel(33.3, 17.7);
    // A symbol stands on whole pixels of the display, and so does the plot in its chart, whose own place is a
    // whole one at whole scales only: each may move it by half a pixel of the display.
    const double roundings = scale == std::floor(scale) ? 1 : 2;
    EXPECT_NEAR(middle.x(), place.x(), roundings * 0.5 / scale + 0.01);
    EXPECT_NEAR(middle.y(), place.y(), roundings * 0.5 / scale + 0.01);
    EXPECT_LE(chart.nearestPoint(kData, QPoint(int(middle.x()), int(middle.y()))).distance, 1);
    EXPECT_EQ(image.pixelColor(box.center()), paletteColour(12));
    EXPECT_EQ(chart.nearestPoint(kData, pixel(33.3, 17.7)).distance, 0);
    EXPECT_EQ(chart.nearestPoint(kData, pixel(33.3, 17.7) + QPoint(3, 0)).distance, 3);
    EXPECT_EQ(chart.nearestPoint(kData, pixel(33.3, 17.7) - QPoint(0, 4)).distance, 4);
}

TEST(Chart2DScales, ChartAndPictureBoxHoldAtDisplayScalesOneAndAHalfAndTwo) {
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) return;
    for (const auto* scale : {"1.5", "2"}) {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_SCALE_FACTOR"_s, QString::fromLatin1(scale));
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(),
                    {u"--gtest_filter=Chart2DTest.*EveryDisplayScale:"
                     "Chart2DTest.TheWheel*:Chart2DTest.NearestPoint*:PictureBoxTest.*EveryDisplayScale"_s});
        ASSERT_TRUE(child.waitForFinished(60000));
        EXPECT_EQ(child.exitCode(), 0) << scale << "\n" << child.readAll().toStdString();
    }
}

}  // namespace tessel
