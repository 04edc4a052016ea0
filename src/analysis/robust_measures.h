// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/sample.h"

#include <vector>

namespace tessel {

// Measures that a few wild values do not move.

/// Makes a median absolute deviation the standard deviation of normal noise.
inline constexpr double kScaledDeviation = 1.4826;

/// Median, and scaled median absolute deviation from it.
struct Spread {
    double median = 0;
    double deviation = 0;
};
/// Overwrites the values. Requires a value.
Spread spreadOf(std::vector<double>& values);

/// Whether a value is further from the median of others than `threshold` times their scaled median absolute
/// deviation or `noise`, whichever is larger. Overwrites the others. Requires one.
bool isUnlike(double value, std::vector<double>& others, double threshold, double noise);

/// How many times that deviation or `noise`, whichever is larger, it is away; of neither, infinitely many.
double deviationsFrom(double value, std::vector<double>& others, double noise);

/// Of a sample of the survey. Requires a site.
double medianOfColumn(const Survey& survey, int column);

/// The standard deviation of the noise that differences between neighbours speak of, by the median of those
/// that are not 0; 0 where all are. Overwrites them. Requires that none is negative.
double noiseIn(std::vector<double>& differences);

/// The noise of a column of readings.
double readingNoise(const Survey& survey, int column);

}  // namespace tessel
