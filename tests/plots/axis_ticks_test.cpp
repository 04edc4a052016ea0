#include "plots/axis_ticks.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TickRoom room(double length) {
    return {length, 70, 12, [](const std::string& label) { return 7.0 * static_cast<double>(label.size()); }};
}

}  // namespace

TEST(AxisTicks, StepsAreOneTwoOrFiveTimesAPowerOfTen) {
    for (double range : {0.003, 0.7, 1.0, 3.3, 45.0, 999.0, 2.5e6}) {
        const double step = chooseTickStep(100, 100 + range, room(800)).step;
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
            const TickStep ticks = chooseTickStep(lower, lower + range, r);
            if (ticks.step >= range) continue;
            const double apart = ticks.step / range * length;
            const double extent = r.labelExtent(tickLabel(lower + range, ticks));
            EXPECT_GE(apart, extent) << length << " pixels, range " << range;
        }
}
