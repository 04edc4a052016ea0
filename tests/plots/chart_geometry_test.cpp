#include "plots/chart_geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace {

const PixelRect kArea{50, 10, 850, 610};

PixelMap unitMap() {
    return pixelMap(kArea, {0, 800}, {0, 600});
}

ChartSeries series(std::vector<double> x, std::vector<double> y) {
    ChartSeries s;
    s.x.insert(s.x.end(), x.begin(), x.end());
    s.y.insert(s.y.end(), y.begin(), y.end());
    return s;
}

// Every point in turn, the first of equally near ones.
NearestPoint plainSearch(const std::vector<ChartSeries>& all, const PixelMap& map, double px, double py) {
    NearestPoint found{-1, -1, 1e9};
    for (std::size_t s = 0; s < all.size(); ++s)
        for (std::size_t i = 0; i < all[s].x.size(); ++i) {
            const double x = map.pixelX(all[s].x[i]);
            const double y = map.pixelY(all[s].y[i]);
            const double distance = std::sqrt((x - px) * (x - px) + (y - py) * (y - py));
            if (isHole(all[s].x[i], all[s].y[i]) || !kArea.contains(x, y) || distance >= found.distance)
                continue;
            found = {static_cast<int>(s) + 1, static_cast<std::int64_t>(i), distance};
        }
    return found;
}

}  // namespace

TEST(ChartGeometry, EqualLimitsPutTheirValueInTheMiddle) {
    for (const double value : {0.0, 436000.12, -5.0, 1e200}) {
        const AxisView view = viewOfLimits(value, value);
        EXPECT_LT(view.lower, view.upper);
        EXPECT_DOUBLE_EQ(view.lower / 2 + view.upper / 2, value);
    }
}

TEST(ChartGeometry, FallingLimitsGiveAReversedAxis) {
    EXPECT_EQ(viewOfLimits(10, -2), (AxisView{-2, 10, true}));
    const PixelMap map = pixelMap(kArea, viewOfLimits(10, 0), viewOfLimits(10, 0));
    EXPECT_DOUBLE_EQ(map.pixelX(10), kArea.left);
    EXPECT_DOUBLE_EQ(map.pixelX(0), kArea.right);
    EXPECT_DOUBLE_EQ(map.pixelY(10), kArea.bottom);
    EXPECT_DOUBLE_EQ(map.pixelY(0), kArea.top);
}

TEST(ChartGeometry, LimitsThatAreNoNumbersStillGiveAnAxis) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(viewOfLimits(nan, 5), AxisView{});
    EXPECT_EQ(viewOfLimits(0, std::numeric_limits<double>::infinity()), AxisView{});
    const AxisView huge = viewOfLimits(-1.7e308, 1.7e308);
    EXPECT_TRUE(std::isfinite(huge.upper - huge.lower));
}

TEST(ChartGeometry, ZoomingKeepsThePlaceUnderThePointer) {
    for (const bool reversed : {false, true}) {
        const AxisView home{100, 200, reversed};
        const AxisView near = zoomed(home, home, 0.25, 0.5);
        const double place = reversed ? 175 : 125;
        EXPECT_DOUBLE_EQ(near.upper - near.lower, 50);
        const double part = (place - near.lower) / 50;
        EXPECT_DOUBLE_EQ(reversed ? 1 - part : part, 0.25);
    }
}

TEST(ChartGeometry, ZoomingHasItsLimits) {
    const AxisView home{436000, 437000};
    AxisView in = home;
    AxisView out = home;
    for (int i = 0; i < 500; ++i) {
        in = zoomed(in, home, 0.3, 0.5);
        out = zoomed(out, home, 0.3, 2);
    }
    EXPECT_GE(in.upper - in.lower, 1e-4);
    EXPECT_LE(out.upper - out.lower, 1.001e6);
}

TEST(ChartGeometry, TheNearestPointIsTheFirstOfEquallyNearOnes) {
    const std::vector<ChartSeries> all = {series({100, 300}, {100, 300}), series({100, 310}, {100, 300})};
    const PixelMap map = unitMap();
    NearestPoint found = nearestPoint(all, map, map.pixelX(101), map.pixelY(100));
    EXPECT_EQ(found.series, 1);
    EXPECT_EQ(found.point, 1);
    EXPECT_NEAR(found.distance, 1, 1e-9);
    found = nearestPoint(all, map, map.pixelX(307), map.pixelY(304));
    EXPECT_EQ(found.series, 2);
    EXPECT_EQ(found.point, 2);
    EXPECT_NEAR(found.distance, 5, 1e-9);
}

TEST(ChartGeometry, HolesAndPointsOutsideThePlotAreaAreNeverNearest) {
    const std::vector<ChartSeries> all = {series({kHole, 5, -1, 801, 5}, {5, kHole, 5, 5, 700})};
    const NearestPoint found = nearestPoint(all, unitMap(), 55, 600);
    EXPECT_EQ(found.series, -1);
    EXPECT_EQ(found.point, -1);
}

