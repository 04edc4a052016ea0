// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_turns.h"

#include "base/bounded.h"
#include "rows/row_detection.h"
#include "rows/turn_search.h"

#include <algorithm>
#include <numeric>

namespace tessel {

namespace {

double siteDistance(const Survey& survey, SiteIndex a, SiteIndex b) {
    const SiteTable& sites = survey.SiteData;
    return lengthBetween(sites(kX, a), sites(kY, a), sites(kX, b), sites(kY, b));
}

// The length that half of the way is at least as long as.
double halfOfWay(std::vector<double> lengths) {
    std::sort(lengths.begin(), lengths.end(), std::greater<>());
    const double half = std::accumulate(lengths.begin(), lengths.end(), 0.0) / 2;
    double way = 0;
    for (const double length : lengths)
        if ((way += length) >= half) return length;
    return 0;
}

RowTurns numberSites(const Survey& survey, const std::vector<IndexRange>& rows) {
    RowTurns found;
    found.row.assign(static_cast<std::size_t>(survey.NumSites), kInTurn);
    found.sitesInTurns = survey.NumSites;
    for (const IndexRange& sites : rows) {
        std::fill(found.row.begin() + sites.first, found.row.begin() + sites.last, ++found.rows);
        found.sitesInTurns -= sites.count();
        const double length = siteDistance(survey, sites.first, sites.last - 1);
        found.longest = std::max(found.longest, length);
        found.shortest = found.rows == 1 ? length : std::min(found.shortest, length);
    }
    return found;
}

// The sites in turns, as runs.
std::vector<IndexRange> turnRuns(const RowTurns& found) {
    std::vector<IndexRange> runs;
    const auto begin = found.row.begin();
    const auto isRow = [](int row) { return row != kInTurn; };
    for (auto first = std::find(begin, found.row.end(), kInTurn); first != found.row.end();) {
        const auto last = std::find_if(first, found.row.end(), isRow);
        runs.push_back({first - begin, last - begin});
        first = std::find(last, found.row.end(), kInTurn);
    }
    return runs;
}

// How many sites of a run in a turn go to the row before it.
SiteIndex nearerToRowBefore(const Survey& survey, const IndexRange& run) {
    if (run.first == 0) return 0;
    if (run.last == survey.NumSites) return run.count();
    SiteIndex nearer = 0;
    for (SiteIndex i = run.first; i < run.last; ++i)
        nearer += siteDistance(survey, i, run.first - 1) <= siteDistance(survey, i, run.last) ? 1 : 0;
    return nearer;
}

std::vector<int> withoutTurns(const RowTurns& found) {
    std::vector<int> rows = found.row;
    std::erase(rows, kInTurn);
    return rows;
}

// Requires at most kMaxRows rows.
void writeRows(Survey& survey, const std::vector<int>& rows) {
    double* const column = survey.SiteData.column(kRow);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        column[i] = rows[static_cast<std::size_t>(i)];
    Calculate_NumPoints(survey);
    survey.NumRows = survey.RowIndex;
}

}  // namespace

double turnGap(const Survey& survey) {
    if (survey.MinDistance > 0) return survey.MinDistance;
    return std::min(100 * medianStep(survey), kLargestDouble / 16);
}

TurnParameters proposedTurnParameters(const Survey& survey) {
    TurnParameters proposed;
    proposed.gap = turnGap(survey);
    proposed.distanceMode = survey.DistanceMode;
    const double step = medianStep(survey);
    if (step > 0) proposed.chord = std::min(10 * step, kLargestDouble / 16);
    proposed.shortest = 0;
    std::vector<double> lengths;
    for (const IndexRange& sites : rowsBetweenTurns(survey, proposed).rows)
        lengths.push_back(siteDistance(survey, sites.first, sites.last - 1));
    proposed.shortest = halfOfWay(std::move(lengths)) / 5;
    return proposed;
}

RowTurns findRowTurns(const Survey& survey, const TurnParameters& parameters) {
    const TurnSearch search = rowsBetweenTurns(survey, parameters);
    RowTurns found = numberSites(survey, search.rows);
    found.gaps = search.gaps;
    return found;
}

FoundStretches stretchesOf(const Survey& survey, const RowTurns& found) {
    FoundStretches stretches;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const int row = found.row[static_cast<std::size_t>(i)];
        if (row == kInTurn) {
            stretches.turnX.push_back(survey.SiteData(kX, i));
            stretches.turnY.push_back(survey.SiteData(kY, i));
        } else if (row > static_cast<int>(stretches.rows.size())) {
            stretches.rows.push_back({i, i + 1});
        } else {
            stretches.rows.back().last = i + 1;
        }
    }
    return stretches;
}

std::vector<int> rowsWithTurnsKept(const Survey& survey, const RowTurns& found) {
    std::vector<int> rows = found.row;
    for (const IndexRange& run : turnRuns(found)) {
        const auto first = rows.begin() + run.first;
        const auto last = rows.begin() + run.last;
        const auto middle = first + nearerToRowBefore(survey, run);
        if (middle != first) std::fill(first, middle, *(first - 1));
        if (middle != last) std::fill(middle, last, *last);
    }
    return rows;
}

Difference applyRowTurns(Survey& survey, const RowTurns& found, TurnSites inTurns) {
    const std::vector<int> rows = rowsWithTurnsKept(survey, found);
    const std::vector<IndexRange> runs =
        inTurns == TurnSites::kDelete ? turnRuns(found) : std::vector<IndexRange>();
    const std::vector<int> left = runs.empty() ? std::vector<int>() : withoutTurns(found);
    Difference difference(survey);
    difference.keepRowNumbers(survey);
    if (!runs.empty()) {
        difference.keepSites(survey, runs);
        // The numbers that the rows have are of no use any more, and may have been of none.
        removeSites(survey, runs, EmptiedRows::kLeaveGaps);
    }
    writeRows(survey, runs.empty() ? rows : left);
    return difference;
}

}  // namespace tessel
