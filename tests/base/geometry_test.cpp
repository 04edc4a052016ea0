// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/geometry.h"

namespace tessel {

namespace {

const Rectangle kArea{{50, 850}, {10, 610}};

}  // namespace

TEST(Geometry, EqualLimitsPutTheirValueInTheMiddle) {
    for (const double value : {0.0, 436000.12, -5.0, 1e200}) {
        const Interval view = viewOfLimits({value, value});
        EXPECT_LT(view.from, view.to);
        EXPECT_DOUBLE_EQ(view.from / 2 + view.to / 2, value);
    }
}

TEST(Geometry, FallingLimitsGiveAReversedAxis) {
    EXPECT_EQ(viewOfLimits({10, -2}), (Interval{10, -2}));
    const PixelMap map = pixelMap(kArea, viewOfLimits({10, 0}), viewOfLimits({10, 0}));
    EXPECT_DOUBLE_EQ(map.pixelX(10), kArea.x.from);
    EXPECT_DOUBLE_EQ(map.pixelX(0), kArea.x.to);
    EXPECT_DOUBLE_EQ(map.pixelY(10), kArea.y.to);
    EXPECT_DOUBLE_EQ(map.pixelY(0), kArea.y.from);
}

TEST(Geometry, LimitsThatAreNoNumbersStillGiveAnAxis) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(viewOfLimits({nan, 5}), Interval{});
    EXPECT_EQ(viewOfLimits({0, std::numeric_limits<double>::infinity()}), Interval{});
    const Interval huge = viewOfLimits({-1.7e308, 1.7e308});
    EXPECT_TRUE(std::isfinite(huge.length()));
}

TEST(Geometry, ZoomingKeepsThePlaceUnderThePointer) {
    for (const Interval& home : {Interval{100, 200}, Interval{200, 100}}) {
        const Interval near = zoomed(home, home, 0.25, 0.5);
        EXPECT_DOUBLE_EQ(near.length(), home.length() / 2);
        EXPECT_DOUBLE_EQ(near.partOf(home.at(0.25)), 0.25);
    }
}

TEST(Geometry, MovingGoesOnTowardsTheSecondEndAndNeverOutOfReach) {
    EXPECT_EQ(moved({100, 200}, {100, 200}, 0.5), (Interval{150, 250}));
    EXPECT_EQ(moved({200, 100}, {200, 100}, 0.5), (Interval{150, 50}));
    EXPECT_EQ(moved({0, 10}, {0, 10}, 1e9), (Interval{10010, 10020}));
    EXPECT_EQ(moved({10, 0}, {10, 0}, 1e9), (Interval{-10000, -10010}));
}

TEST(Geometry, ZoomingHasItsLimits) {
    const Interval home{436000, 437000};
    Interval in = home;
    Interval out = home;
    for (int i = 0; i < 500; ++i) {
        in = zoomed(in, home, 0.3, 0.5);
        out = zoomed(out, home, 0.3, 2);
    }
    EXPECT_GE(in.length(), 1e-4);
    EXPECT_LE(out.length(), 1.001e6);
}

TEST(Geometry, ZoomingFarFromASmallHomeKeepsNumbersApart) {
    EXPECT_EQ(zoomed({1e12, 2e12}, {0, 1e-6}, 0.5, 0.5).length(), 150);
    EXPECT_EQ(zoomed({1e12, 1e12 + 1}, {0, 1e-6}, 0.5, 2).length(), 1);
}

}  // namespace tessel
