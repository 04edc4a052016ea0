// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/site_removal.h"

#include "base/numbers.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tessel {

namespace {

// Entry 0, which counts no row, for a number that is none.
std::size_t countOf(double rowNumber) {
    const int row = roundToInt(rowNumber);
    return row >= 1 && row <= kMaxRows ? static_cast<std::size_t>(row) : 0;
}

// Adds each of these sites `times` to the count of its row.
void count(Survey& survey, const IndexRange& sites, std::int64_t times) {
    const double* const row = survey.SiteData.column(kRow);
    for (SiteIndex i = sites.first; i < sites.last;) {
        const SiteIndex first = i;
        while (i < sites.last && row[i] == row[first])
            ++i;
        survey.NumPoints[countOf(row[first])] += times * (i - first);
    }
    survey.NumPoints[0] = 0;
}

std::ptrdiff_t rowsWithoutSites(const Survey& survey) {
    return std::count(survey.NumPoints.begin(), survey.NumPoints.end(), 0);
}

// Gives how many rows are left without sites.
int countWithout(Survey& survey, std::span<const IndexRange> runs) {
    const auto before = rowsWithoutSites(survey);
    for (const IndexRange& run : runs)
        count(survey, run, -1);
    return static_cast<int>(rowsWithoutSites(survey) - before);
}

void takeOut(Survey& survey, std::span<const IndexRange> runs) {
    const SiteIndex before = survey.NumSites;
    survey.NumSites -= sitesIn(runs);
    const auto takeFrom = [&](auto* values) {
        closeGaps(values, before, runs);
        std::fill(values + survey.NumSites, values + before, 0);
    };
    for (int column = 0; column < kSiteColumns; ++column)
        takeFrom(survey.SiteData.column(column));
    if (survey.SiteIDPresent) takeFrom(survey.SiteID.data());
    if (!survey.SourceLine.empty()) takeFrom(survey.SourceLine.data());
}

// Numbers the rows that still have sites 1, 2, 3, ...
void closeUpRows(Survey& survey) {
    auto& points = survey.NumPoints;
    const auto end = std::remove(points.begin() + 1, points.end(), 0);
    std::fill(end, points.end(), 0);
    survey.NumRows = survey.RowIndex = static_cast<int>(end - points.begin()) - 1;
    double* sites = survey.SiteData.column(kRow);
    double* const behind = sites + survey.NumSites;
    for (int row = 1; row <= survey.NumRows; ++row)
        sites = std::fill_n(sites, std::min(points[static_cast<std::size_t>(row)], behind - sites), row);
}

}  // namespace

RemovedSites removeSites(Survey& survey, std::vector<IndexRange> runs, EmptiedRows emptied) {
    Reserve_Chosen_Distance(survey);
    const SiteIndex before = survey.NumSites;
    RemovedSites removed{sitesIn(runs), 0, Difference(survey)};
    removed.difference.keepSites(survey, joined(std::move(runs)));
    if (emptied == EmptiedRows::kCloseUp) removed.difference.keepRowNumbers(survey);
    const std::span<const IndexRange> taken = removed.difference.removed();
    if (emptied == EmptiedRows::kLeaveGaps) {
        survey.NumPoints.fill(0);
        count(survey, {0, before}, 1);
    }
    removed.rows = countWithout(survey, taken);
    takeOut(survey, taken);
    if (emptied == EmptiedRows::kCloseUp && removed.rows > 0) closeUpRows(survey);
    Distances_After_Removal(survey, taken, before);
    return removed;
}

}  // namespace tessel
