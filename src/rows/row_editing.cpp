// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_editing.h"

#include "base/numbers.h"
#include "rows/site_removal.h"

#include <algorithm>
#include <cstdint>
#include <vector>

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

void countRows(Survey& survey) {
    if (survey.NumSites == 0) {
        survey.NumRows = survey.RowIndex = 0;
        survey.NumPoints.fill(0);
        return;
    }
    survey.NumRows = rowOfLastSite(survey);
    Calculate_NumPoints(survey);
}

SiteIndex removeRow(Survey& survey, int row) {
    const double* const rows = survey.SiteData.column(kRow);
    std::vector<std::uint8_t> marks(static_cast<std::size_t>(survey.NumSites));
    std::transform(rows, rows + survey.NumSites, marks.begin(),
                   [row](double r) { return static_cast<std::uint8_t>(r == row ? 1 : 0); });
    return removeSites(survey, marks);
}

void calculateDistance(Survey& survey, int distanceMode) {
    if (distanceMode == 1) Calculate_Distance(survey);
    if (distanceMode == 2) Calculate_X_Distance(survey);
    if (distanceMode == 3) Calculate_Y_Distance(survey);
}

}  // namespace

void Joint_Row(Survey& survey, int row1, int row2) {
    // Every row behind the lower of two neighbours moves down by one: the higher one onto it.
    closeNumberGap(survey, std::min(row1, row2));
    countRows(survey);
}

void Delete_Row(Survey& survey, int row) {
    Reserve_Chosen_Distance(survey);
    removeRow(survey, row);
    closeNumberGap(survey, row);
    countRows(survey);
    Calculate_Chosen_Distance(survey);
}

RowDetection Recalculate_Rows(Survey& survey, int distanceMode, double minDistance) {
    calculateDistance(survey, distanceMode);  // first, because memory may not suffice
    survey.chooseDistance(distanceMode);
    survey.MinDistance = minDistance;
    const RowDetection outcome = Assign_Row(survey);
    if (outcome == RowDetection::Assigned) Calculate_NumPoints(survey);
    return outcome;
}

}  // namespace tessel
