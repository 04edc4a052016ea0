// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_views.h"

namespace tessel {

namespace {

void expectView(const ChartViews& views, ChartViews::Axis axis, double from, double to) {
    EXPECT_DOUBLE_EQ(views.view(axis).from, from);
    EXPECT_DOUBLE_EQ(views.view(axis).to, to);
}

ChartViews hundredByFifty() {
    ChartViews views;
    views.setLimits(ChartViews::kX, {0, 100});
    views.setLimits(ChartViews::kY, {0, 50});
    return views;
}

}  // namespace

TEST(ChartViews, KeepLimitsAsTheyWereSet) {
    ChartViews views;
    views.setLimits(ChartViews::kX, {7, 7});
    views.setLimits(ChartViews::kY, {10, -10});
    EXPECT_EQ(views.limits(ChartViews::kX), (Interval{7, 7}));
    EXPECT_EQ(views.limits(ChartViews::kY), (Interval{10, -10}));
    EXPECT_GT(views.view(ChartViews::kX).length(), 0);
    EXPECT_TRUE(views.view(ChartViews::kY).falls());
    EXPECT_FALSE(views.isZoomed());
}

TEST(ChartViews, ZoomAroundAPlaceOfThePlotArea) {
    ChartViews views = hundredByFifty();
    views.zoom(0.25, 0.5, 1, 0.5);
    expectView(views, ChartViews::kX, 12.5, 62.5);
    expectView(views, ChartViews::kY, 25, 50);
    expectView(views, ChartViews::kY2, 25, 50);
    EXPECT_TRUE(views.isZoomed());
    EXPECT_EQ(views.limits(ChartViews::kX).to, 100);
}

TEST(ChartViews, MoveToTheRightAndUpwards) {
    ChartViews views = hundredByFifty();
    views.move(0.1, -0.2);
    expectView(views, ChartViews::kX, 10, 110);
    expectView(views, ChartViews::kY, -10, 40);
}

TEST(ChartViews, ReturnToTheLimits) {
    ChartViews views = hundredByFifty();
    views.zoom(0.5, 0.5, 0.5, 0.5);
    views.setLimits(ChartViews::kX, {0, 10});
    expectView(views, ChartViews::kX, 0, 10);
    EXPECT_TRUE(views.isZoomed());
    views.reset();
    expectView(views, ChartViews::kY, 0, 50);
    EXPECT_FALSE(views.isZoomed());
}

TEST(ChartViews, StayWhereTheyAreWhenTheLimitsAreSetAnew) {
    ChartViews before = hundredByFifty();
    before.zoom(0.25, 0.5, 1, 1);  // along X alone
    ChartViews views = hundredByFifty();
    views.setLimits(ChartViews::kX, {10, 120});
    views.setLimits(ChartViews::kY, {0, 70});
    views.keepViews(before);
    expectView(views, ChartViews::kX, 12.5, 62.5);
    expectView(views, ChartViews::kY, 0, 70);
    expectView(views, ChartViews::kY2, 0, 70);
    EXPECT_EQ(views.limits(ChartViews::kX).to, 120);
    views.reset();
    expectView(views, ChartViews::kX, 10, 120);
}

TEST(ChartViews, ShowTheNewLimitsWhereNothingOfThemWouldBeInSightOrAnAxisRunsTheOtherWay) {
    const std::tuple<bool, ChartViews::Axis, Interval> cases[] = {
        {true, ChartViews::kX, {50, 90}},  // what was seen are 0 to 50, and 0 to 25
        {true, ChartViews::kY, {50, 0}},
        {false, ChartViews::kX, {500, 900}}};
    for (const auto& [wasZoomed, axis, limits] : cases) {
        ChartViews before = hundredByFifty();
        if (wasZoomed) before.zoom(0, 0.5, 0, 0.5);
        ChartViews views = hundredByFifty();
        views.setLimits(axis, limits);
        views.keepViews(before);
        EXPECT_FALSE(views.isZoomed());
        expectView(views, axis, limits.from, limits.to);
    }
}

}  // namespace tessel
