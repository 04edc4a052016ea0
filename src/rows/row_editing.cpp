// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_editing.h"

#include "base/numbers.h"
#include "rows/row_sites.h"

#include <algorithm>
#include <utility>

namespace tessel {

namespace {

int rowOfLastSite(const Survey& survey) {
    return roundToInt(survey.SiteData(kRow, survey.NumSites - 1));
}

// Takes the number `row` out of the numbering: rows behind it move down by one.
void closeNumberGap(Survey& survey, int row) {
    double* const rows = survey.SiteData.column(kRow);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        rows[i] -= rows[i] > row ? 1.0 : 0.0;
}

bool rowsRunWithoutGap(const Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    const auto number = [row](SiteIndex i) { return roundToInt(row[i]); };
    if (number(0) != 1 || number(survey.NumSites - 1) != survey.NumRows) return false;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        if (row[i] == row[i - 1]) continue;
        const int step = number(i) - number(i - 1);
        if (step != 0 && step != 1) return false;
    }
    return true;
}

}  // namespace

Difference Joint_Row(Survey& survey, int row1, int row2) {
    Difference difference(survey);
    difference.keepRowNumbers(survey);
    // Every row behind the lower of two neighbours moves down by one: the higher one onto it.
    closeNumberGap(survey, std::min(row1, row2));
    survey.NumRows = rowOfLastSite(survey);
    Calculate_NumPoints(survey);
    return difference;
}

bool canSplitRow(const Survey& survey, SiteIndex site) {
    const double* const row = survey.SiteData.column(kRow);
    return site > 0 && row[site - 1] == row[site] && survey.NumRows < kMaxRows;
}

Difference splitRow(Survey& survey, SiteIndex site) {
    Difference difference(survey);
    difference.keepRowNumbers(survey);
    double* const row = survey.SiteData.column(kRow);
    for (SiteIndex i = site; i < survey.NumSites; ++i)
        row[i] += 1;
    survey.NumRows = rowOfLastSite(survey);
    Calculate_NumPoints(survey);
    return difference;
}

RemovedSites Delete_Row(Survey& survey, int row) {
    const SurveyFigures before = survey;
    Calculate_NumPoints(survey);
    const IndexRange sites = rowSites(survey, row);
    RemovedSites removed = removeSites(survey, {sites}, EmptiedRows::kCloseUp);
    removed.difference.keepFigures(before);
    return removed;
}

FoundRows Recalculate_Rows(Survey& survey, int distanceMode, double minDistance) {
    Difference difference(survey);
    difference.keepRowNumbers(survey);
    difference.keepDistances(survey, distanceMode);
    Calculate_Distances(survey, distanceMode);  // first, because memory may not suffice
    survey.chooseDistance(distanceMode);
    survey.MinDistance = minDistance;
    const RowDetection outcome = Assign_Row(survey);
    if (outcome == RowDetection::kAssigned) Calculate_NumPoints(survey);
    return {outcome, std::move(difference)};
}

bool ValidateRowInfo(const Survey& survey) {
    return rowsRunWithoutGap(survey);
}

Difference makeOneRow(Survey& survey) {
    Difference difference(survey);
    difference.keepRowNumbers(survey);
    putAllInOneRow(survey);
    return difference;
}

void putAllInOneRow(Survey& survey) noexcept {
    double* const row = survey.SiteData.column(kRow);
    std::fill(row, row + survey.NumSites, 1.0);
    survey.NumRows = survey.RowIndex = 1;
    survey.NumPoints.fill(0);
    survey.NumPoints[1] = survey.NumSites;
}

void forgetRows(SurveyCounts& counts) {
    counts.NumRows = counts.RowIndex = 0;
    counts.NumPoints.fill(0);
}

}  // namespace tessel
