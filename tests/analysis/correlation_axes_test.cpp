// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/correlation_axes.h"

#include "base/run_time_error.h"
#include "support/made_survey.h"

#include <gtest/gtest.h>

#include <limits>

namespace tessel {

TEST(CorrelationAxes, ReachATenthOfTheSpanBeyondTheReadings) {
    const CorrelationAxes axes = correlationAxes(surveyOfReadings({10, 30, 12}, {60, 20, 33}));
    EXPECT_DOUBLE_EQ(axes.x.minimum, 8);
    EXPECT_DOUBLE_EQ(axes.x.maximum, 32);
    EXPECT_DOUBLE_EQ(axes.y.minimum, 16);
    EXPECT_DOUBLE_EQ(axes.y.maximum, 64);
}

TEST(CorrelationAxes, OfReadingsAroundZeroReachBelowZero) {
    const CorrelationAxes axes = correlationAxes(surveyAroundZero());
    EXPECT_DOUBLE_EQ(axes.x.minimum, -9.525);
    EXPECT_DOUBLE_EQ(axes.x.maximum, 14.775);
    EXPECT_DOUBLE_EQ(axes.y.minimum, -11.575);
    EXPECT_DOUBLE_EQ(axes.y.maximum, 10.325);
}

TEST(CorrelationAxes, OfAConstantColumnHaveEqualLimits) {
    const CorrelationAxes axes = correlationAxes(surveyOfReadings({5, 5}, {1, 2}));
    EXPECT_EQ(axes.x.minimum, 5);
    EXPECT_EQ(axes.x.maximum, 5);
}

TEST(CorrelationAxes, ReachNoFartherThanTheLargestDouble) {
    const double most = std::numeric_limits<double>::max();
    const CorrelationAxes axes = correlationAxes(surveyOfReadings({-1.75e308, 1e308}, {1, 2}));
    EXPECT_EQ(axes.x.minimum, -most);
    EXPECT_DOUBLE_EQ(axes.x.maximum, 1e308 + most * 0.1);
}

TEST(CorrelationAxes, NeedASite) {
    EXPECT_THROW(correlationAxes(surveyOfReadings(std::vector<double>{})), RunTimeError);
}

}  // namespace tessel
