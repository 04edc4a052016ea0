// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace tessel {

// The only ways from a Double to a whole number: outside of a type's range, and for what is no number, the
// language leaves open what a conversion does.

/// A value without its decimals as an int: the nearest int beyond an int's range, 0 for what is no number.
inline int clampedInt(double value) {
    constexpr double kMost = std::numeric_limits<int>::max();
    constexpr double kLeast = std::numeric_limits<int>::min();
    if (value >= kMost) return std::numeric_limits<int>::max();
    if (value <= kLeast) return std::numeric_limits<int>::min();
    return value == value ? static_cast<int>(value) : 0;
}

/// The same, rounded to the nearest whole number (halves upwards), downwards or upwards.
inline int nearestInt(double value) {
    return clampedInt(std::floor(value + 0.5));
}
inline int intBelow(double value) {
    return clampedInt(std::floor(value));
}
inline int intAbove(double value) {
    return clampedInt(std::ceil(value));
}

/// A value without its decimals, for inner loops that have just compared it with something. Requires that it
/// fits into the type.
inline int intWithin(double value) {
    return static_cast<int>(value);
}
inline std::int64_t int64Within(double value) {
    return static_cast<std::int64_t>(value);
}

}  // namespace tessel
