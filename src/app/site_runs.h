// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace tessel {

/// The runs of the sites whose mark is 1, in order. Requires marks of 0 and 1.
std::vector<IndexRange> markedRuns(std::span<const std::uint8_t> marks);

/// How many sites these runs are.
SiteIndex sitesIn(std::span<const IndexRange> runs);

/// Takes the entries of these runs (in order, none reaching into the next, all below `count`) out of an
/// array; the others move up in order, and what is behind them stays as it is. Moves only what lies behind
/// the first.
template <typename Value>
void closeGaps(Value* values, SiteIndex count, std::span<const IndexRange> removed) {
    if (removed.empty()) return;
    Value* free = values + removed.front().first;
    for (std::size_t i = 0; i < removed.size(); ++i) {
        const SiteIndex next = i + 1 < removed.size() ? removed[i + 1].first : count;
        free = std::copy(values + removed[i].last, values + next, free);
    }
}

/// The way back: opens gaps for entries of these runs in an array whose other entries stand together, and
/// `count` is how many there are with them. What stands in the gaps then is to be filled in.
template <typename Value>
void openGaps(Value* values, SiteIndex count, std::span<const IndexRange> removed) {
    SiteIndex gap = sitesIn(removed);
    for (std::size_t i = removed.size(); i-- > 0;) {
        const SiteIndex next = i + 1 < removed.size() ? removed[i + 1].first : count;
        std::copy_backward(values + removed[i].last - gap, values + next - gap, values + next);
        gap -= removed[i].count();
    }
}

/// The same sites in runs that do not touch. Requires runs in order, none reaching into the next.
std::vector<IndexRange> joined(std::vector<IndexRange> runs);

}  // namespace tessel
