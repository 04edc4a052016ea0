// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <array>
#include <cstdint>

namespace tessel {

// Frequency histogram of one column of readings.

inline constexpr int kHistogramBins = 50;

/// Mean, standard deviation, minimum and maximum, in this order (mS/m).
using HistogramStatistics = std::array<double, 4>;
/// Where each of them stands.
enum HistogramStatistic : std::size_t { kHistMean = 0, kHistSD = 1, kHistMinimum = 2, kHistMaximum = 3 };

/// Sites in each bin; bin j (1-based) stands at index j - 1.
using BinCounts = std::array<std::int64_t, kHistogramBins>;

/// The readings that go to a bin (1-based): half as wide at the first one, and one and a half times as wide
/// at the last one, as the others.
Interval binInterval(int bin, const HistogramStatistics& statistics);

/// The y coordinate of each bar's top, from 0 (top edge) to 1 (bottom edge, no bar).
using BarTops = std::array<double, kHistogramBins>;

/// Requires at least two sites; throws divisionByZero with fewer, overflow when a sum is not finite.
HistogramStatistics histogramStatistics(const Survey& survey, int column);

/// Counts the readings of a column (clamped to 0..3) whose statistics are given: t = (reading - minimum) /
/// (maximum - minimum) goes to bin 1 + t * 50 rounded to nearest (halves to even), at most 50. So the first
/// bin is half as wide as the others and the last one and a half times. Throws divisionByZero when maximum
/// and minimum are equal.
BinCounts countBins(const Survey& survey, int column, const HistogramStatistics& statistics);

/// 1 - 0.9 * count / largest count: the fullest bin reaches a tenth from the top. Requires a count above 0.
BarTops barTops(const BinCounts& counts);

/// (mean - minimum) * 50 / (maximum - minimum), rounded like the bins: one less than the number of the bin
/// that holds the mean. Throws as countBins() does.
int meanMark(const HistogramStatistics& statistics);

}  // namespace tessel
