// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_forecast.h"

#include "rows/row_detection.h"

#include <algorithm>
#include <functional>
#include <span>

namespace tessel {

namespace {

// The gap behind site 0 is never looked at, and none lies behind the last site.
std::span<const double> gapsThatCount(const std::vector<double>& distances) {
    if (distances.size() < 4) return {};
    return std::span(distances).subspan(2, distances.size() - 3);
}

}  // namespace

RowForecast::RowForecast(const Survey& survey, int distanceMode) : hasSites_(survey.NumSites > 0) {
    const std::vector<double> distances = distancesBy(survey, distanceMode);
    const auto gaps = gapsThatCount(distances);
    largest_.resize(std::min(gaps.size(), static_cast<std::size_t>(kMaxRows)));
    std::partial_sort_copy(gaps.begin(), gaps.end(), largest_.begin(), largest_.end(), std::greater<>());
}

int RowForecast::rows(double minDistance) const {
    if (!hasSites_) return 0;
    const auto end = std::partition_point(largest_.begin(), largest_.end(),
                                          [minDistance](double gap) { return gap > minDistance; });
    return 1 + static_cast<int>(end - largest_.begin());
}

}  // namespace tessel
