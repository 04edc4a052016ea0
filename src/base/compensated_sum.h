// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/run_time_error.h"

#include <cmath>
#include <cstdint>

namespace tessel {

/// Gives the value back; throws overflow when it is not finite.
inline double requireFinite(double value) {
    if (!std::isfinite(value)) throw RunTimeError::overflow();
    return value;
}

/// A running sum in two parts, the Double nearest to it and what that left out, so that millions of readings
/// keep the digits of a few.
struct CompensatedSum {
    double value = 0;
    double lost = 0;

    void add(double term) {
        const double before = value;
        value = before + term;
        const double part = value - before;  // Knuth's two-sum: exact without a comparison
        lost += (before - (value - part)) + (term - part);
    }
    /// Throws overflow when the sum is not finite.
    double rounded() const { return requireFinite(value + lost); }

    /// The Double nearest to the sum divided by `count`, so that equal values have exactly that value as
    /// their mean. Not finite when the sum is not. Requires a count of at least 1.
    double meanOver(std::int64_t count) const {
        const auto divisor = static_cast<double>(count);
        const double quotient = (value + lost) / divisor;
        const double remainder = std::fma(-quotient, divisor, value) + lost;
        return quotient + remainder / divisor;
    }
};

}  // namespace tessel
