// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_sites.h"

#include "base/run_time_error.h"

#include <algorithm>
#include <numeric>

namespace tessel {

IndexRange rowSites(const Survey& survey, int row) {
    if (row < 1 || row > kMaxRows) throw RunTimeError::subscriptOutOfRange();
    const auto firstRow = survey.NumPoints.begin() + 1;
    // Counts may be those of other row numbers, where a search has found too many rows.
    const SiteIndex before = std::accumulate(firstRow, firstRow + (row - 1), SiteIndex{0});
    const SiteIndex first = std::clamp(before, SiteIndex{0}, survey.NumSites);
    return {first, std::clamp(first + firstRow[row - 1], first, survey.NumSites)};
}

std::span<const double> columnOf(const Survey& survey, int column, IndexRange sites) {
    return {survey.SiteData.column(column) + sites.first, static_cast<std::size_t>(sites.count())};
}

SiteIndex pointBeside(SiteIndex point, int step, std::span<const double> along) {
    const auto count = static_cast<SiteIndex>(along.size());
    if (count == 0) return 0;
    const SiteIndex onward = along.back() < along.front() ? -step : step;
    if (point == 0) return onward > 0 ? 1 : count;
    return std::clamp(point + onward, SiteIndex{1}, count);
}

}  // namespace tessel
