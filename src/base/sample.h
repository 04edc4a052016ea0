// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tessel {

/// At most this many values of a survey are looked at for one measure of the whole.
inline constexpr std::int64_t kSampleSize = 100000;

/// f(i) of a sample of 0 <= i < count: of all where they are at most kSampleSize, else of one in each of as
/// many stretches of equal length. It stands at another place in each, so that what repeats along a survey (a
/// position that is written ten times) does not keep step with the sample. Always the same sites.
template <typename Value>
std::vector<double> sampleOf(std::int64_t count, Value f) {
    constexpr std::uint64_t kScatter = 0x9E3779B97F4A7C15;  // 2^64 by the golden ratio
    std::vector<double> values;
    const std::int64_t every = (count + kSampleSize - 1) / kSampleSize;
    for (std::int64_t first = 0; first < count; first += every) {
        const auto scattered = static_cast<std::int64_t>(values.size() * kScatter >> 32);
        values.push_back(f(first + scattered % std::min(every, count - first)));
    }
    return values;
}

/// The median, the upper of the middle two for an even number; changes the order. Requires a value.
double medianOf(std::vector<double>& values);

/// The median of those that are not 0, which alone are left; 0 where all are.
double medianBesideZero(std::vector<double>& values);

}  // namespace tessel
