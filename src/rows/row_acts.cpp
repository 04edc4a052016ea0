// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_acts.h"

#include "base/numbers.h"

#include <algorithm>
#include <string>

namespace tessel {

namespace {

std::string sitesInWords(SiteIndex sites) {
    return std::to_string(sites) + (sites == 1 ? " site" : " sites");
}

SiteIndex sitesOfNumber(const Survey& survey, int row) {
    const double* const rows = survey.SiteData.column(kRow);
    return std::count(rows, rows + survey.NumSites, static_cast<double>(row));
}

}  // namespace

ActDescription joinOf(int row1, int row2) {
    const std::string low = std::to_string(std::min(row1, row2)), high = std::to_string(std::max(row1, row2));
    return {ActKind::kJoinRows,
            "join rows " + low + " and " + high,
            "Joined rows " + low + " and " + high,
            {{"rows", low + " " + high}}};
}

ActDescription divisionOf(int row, SiteIndex place) {
    const std::string number = std::to_string(row), site = std::to_string(place);
    return {ActKind::kSplitRow,
            "split row " + number,
            "Split row " + number + " before its site " + site,
            {{"row", number}, {"before site of the row", site}}};
}

ActDescription deletionOfRow(const Survey& survey, int row) {
    const std::string number = std::to_string(row);
    return {ActKind::kDeleteRow,
            "delete row " + number,
            "Deleted row " + number + " with its " + sitesInWords(sitesOfNumber(survey, row)),
            {{"row", number}}};
}

ActDescription deletionOfPicked(int row, const RowSelection& selection) {
    const std::string sites = sitesInWords(selection.SelCount), number = std::to_string(row);
    return {ActKind::kDeletePicked,
            "delete " + sites + " of row " + number,
            "Deleted " + sites + " of row " + number,
            {{"row", number}}};
}

ActDescription deletionOfMasked(SiteIndex sites) {
    const std::string masked = sitesInWords(sites);
    return {
        ActKind::kDeleteMasked, "delete " + masked + " on the map", "Deleted " + masked + " on the map", {}};
}

ActDescription searchForRows(int distanceMode, double minDistance) {
    const char* const measure = distanceMode == 2   ? "X distance"
                                : distanceMode == 3 ? "Y distance"
                                                    : "true distance";
    return {ActKind::kFindRows,
            "find rows by " + shortestText(minDistance) + " m",
            "Looked for rows by gaps above " + shortestText(minDistance) + " m (" + measure + ")",
            {{"minimum distance (m)", shortestText(minDistance)}, {"measure", measure}}};
}

ActDescription searchByTurns(const TurnParameters& parameters, const RowTurns& found, TurnSites inTurns) {
    const bool deletes = inTurns == TurnSites::kDelete && found.sitesInTurns > 0;
    const std::string rows = std::to_string(found.rows) + (found.rows == 1 ? " row" : " rows");
    return {ActKind::kFindTurns,
            "find rows by turns",
            "Found " + rows + " by turns" +
                (deletes ? " and deleted " + sitesInWords(found.sitesInTurns) + " in turns" : ""),
            {{"turn angle (degrees)", shortestText(parameters.turnAngle)},
             {"length of a heading (m)", shortestText(parameters.chord)},
             {"shortest row (m)", shortestText(parameters.shortest)},
             {"longest step in a row (m)", shortestText(parameters.gap)},
             {"sites in turns", inTurns == TurnSites::kDelete ? "deleted" : "kept"}}};
}

ActDescription lossOfRows() {
    return {ActKind::kLoseRows,
            "lose the row information",
            "Lost the row information to deletions on the map",
            {}};
}

}  // namespace tessel
