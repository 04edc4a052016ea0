// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/survey_invariants.h"

#include "rows/row_detection.h"

namespace tessel {

namespace {

using namespace std::string_literals;

std::string brokenSizes(const Survey& survey) {
    const auto sites = static_cast<std::size_t>(survey.NumSites);
    if (survey.NumSites < 0 || survey.NumSites > survey.SiteData.capacity())
        return "NumSites is not between 0 and the capacity";
    if (survey.SiteID.size() !=
        (survey.SiteIDPresent ? static_cast<std::size_t>(survey.SiteData.capacity()) : 0))
        return "SiteID is not as long as SiteData";
    if (!survey.SourceLine.empty() &&
        survey.SourceLine.size() != static_cast<std::size_t>(survey.SiteData.capacity()))
        return "SourceLine is not as long as SiteData";
    const std::pair<bool, const std::vector<double>*> distances[] = {{survey.UseTrueDist, &survey.TrueDist},
                                                                     {survey.UseXDist, &survey.XDist},
                                                                     {survey.UseYDist, &survey.YDist}};
    // A file whose row numbers are of no use is kept without distances.
    for (const auto& [inUse, lengths] : distances)
        if (inUse && lengths->size() < sites && (rowsAreUsable(survey) || !lengths->empty()))
            return "the distances do not reach the last site";
    for (const auto* lengths : {&survey.TrueDist, &survey.XDist, &survey.YDist})
        if (!lengths->empty() && lengths->size() != sites + 1) return "distances out of step with the sites";
    // While the map is open there may be more rows than sites: those that it has emptied are lost at its end.
    return survey.NumRows < 0 ? "NumRows is out of range" : "";
}

std::string brokenValues(const Survey& survey) {
    for (int column = 0; column < kSiteColumns; ++column)
        for (SiteIndex site = 0; site < survey.NumSites; ++site)
            if (!std::isfinite(survey.SiteData(column, site)))
                return "column " + std::to_string(column) + " of site " + std::to_string(site) +
                       " is no number";
    return {};
}

// Rows 1, 2, ... up to NumRows, each in one piece, with the sites that NumPoints has.
std::string brokenRows(const Survey& survey) {
    SiteIndex site = 0;
    for (int row = 1; row <= survey.NumRows; ++row) {
        const SiteIndex first = site;
        while (site < survey.NumSites && survey.SiteData(kRow, site) == row)
            ++site;
        const SiteIndex sites = survey.NumPoints[static_cast<std::size_t>(row)];
        if (sites != site - first)
            return "row " + std::to_string(row) + " has " + std::to_string(site - first) +
                   " sites, and NumPoints " + std::to_string(sites);
    }
    return site == survey.NumSites ? ""s : "a site behind the last row";
}

}  // namespace

std::string brokenInvariant(const Survey& survey) {
    std::string broken = brokenSizes(survey);
    if (broken.empty()) broken = brokenValues(survey);
    if (broken.empty() && survey.NumSites > 0 && rowsAreUsable(survey) && survey.NumRows <= kMaxRows)
        broken = brokenRows(survey);
    return broken;
}

}  // namespace tessel
