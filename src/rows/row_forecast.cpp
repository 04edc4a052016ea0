// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_forecast.h"

#include "rows/row_detection.h"

#include <algorithm>
#include <functional>
#include <span>

namespace tessel {

namespace {

constexpr std::size_t kFirstGap = 2;  // behind site 1: the one behind site 0 is never looked at

// None lies behind the last site.
std::span<const double> gapsThatCount(const std::vector<double>& distances) {
    if (distances.size() < 4) return {};
    return std::span(distances).subspan(kFirstGap, distances.size() - kFirstGap - 1);
}

}  // namespace

RowForecast::RowForecast(const Survey& survey, int distanceMode) : sites_(survey.NumSites) {
    const std::vector<double> distances = distancesBy(survey, distanceMode);
    const auto gaps = gapsThatCount(distances);
    largest_.resize(std::min(gaps.size(), static_cast<std::size_t>(kMaxRows)));
    std::partial_sort_copy(gaps.begin(), gaps.end(), largest_.begin(), largest_.end(), std::greater<>());
    // Where there are more gaps than rows, one as short as the last of these divides none.
    const double least = gaps.size() > largest_.size() ? largest_.back() : -1;
    for (std::size_t i = 0; i < gaps.size(); ++i)
        if (gaps[i] > least) gaps_.push_back({static_cast<SiteIndex>(i + kFirstGap), gaps[i]});
}

int RowForecast::rows(double minDistance) const {
    if (sites_ == 0) return 0;
    const auto end = std::partition_point(largest_.begin(), largest_.end(),
                                          [minDistance](double gap) { return gap > minDistance; });
    return 1 + static_cast<int>(end - largest_.begin());
}

std::vector<IndexRange> RowForecast::rowSites(double minDistance) const {
    const int count = rows(minDistance);
    if (count < 1 || count > kMaxRows) return {};
    std::vector<IndexRange> found;
    SiteIndex first = 0;
    for (const Gap& gap : gaps_) {
        if (!(gap.length > minDistance)) continue;
        found.push_back({first, gap.behind});
        first = gap.behind;
    }
    found.push_back({first, sites_});
    return found;
}

}  // namespace tessel
