// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/axis_ticks.h"

namespace tessel {

namespace {

TickRoom room(double length) {
    return {length, 70, 12, [](const std::string& label) { return 7.0 * static_cast<double>(label.size()); }};
}

// Between two neighbouring labels; 0 where there are not two.
double distanceOfLabels(double lower, double upper, const TickStep& ticks) {
    const auto [first, last] = tickEnds({lower, upper}, ticks.step);
    if (last <= first) return 0;
    return ticks.endsOnly ? last - first : ticks.step;
}

}  // namespace

TEST(AxisTicks, StepsAreOneTwoOrFiveTimesAPowerOfTen) {
    for (double range : {0.003, 0.7, 1.0, 3.3, 45.0, 999.0, 2.5e6}) {
        const double step = chooseTickStep({100, 100 + range}, room(800)).step;
        const double mantissa = step / std::pow(10, std::floor(std::log10(step) + 1e-9));
        EXPECT_TRUE(std::fabs(mantissa - 1) < 1e-6 || std::fabs(mantissa - 2) < 1e-6 ||
                    std::fabs(mantissa - 5) < 1e-6)
            << range << " gives " << step;
    }
}

TEST(AxisTicks, LabelsOfLargeCoordinatesAreWrittenInFull) {
    EXPECT_EQ(tickLabel(436000.12, {0.02, 2}), "436000.12");
    EXPECT_EQ(tickLabel(3730000, {50, 0}), "3730000");
    EXPECT_EQ(tickLabel(-0.0, {0.5, 1}), "0.0");
    EXPECT_EQ(tickLabel(1e-17, {0.5, 1}), "0.0");
    EXPECT_EQ(tickLabel(2e20, {1e20, 0}), "2e+20");
}

TEST(AxisTicks, LabelsNeverTouchOnAnyLengthOfAxis) {
    for (double length = 60; length < 2000; length += 37)
        for (double range = 1e-4; range < 1e7; range *= 3.7) {
            const TickRoom r = room(length);
            const double lower = 436000.12;
            const TickStep ticks = chooseTickStep({lower, lower + range}, r);
            const double apart = distanceOfLabels(lower, lower + range, ticks) / range * length;
            if (apart == 0) continue;
            const double extent = r.labelExtent(tickLabel(lower + range, ticks));
            EXPECT_GE(apart, extent) << length << " pixels, range " << range;
        }
}

TEST(AxisTicks, AreTwoAtLeastWhereverTwoLabelsFindRoom) {
    // The longest labels here have eleven letters and signs of seven pixels; on a low axis they are 17 high.
    const auto low = [](double length) {
        return TickRoom{length, 44, 7, [](const std::string&) { return 17.0; }};
    };
    for (double range = 1e-2; range < 1e7; range *= 1.37)
        for (const double lower : {0.0, -range / 3, 16.5, 436000.12, 5512000.7}) {
            const auto apart = [&](const TickRoom& r) {
                return distanceOfLabels(lower, lower + range, chooseTickStep({lower, lower + range}, r)) /
                       range * r.axisLength;
            };
            SCOPED_TRACE(range);
            for (double length = 185; length < 2000; length += 13)
                EXPECT_GT(apart(room(length)), 0) << length << " pixels from " << lower;
            for (double length = 44; length < 400; length += 3)
                EXPECT_GE(apart(low(length)), 17) << length << " pixels from " << lower;
        }
}

TEST(AxisTicks, StandAtTheEndsAloneWhereLabelsLeaveNoRoomForMore) {
    const TickStep ticks = chooseTickStep({5512000.35, 5512001.15}, room(80));
    EXPECT_TRUE(ticks.endsOnly);
    const auto [first, last] = tickEnds({5512000.35, 5512001.15}, ticks.step);
    EXPECT_EQ(tickLabel(first, ticks), "5512000.4");
    EXPECT_EQ(tickLabel(last, ticks), "5512001.1");
    EXPECT_FALSE(chooseTickStep({5512000.35, 5512001.15}, room(170)).endsOnly);
}

TEST(AxisTicks, AreTheMultiplesOnAnAxisInRisingOrderOrThoseAtItsEnds) {
    EXPECT_EQ(ticksOn({4, 21}, {5, 0}), (std::vector<double>{5, 10, 15, 20}));
    EXPECT_EQ(ticksOn({20, -5}, {10, 0}), (std::vector<double>{0, 10, 20}));
    EXPECT_EQ(ticksOn({4, 21}, {5, 0, true}), (std::vector<double>{5, 20}));
    EXPECT_TRUE(ticksOn({1, 4}, {5, 0}).empty());
}

TEST(AxisTicks, AreNotNeededForValuesAsFineAsAPixel) {
    EXPECT_EQ(roundedTo(3.25431, 0.0087), 3.254);
    EXPECT_EQ(roundedTo(3.25431, 0.01), 3.25);
    EXPECT_EQ(roundedTo(0.3, 0.25), 0.3);
    EXPECT_EQ(roundedTo(41.6, 1), 42);
    EXPECT_EQ(roundedTo(12345, 160), 12300);
    EXPECT_EQ(roundedTo(1.7e308, 1e306), 1.7e308);
    EXPECT_EQ(roundedTo(1.79e308, 9e307), 1.79e308) << "no more than a Double holds";
    EXPECT_EQ(roundedTo(1e-310, 1e-312), 1e-310) << "no finer than a Double divides";
}

// Beyond all digits there is no second label, however fine the step.
TEST(AxisTicks, EndWhereAnAxisHasNoRoomForTwoNumbers) {
    EXPECT_EQ(chooseTickStep({7, 7}, room(800)).step, 1);
    const double next = std::nextafter(0.1, 1);
    EXPECT_GT(chooseTickStep({0.1, next}, room(800)).step, 0);
    EXPECT_GT(chooseTickStep({1.7e9 + 0.1, std::nextafter(1.7e9 + 0.1, 2e9)}, room(800)).step, 0);
}

}  // namespace tessel
