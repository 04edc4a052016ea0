// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/run_time_error.h"

#include <optional>

namespace tessel {

// The figures that say what an adjustment has done to the readings.

/// Statistics of one column of readings (mS/m). A value that does not exist is empty: the standard deviation
/// of one site, anything whose sum overflows.
struct ReadingSummary {
    SiteIndex sites = 0;
    std::optional<double> mean, sd, minimum, maximum;
    std::optional<SiteIndex> notPositive;  ///< count of readings <= 0
};

/// Statistics of a survey's readings and the least-squares line EM2 = a + b EM1.
struct EMSummary {
    ReadingSummary em1;
    std::optional<ReadingSummary> em2;  ///< empty on a survey with one reading
    std::optional<double> slope;        ///< b, without unit; empty when EM1 is constant
    std::optional<double> shift;        ///< -a in mS/m: added to EM2, it leads the line through the origin
    std::optional<RunTimeError> error;  ///< the first that arose on the way
};

/// A survey without sites has none of these values, and an error.
EMSummary summariseReadings(const Survey& survey);

}  // namespace tessel
