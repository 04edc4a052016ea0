// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_geometry.h"

namespace tessel {

namespace {

const Rectangle kArea{{50, 850}, {10, 610}};

PixelMap unitMap() {
    return pixelMap(kArea, {0, 800}, {0, 600});
}

ChartSeries series(const std::vector<double>& x, const std::vector<double>& y) {
    ChartSeries s;
    s.points.assign(x, y);
    return s;
}

// Points along a way that turns at random, whole numbers for equal distances, with holes among them.
ChartSeries wanderingSeries(std::mt19937& random, int count) {
    std::uniform_int_distribution<int> step(-6, 6);
    std::vector<double> x, y;
    int atX = 400;
    int atY = 300;
    for (int i = 0; i < count; ++i) {
        atX = std::clamp(atX + step(random), -50, 850);
        atY = std::clamp(atY + step(random), -50, 650);
        x.push_back(i % 500 == 17 ? kHole : atX);
        y.push_back(i % 500 == 390 ? std::numeric_limits<double>::quiet_NaN() : atY);
    }
    return series(x, y);
}

// Every point in turn, the first of equally near ones.
NearestPoint plainSearch(const std::vector<ChartSeries>& all, const PixelMap& map, double px, double py) {
    NearestPoint found{-1, -1, 1e9};
    for (std::size_t s = 0; s < all.size(); ++s)
        for (std::size_t i = 0; i < all[s].points.size(); ++i) {
            const double dataX = all[s].points.x()[i];
            const double dataY = all[s].points.y()[i];
            const double x = map.pixelX(dataX);
            const double y = map.pixelY(dataY);
            const double distance = std::sqrt((x - px) * (x - px) + (y - py) * (y - py));
            if (isHole(dataX, dataY) || !kArea.contains(x, y) || distance >= found.distance) continue;
            found = {static_cast<int>(s) + 1, static_cast<std::int64_t>(i), distance};
        }
    return found;
}

}  // namespace

TEST(ChartGeometry, TheNearestOfThousandsOfPointsIsTheFirstThatAPlainSearchFinds) {
    std::mt19937 random(12);
    for (const bool reversed : {false, true})
        for (const int count : {0, 1, 127, 128, 129, 5000, 40000}) {
            const std::vector<ChartSeries> all = {wanderingSeries(random, count),
                                                  wanderingSeries(random, count)};
            const PixelMap map = pixelMap(kArea, reversed ? Interval{800, 0} : Interval{0, 800}, {0, 600});
            std::uniform_int_distribution<int> whole(0, 800);
            for (int trial = 0; trial < 100; ++trial) {
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

TEST(ChartGeometry, NothingFartherAwayThanAskedForIsFound) {
    const std::vector<ChartSeries> all = {series({100}, {100})};
    const PixelMap map = unitMap();
    EXPECT_EQ(nearestPoint(all, map, map.pixelX(104), map.pixelY(103), 5).point, 1);
    EXPECT_EQ(nearestPoint(all, map, map.pixelX(104), map.pixelY(103), 4.99).point, -1);
}

TEST(ChartGeometry, WhatIsShownLiesInTheStretchesAndLittleElse) {
    std::mt19937 random(14);
    const PixelMap map = pixelMap(kArea, {300, 400}, {200, 260});
    const ChartSeries s = wanderingSeries(random, 40000);
    std::vector<bool> isInStretch(s.points.size());
    std::int64_t end = 0;
    for (const IndexRange& stretch : stretchesShown(s.points, map)) {
        EXPECT_LT(stretch.first, stretch.last);
        EXPECT_TRUE(end == 0 || stretch.first > end);
        end = stretch.last;
        std::fill(isInStretch.begin() + stretch.first, isInStretch.begin() + end, true);
    }
    std::size_t shown = 0;
    for (std::size_t i = 0; i < s.points.size(); ++i) {
        if (!kArea.contains(map.pixelX(s.points.x()[i]), map.pixelY(s.points.y()[i]))) continue;
        ++shown;
        EXPECT_TRUE(isInStretch[i]);
    }
    EXPECT_GT(shown, 100U);
    EXPECT_LT(std::count(isInStretch.begin(), isInStretch.end(), true), 20000);
}

TEST(ChartGeometry, WhatIsShownWhollyIsOneStretchFromTheFirstPointToTheLast) {
    for (const std::size_t count : {1U, 127U, 128U, 2047U, 2048U, 40000U}) {
        const std::vector<double> middle(count, 300);
        const auto stretches = stretchesShown(series(middle, middle).points, unitMap());
        ASSERT_EQ(stretches.size(), 1U) << count;
        EXPECT_EQ(stretches[0], (IndexRange{0, static_cast<std::int64_t>(count) + 1}));
    }
}

TEST(ChartGeometry, OnlyTheFirstOrTheLastBlockMayBeShown) {
    std::vector<double> place(1023, -500);
    const auto onlyStretch = [&](std::size_t point) {
        place[point - 1] = 300;
        const auto stretches = stretchesShown(series(place, place).points, unitMap());
        place[point - 1] = -500;
        EXPECT_EQ(stretches.size(), 1U) << point;
        return stretches.empty() ? IndexRange{} : stretches[0];
    };
    EXPECT_EQ(onlyStretch(1), (IndexRange{0, 128}));
    EXPECT_EQ(onlyStretch(127), (IndexRange{0, 128}));
    EXPECT_EQ(onlyStretch(896), (IndexRange{896, 1024}));
    EXPECT_EQ(onlyStretch(1023), (IndexRange{896, 1024}));
}

TEST(ChartGeometry, ASpikeAmongAMillionPointsIsKept) {
    std::vector<double> x, y;
    for (int i = 1; i < 1000000; ++i)
        x.push_back(i), y.push_back(i == 654321 ? 590 : 10 + i % 7);
    const ChartSeries s = series(x, y);
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
    EXPECT_DOUBLE_EQ(lines.points[static_cast<std::size_t>(lines.pieces[0].last) - 1].x, 150);
    EXPECT_DOUBLE_EQ(lines.points[static_cast<std::size_t>(lines.pieces[1].first)].x, 350);
}

TEST(ChartGeometry, LinesAreCutOffAtThePlotAreaWithTheirSlope) {
    PixelLines lines;
    appendLines(series({-100, 100}, {0, 200}), unitMap(), 1, lines);
    ASSERT_EQ(lines.points.size(), 2U);
    EXPECT_NEAR(lines.points[0].x, kArea.x.from, 1e-9);
    EXPECT_NEAR(lines.points[0].y, 510, 1e-9);
    lines.clear();
    appendLines(series({-1e300, 1e300}, {-1e300, 1e300}), unitMap(), 1, lines);
    for (const PixelPoint& p : lines.points)
        EXPECT_TRUE(kArea.contains(p.x, p.y));
}

namespace {

// The lowest and the highest place of each pixel column that lines pass through.
std::map<int, std::pair<double, double>> columnsOf(const PixelLines& lines) {
    std::map<int, std::pair<double, double>> columns;
    for (const PixelPoint& p : lines.points) {
        auto& [low, high] = columns.try_emplace(static_cast<int>(p.x), p.y, p.y).first->second;
        low = std::min(low, p.y);
        high = std::max(high, p.y);
    }
    return columns;
}

}  // namespace

TEST(ChartGeometry, TheLineThroughManyPointsReachesWhatEachColumnReaches) {
    std::mt19937 random(15);
    std::normal_distribution<double> reading(300, 60);
    const int count = 100000;
    const PixelMap map = pixelMap(kArea, {0, count}, {0, 600});
    std::vector<double> x, y;
    std::map<int, std::pair<double, double>> expected;
    for (int i = 1; i < count; ++i) {
        x.push_back(i);
        y.push_back(i % 9973 == 0 ? kHole : std::clamp(reading(random), 1.0, 599.0));
        if (y.back() == kHole) continue;
        const double pixel = map.pixelY(y.back());
        auto& [low, high] = expected.try_emplace(static_cast<int>(map.pixelX(i)), pixel, pixel).first->second;
        low = std::min(low, pixel);
        high = std::max(high, pixel);
    }
    PixelLines lines;
    appendLines(series(x, y), map, 1, lines);
    EXPECT_EQ(columnsOf(lines), expected);
    EXPECT_EQ(lines.pieces.size(), 11U);
    for (std::size_t i = 1; i < lines.points.size(); ++i)
        EXPECT_GE(lines.points[i].x, lines.points[i - 1].x - 1);
}

TEST(ChartGeometry, TheLineEndsAtTheLastPoint) {
    std::vector<double> x, y;
    for (int i = 1; i <= 2048; ++i)
        x.push_back(i), y.push_back(300 + i % 5);
    y.back() = 302.5;
    const PixelMap map = pixelMap(kArea, {0, 4096}, {0, 600});
    PixelLines lines;
    appendLines(series(x, y), map, 1, lines);
    ASSERT_FALSE(lines.points.empty());
    EXPECT_EQ(lines.points.back(), (PixelPoint{map.pixelX(2048), map.pixelY(302.5)}));
}

TEST(ChartGeometry, TheSamePointsLieInABoxAsPlainLookingFinds) {
    std::mt19937 random(7);
    const ChartSeries wandering = wanderingSeries(random, 20000);
    std::uniform_real_distribution<double> at(0, 900);
    for (int round = 0; round < 200; ++round) {
        const double x = std::floor(at(random)), y = std::floor(at(random));
        const Rectangle box{{x, x + at(random) / 4}, {y, y + at(random) / 4}};
        std::vector<std::int64_t> expected;
        for (std::size_t i = 1; i < wandering.points.size(); ++i) {
            const double px = unitMap().pixelX(wandering.points.x()[i]);
            const double py = unitMap().pixelY(wandering.points.y()[i]);
            if (box.contains(px, py) && kArea.contains(px, py))
                expected.push_back(static_cast<std::int64_t>(i));
        }
        EXPECT_EQ(pointsIn(wandering.points, unitMap(), box), expected);
    }
}

}  // namespace tessel
