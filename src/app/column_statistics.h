// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <span>

namespace tessel {

// Statistics of one column of SiteData over sites 0..NumSites-1. The column is clamped to 0..3, so that the
// row column can never be chosen.

/// Smallest and largest value, in the unit of the column: metres, or mS/m.
struct ColumnMinMax {
    double minimum = 0;
    double maximum = 0;
    SiteIndex notPositive = 0;  ///< count of values <= 0
};

/// In the unit of the column.
struct ColumnMeanSD {
    double mean = 0;
    double sd = 0;  ///< sample standard deviation, divisor NumSites - 1
};

/// The line EM2 = a + b EM1.
struct Regression {
    double intercept = 0;  ///< a, in mS/m
    double slope = 0;      ///< b, without unit
};

/// Requires at least one value; throws subscriptOutOfRange without one. Of zeros of both signs the first one
/// counts.
ColumnMinMax minMaxOf(std::span<const double> column);

/// Requires at least one site; throws subscriptOutOfRange without one.
ColumnMinMax Column_MinMax(const Survey& survey, int column);

/// Mean (sum / NumSites) and sample standard deviation. Requires at least two sites: with fewer it throws
/// divisionByZero. Throws overflow when a sum is not finite.
ColumnMeanSD Column_MeanSD(const Survey& survey, int column);

/// The mean alone, which exists from one site on.
double Column_Mean(const Survey& survey, int column);

/// The least-squares line EM2 = a + b EM1: b = Sxy / Sxx and a = mean(y) - b mean(x). The sums are taken
/// about the means, which is the textbook N*sum(xy) - sum(x)*sum(y) without the digits that its subtraction
/// loses on readings with a large offset. Throws divisionByZero without a site or when EM1 is constant,
/// overflow when a sum is not finite.
Regression EM_Regression(const Survey& survey);

}  // namespace tessel
