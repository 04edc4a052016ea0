// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessel {

// Arithmetic on coordinates that are no place on earth. A file may hold any Double, and what is calculated
// from two of them need not be one: then it is the largest Double, with its sign.

inline constexpr double kLargestDouble = std::numeric_limits<double>::max();

/// The value itself, or the largest Double with its sign where it is infinite. Requires a number.
inline double bounded(double value) {
    return std::clamp(value, -kLargestDouble, kLargestDouble);
}

/// The length of the way from one place to another, for those whose squares are too large for a Double: the
/// same formula on numbers brought nearer by a power of two, which costs no digit. Several times slower than
/// the plain formula, which is for all others.
inline double boundedLength(double x1, double y1, double x2, double y2) {
    constexpr double kNearer = 0x1p-600;
    const double dx = x1 * kNearer - x2 * kNearer;
    const double dy = y1 * kNearer - y2 * kNearer;
    return bounded(std::sqrt(dx * dx + dy * dy) / kNearer);
}

/// The length of the way from one place to another.
inline double lengthBetween(double x1, double y1, double x2, double y2) {
    const double dx = x1 - x2;
    const double dy = y1 - y2;
    const double length = std::sqrt(dx * dx + dy * dy);
    return std::isfinite(length) ? length : boundedLength(x1, y1, x2, y2);
}

}  // namespace tessel
