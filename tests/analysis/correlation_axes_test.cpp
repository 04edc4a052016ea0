// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/correlation_axes.h"

#include "base/run_time_error.h"
#include "support/made_survey.h"

namespace tessel {

TEST(CorrelationAxes, ReachATenthOfTheSpanBeyondTheReadingsBelowZeroToo) {
    const Rectangle axes = correlationAxes(surveyAroundZero());
    EXPECT_DOUBLE_EQ(axes.x.from, -9.525);
    EXPECT_DOUBLE_EQ(axes.x.to, 14.775);
    EXPECT_DOUBLE_EQ(axes.y.from, -11.575);
    EXPECT_DOUBLE_EQ(axes.y.to, 10.325);
}

TEST(CorrelationAxes, ReachNoFartherThanTheLargestDouble) {
    const double most = std::numeric_limits<double>::max();
    const Rectangle axes = correlationAxes(surveyOfReadings({-1.75e308, 1e308}, {1, 2}));
    EXPECT_EQ(axes.x.from, -most);
    EXPECT_DOUBLE_EQ(axes.x.to, 1e308 + most * 0.1);
}

TEST(CorrelationAxes, NeedASite) {
    EXPECT_THROW(correlationAxes(surveyOfReadings(std::vector<double>{})), RunTimeError);
}

}  // namespace tessel
