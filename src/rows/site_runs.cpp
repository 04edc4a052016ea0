// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/site_runs.h"

#include <algorithm>

namespace tessel {

std::vector<IndexRange> markedRuns(std::span<const std::uint8_t> marks) {
    std::vector<IndexRange> runs;
    for (auto first = std::find(marks.begin(), marks.end(), 1); first != marks.end();) {
        const auto last = std::find(first, marks.end(), 0);
        runs.push_back({first - marks.begin(), last - marks.begin()});
        first = std::find(last, marks.end(), 1);
    }
    return runs;
}

}  // namespace tessel
