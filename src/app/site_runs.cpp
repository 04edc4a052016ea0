// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/site_runs.h"

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

SiteIndex sitesIn(std::span<const IndexRange> runs) {
    SiteIndex sites = 0;
    for (const IndexRange& run : runs)
        sites += run.count();
    return sites;
}

std::vector<IndexRange> joined(std::vector<IndexRange> runs) {
    std::size_t last = 0;
    for (std::size_t i = 1; i < runs.size(); ++i) {
        if (runs[i].first == runs[last].last)
            runs[last].last = runs[i].last;
        else
            runs[++last] = runs[i];
    }
    if (!runs.empty()) runs.resize(last + 1);
    return runs;
}

}  // namespace tessel
