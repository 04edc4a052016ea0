// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_editing.h"

#include "base/numbers.h"
#include "rows/site_removal.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
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

// What every entry has to pass before its value counts. An empty text is not numeric either, so that the
// first fault is the one a user meets.
EntryFault checkNumeric(std::initializer_list<std::string_view> texts) {
    if (!std::all_of(texts.begin(), texts.end(), isNumeric)) return EntryFault::NotNumeric;
    const auto empty = [](std::string_view text) { return text.empty(); };
    return std::any_of(texts.begin(), texts.end(), empty) ? EntryFault::Empty : EntryFault::None;
}

int rowNumber(std::string_view text) {
    return roundToInt(*numericValue(text));
}

bool isRow(int row, int numRows) {
    return row >= 1 && row <= numRows;
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

RowPairEntry checkRowPair(std::string_view row1, std::string_view row2, int numRows) {
    RowPairEntry entry{checkNumeric({row1, row2})};
    if (entry.fault != EntryFault::None) return entry;
    entry.row1 = rowNumber(row1);
    entry.row2 = rowNumber(row2);
    if (!isRow(entry.row1, numRows) || !isRow(entry.row2, numRows))
        entry.fault = EntryFault::OutOfRange;
    else if (std::abs(entry.row1 - entry.row2) != 1)
        entry.fault = EntryFault::NotConsecutive;
    return entry;
}

RowEntry checkRow(std::string_view row, int numRows) {
    RowEntry entry{checkNumeric({row})};
    if (entry.fault != EntryFault::None) return entry;
    entry.row = rowNumber(row);
    if (!isRow(entry.row, numRows)) entry.fault = EntryFault::OutOfRange;
    return entry;
}

DistanceEntry checkDistance(std::string_view distance) {
    DistanceEntry entry{checkNumeric({distance})};
    if (entry.fault != EntryFault::None) return entry;
    entry.distance = *numericValue(distance);
    if (entry.distance < 0) entry.fault = EntryFault::Negative;
    return entry;
}

}  // namespace tessel
