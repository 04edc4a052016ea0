// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_deletion.h"

#include "rows/row_detection.h"
#include "rows/row_sites.h"
#include "rows/site_removal.h"

#include <algorithm>
#include <vector>

namespace tessel {

namespace {

std::vector<SiteIndex> indicesOf(const RowSelection& selection, RowSites sites) {
    std::vector<SiteIndex> indices(selection.SelPoints.begin(),
                                   selection.SelPoints.begin() + selection.SelCount);
    for (SiteIndex& index : indices)
        index += sites.first - 1;
    std::sort(indices.begin(), indices.end());
    return indices;
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
    const std::vector<SiteIndex> indices = indicesOf(selection, sites);
    Reserve_Chosen_Distance(survey);
    const SiteIndex removed = removeSitesAt(survey, indices);
    selection.clear();
    const bool emptied = removed > 0 && removed == sites.count;
    if (emptied)
        dropRow(survey, sites.first);
    else
        survey.NumPoints[static_cast<std::size_t>(row)] -= removed;
    Distances_After_Removal(survey, indices);
    return emptied;
}

}  // namespace tessel
