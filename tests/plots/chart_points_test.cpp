// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_points.h"

namespace tessel {

namespace {

ChartPoints numbered(std::size_t count) {
    std::vector<double> x, y;
    for (std::size_t i = 1; i <= count; ++i) {
        x.push_back(static_cast<double>(i));
        y.push_back(-static_cast<double>(i));
    }
    ChartPoints points;
    points.assign(x, y);
    return points;
}

// What a box must be, point by point.
void expectBox(const ChartPoints& points, std::size_t block) {
    const ChartPoints::Box& box = points.boxes()[block];
    const std::size_t first = block * ChartPoints::kBlock;
    double left = 1e300, right = -1e300, bottom = 1e300, top = -1e300;
    bool isWhole = true;
    for (std::size_t i = first; i < std::min(points.size(), first + ChartPoints::kBlock); ++i) {
        const double x = points.x()[i];
        const double y = points.y()[i];
        if (isHole(x, y)) {
            isWhole = false;
            continue;
        }
        left = std::min(left, x), right = std::max(right, x);
        bottom = std::min(bottom, y), top = std::max(top, y);
    }
    EXPECT_EQ(box.isWhole, isWhole) << block;
    if (left > right) {
        EXPECT_GT(box.x.from, box.x.to);
        return;
    }
    EXPECT_EQ(box.x, (Interval{left, right})) << block;
    EXPECT_EQ(box.y, (Interval{bottom, top})) << block;
}

}  // namespace

TEST(ChartPoints, BeginsWithPointZeroAsAHole) {
    const ChartPoints points;
    ASSERT_EQ(points.size(), 1U);
    EXPECT_TRUE(isHole(points.x()[0], points.y()[0]));
    ASSERT_EQ(points.boxes().size(), 1U);
    EXPECT_FALSE(points.boxes()[0].isWhole);
}

TEST(ChartPoints, BoxesLieAroundTheirPointsWhateverTheseAre) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-1e6, 1e6);
    const std::vector<double> odd = {kHole,
                                     -kHole,
                                     1.7e308,
                                     std::numeric_limits<double>::infinity(),
                                     -std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::quiet_NaN()};
    for (const std::size_t count : {1U, 127U, 128U, 129U, 4000U}) {
        ChartPoints points;
        points.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            const bool isOdd = i >= 512 && i % 77 == 0;
            const double x = isOdd && i % 2 == 0 ? odd[i % odd.size()] : place(random);
            const double y = isOdd && i % 2 == 1 ? odd[i % odd.size()] : place(random);
            points.set(i, {&x, 1}, {&y, 1});
        }
        ASSERT_EQ(points.boxes().size(), (count + 127) / 128);
        for (std::size_t block = 0; block < points.boxes().size(); ++block)
            expectBox(points, block);
    }
}

TEST(ChartPoints, BoxesAreTheSameInWhateverOrderPointsAreSetAndLookedAt) {
    std::mt19937 random(5);
    const auto below = [&random](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
    ChartPoints points = numbered(5000);
    for (int turn = 0; turn < 300; ++turn) {
        const std::size_t count = 1 + below(turn % 2 == 0 ? 3 : 700), first = below(points.size());
        std::vector<double> values(std::min(count, points.size() - first));
        std::ranges::generate(values, [&] { return static_cast<double>(below(1'000'000)); });
        points.set(first, values, values);
        if (turn % 3 == 0) points.set(first + values.size() - 1, {values.data(), 1}, {values.data(), 1});
        if (turn % 7 == 0) points.resize(1000 + below(5000));
        if (turn % 2 != 0) continue;
        for (std::size_t block = 0; block < points.boxes().size(); ++block)
            expectBox(points, block);
        ASSERT_EQ(points.boxes().size(), (points.size() + 127) / 128);
    }
}

TEST(ChartPoints, AVisitComesByTheBlocksThatMatterInTheirOrder) {
    const ChartPoints points = numbered(1000000);
    std::vector<std::size_t> firsts;
    std::size_t asked = 0;
    points.visit(
        [&](const ChartPoints::Box& box) {
            ++asked;
            return (box.x.from <= 500000 && box.x.to >= 500000) ||
                   (box.x.from <= 900000 && box.x.to >= 900000);
        },
        [&](std::size_t first, std::size_t last) {
            firsts.push_back(first);
            EXPECT_EQ(last, first + ChartPoints::kBlock);
        });
    EXPECT_EQ(firsts, (std::vector<std::size_t>{499968, 899968}));
    EXPECT_LT(asked, 150U);
}

TEST(ChartPoints, AVisitBeginsWithFewBoxesWhateverTheNumberOfPoints) {
    for (const std::size_t count : {2047U, 2048U, 32767U, 32768U, 524288U, 1000000U}) {
        std::size_t asked = 0;
        numbered(count).visit(
            [&](const ChartPoints::Box&) {
                ++asked;
                return false;
            },
            [](std::size_t, std::size_t) { ADD_FAILURE(); });
        EXPECT_GT(asked, 0U) << count;
        EXPECT_LE(asked, ChartPoints::kFan) << count;
    }
}

TEST(ChartPoints, LargerBoxesReachAsFarAsThePointsInThem) {
    const std::size_t count = 40000;
    const std::vector<double> zeros(count);
    // Point 40000 ends a block, and larger blocks, that are shorter than the others.
    for (const std::size_t point : {1U, 200U, 32767U, 32768U, 39999U, 40000U}) {
        ChartPoints points;
        points.assign(zeros, zeros);
        const auto expectFound = [&](const auto& matters) {
            std::vector<std::size_t> blocks;
            points.visit(matters, [&](std::size_t first, std::size_t) { blocks.push_back(first / 128); });
            EXPECT_EQ(blocks, std::vector<std::size_t>{point / 128}) << point;
        };
        const auto move = [&](double x, double y) { points.set(point, {&x, 1}, {&y, 1}); };
        move(-1, -2);
        expectFound([](const ChartPoints::Box& box) { return box.x.from <= -1; });
        expectFound([](const ChartPoints::Box& box) { return box.y.from <= -2; });
        move(3, 4);
        expectFound([](const ChartPoints::Box& box) { return box.x.to >= 3; });
        expectFound([](const ChartPoints::Box& box) { return box.y.to >= 4; });
        points.set(0, {zeros.data(), 1}, {zeros.data(), 1});
        move(kHole, 0);
        expectFound([](const ChartPoints::Box& box) { return !box.isWhole; });
    }
}

TEST(ChartPoints, AVisitReachesTheLastPointWhateverTheirNumber) {
    for (const std::size_t count : {0U, 1U, 127U, 128U, 2047U, 2048U, 2049U, 32768U, 32767U}) {
        std::size_t next = 0;
        numbered(count).visit([](const ChartPoints::Box&) { return true; },
                              [&](std::size_t first, std::size_t last) {
                                  EXPECT_EQ(first, next);
                                  next = last;
                              });
        EXPECT_EQ(next, count + 1);
    }
}

}  // namespace tessel
