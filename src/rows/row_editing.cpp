// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_editing.h"

#include "base/numbers.h"
#include "rows/row_sites.h"

#include <algorithm>

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

void makeOneRow(Survey& survey) {
    double* const row = survey.SiteData.column(kRow);
    std::fill(row, row + survey.NumSites, 1.0);
    survey.NumRows = survey.RowIndex = 1;
    survey.NumPoints.fill(0);
    survey.NumPoints[1] = survey.NumSites;
}

}  // namespace

void Joint_Row(Survey& survey, int row1, int row2) {
    // Every row behind the lower of two neighbours moves down by one: the higher one onto it.
    closeNumberGap(survey, std::min(row1, row2));
    survey.NumRows = rowOfLastSite(survey);
    Calculate_NumPoints(survey);
}

RowSplit splitRow(Survey& survey, SiteIndex site) {
    double* const row = survey.SiteData.column(kRow);
    if (site == 0 || row[site - 1] != row[site]) return RowSplit::kFirstOfRow;
    if (survey.NumRows >= kMaxRows) return RowSplit::kNoMoreRows;
    for (SiteIndex i = site; i < survey.NumSites; ++i)
        row[i] += 1;
    survey.NumRows = rowOfLastSite(survey);
    Calculate_NumPoints(survey);
    return RowSplit::kDone;
}

RemovedSites Delete_Row(Survey& survey, int row) {
    Calculate_NumPoints(survey);
    const IndexRange sites = rowSites(survey, row);
    return removeSites(survey, {sites}, EmptiedRows::kCloseUp);
}

RowDetection Recalculate_Rows(Survey& survey, int distanceMode, double minDistance) {
    Calculate_Distances(survey, distanceMode);  // first, because memory may not suffice
    survey.chooseDistance(distanceMode);
    survey.MinDistance = minDistance;
    const RowDetection outcome = Assign_Row(survey);
    if (outcome == RowDetection::kAssigned) Calculate_NumPoints(survey);
    return outcome;
}

bool ValidateRowInfo(Survey& survey) {
    if (rowsRunWithoutGap(survey)) return true;
    makeOneRow(survey);
    return false;
}

void forgetRows(Survey& survey) {
    survey.NumRows = survey.RowIndex = 0;
    survey.NumPoints.fill(0);
}

}  // namespace tessel
