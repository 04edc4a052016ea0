// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <vector>

namespace tessel {

// Measures that a few wild values do not move.

/// Makes a median absolute deviation the standard deviation of normal noise.
inline constexpr double kScaledDeviation = 1.4826;

/// The median, the upper of the middle two for an even number; changes the order. Requires a value.
double medianOf(std::vector<double>& values);

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

/// At most this many values of a survey are looked at for one measure of the whole, evenly spread.
inline constexpr SiteIndex kSampleSize = 100000;
/// f(site) of such a sample.
template <typename Value>
std::vector<double> sampleOf(SiteIndex sites, Value f) {
    std::vector<double> values;
    const SiteIndex every = (sites + kSampleSize - 1) / kSampleSize;
    for (SiteIndex i = 0; i < sites; i += every)
        values.push_back(f(i));
    return values;
}

/// The noise of a column of readings: the standard deviation that differences between neighbours speak of, by
/// the median of those that are not 0; 0 where all are.
double readingNoise(const Survey& survey, int column);

}  // namespace tessel