TEST(ChartGeometry, TheNearestPointAgreesWithAPlainSearch) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> place(-50, 850);
    std::vector<ChartSeries> all(4);
    for (ChartSeries& s : all)
        for (int i = 0; i < 200; ++i)
            s.x.push_back(place(random)), s.y.push_back(place(random));
    const PixelMap map = unitMap();
    for (int trial = 0; trial < 100; ++trial) {
        const double px = place(random);
        const double py = place(random);
        double best = 1e9;
        for (const ChartSeries& s : all)
            for (std::size_t i = 1; i < s.x.size(); ++i)
                if (kArea.contains(map.pixelX(s.x[i]), map.pixelY(s.y[i])))
                    best = std::min(best, std::hypot(map.pixelX(s.x[i]) - px, map.pixelY(s.y[i]) - py));
        EXPECT_DOUBLE_EQ(nearestPoint(all, map, px, py).distance, best);
    }
}

TEST(ChartGeometry, TheNearestOfThousandsOfPointsIsTheFirstThatAPlainSearchFinds) {
    std::mt19937 random(12);
    std::uniform_int_distribution<int> whole(0, 800);
    for (const int count : {127, 128, 129, 5000, 10000}) {
        std::vector<ChartSeries> all(2);
        for (ChartSeries& s : all)
            for (int i = 0; i < count; ++i) {
                s.x.push_back(i % 50 == 0 ? kHole : whole(random));
                s.y.push_back(whole(random) - 100);
            }
        const PixelMap map = unitMap();
        for (int trial = 0; trial < 50; ++trial) {
            const double px = whole(random);
            const double py = whole(random);
            const NearestPoint expected = plainSearch(all, map, px, py);
            const NearestPoint found = nearestPoint(all, map, px, py);
            EXPECT_EQ(found.series, expected.series);
            EXPECT_EQ(found.point, expected.point);
            EXPECT_DOUBLE_EQ(found.distance, expected.distance);
        }
    }
}

TEST(ChartGeometry, ASpikeAmongAMillionPointsIsKept) {
    ChartSeries s;
    for (int i = 1; i < 1000000; ++i)
        s.x.push_back(i), s.y.push_back(i == 654321 ? 590 : 10 + i % 7);
    const PixelMap map = pixelMap(kArea, {0, 1e6}, {0, 600});
    PixelLines lines;
    appendLines(s, map, 1, lines);
    const double spike = map.pixelY(590);
    EXPECT_TRUE(std::any_of(lines.points.begin(), lines.points.end(),
                            [&](const PixelPoint& p) { return std::fabs(p.y - spike) < 1e-6; }));
    EXPECT_LE(lines.points.size(), 4U * 802U);
    EXPECT_EQ(lines.pieces.size(), 1U);
}

TEST(ChartGeometry, AHoleInterruptsALine) {
    PixelLines lines;
    appendLines(series({0, 100, kHole, 300, 400}, {5, 5, 5, 5, 5}), unitMap(), 1, lines);
    ASSERT_EQ(lines.pieces.size(), 2U);
    EXPECT_DOUBLE_EQ(lines.points[lines.pieces[0].end - 1].x, 150);
    EXPECT_DOUBLE_EQ(lines.points[lines.pieces[1].begin].x, 350);
}

TEST(ChartGeometry, LinesAreCutOffAtThePlotAreaWithTheirSlope) {
    PixelLines lines;
    appendLines(series({-100, 100}, {0, 200}), unitMap(), 1, lines);
    ASSERT_EQ(lines.points.size(), 2U);
    EXPECT_NEAR(lines.points[0].x, kArea.left, 1e-9);
    EXPECT_NEAR(lines.points[0].y, 510, 1e-9);
    lines.clear();
    appendLines(series({-1e300, 1e300}, {-1e300, 1e300}), unitMap(), 1, lines);
    for (const PixelPoint& p : lines.points)
        EXPECT_TRUE(kArea.contains(p.x, p.y));
}

TEST(ChartGeometry, TheNearestPointOfAscendingSeriesIsTheOneThatAPlainSearchFinds) {
    std::mt19937 random(13);
    std::uniform_int_distribution<int> whole(0, 800);
    for (const bool reversed : {false, true})
        for (const int count : {0, 1, 129, 6000}) {
            std::vector<ChartSeries> all(2);
            for (ChartSeries& s : all) {
                for (int i = 0; i < count; ++i) {
                    s.x.push_back(whole(random));
                    s.y.push_back(whole(random));
                }
                std::sort(s.x.begin() + 1, s.x.end());
                s.x.push_back(kHole);
                s.y.push_back(kHole);
                s.ascends = true;
            }
            const PixelMap map = pixelMap(kArea, {0, 800, reversed}, {0, 600, false});
            for (int trial = 0; trial < 200; ++trial) {
                const double px = whole(random) + 0.5;
                const double py = whole(random) + 0.5;
                const NearestPoint expected = plainSearch(all, map, px, py);
                const NearestPoint found = nearestPoint(all, map, px, py);
                ASSERT_EQ(found.series, expected.series) << count << ' ' << px << ' ' << py;
                ASSERT_EQ(found.point, expected.point);
                if (expected.series > 0) {
                    ASSERT_DOUBLE_EQ(found.distance, expected.distance);
                }
            }
        }
}
