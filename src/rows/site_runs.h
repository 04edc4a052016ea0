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

}  // namespace tessel
