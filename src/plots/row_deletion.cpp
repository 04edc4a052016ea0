#include "plots/row_deletion.h"

#include "app/site_removal.h"
#include "plots/row_sites.h"
#include "rows/row_detection.h"

#include <vector>

namespace {

std::vector<std::uint8_t> marksOf(const RowSelection& selection, RowSites sites, SiteIndex numSites) {
    std::vector<std::uint8_t> marks(static_cast<std::size_t>(numSites), 0);
    for (int i = 0; i < selection.SelCount; ++i)
        marks[static_cast<std::size_t>(sites.first + selection.SelPoints[static_cast<std::size_t>(i)] - 1)] =
            1;
    return marks;
}

void dropRow(Survey& survey, SiteIndex firstBehind) {
    double* const row = survey.SiteData.column(kRow);
    for (SiteIndex i = firstBehind; i < survey.NumSites; ++i)
        row[i] -= 1;
    --survey.NumRows;
    Calculate_NumPoints(survey);
}

}  // namespace

bool deleteSelectedSites(Survey& survey, int row, RowSelection& selection) {
    const RowSites sites = rowSites(survey, row);
    const auto removed = removeSites(survey, marksOf(selection, sites, survey.NumSites));
    selection.clear();
    const bool emptied = removed > 0 && removed == sites.count;
    if (emptied)
        dropRow(survey, sites.first);
    else
        survey.NumPoints[static_cast<std::size_t>(row)] -= removed;
    Calculate_Chosen_Distance(survey);
    return emptied;
}
