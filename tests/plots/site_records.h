// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <vector>

namespace tessel {

/// A site as a record, with its site ID number.
struct Site {
    double x, y, em1, em2, row, id;
    bool operator==(const Site&) const = default;
};

inline Survey surveyOf(const std::vector<Site>& sites, bool withIDs = true) {
    Survey survey;
    survey.NumSites = static_cast<SiteIndex>(sites.size());
    survey.SiteIDPresent = withIDs;
    survey.TwoEMColumns = true;
    survey.SiteData.resize(survey.NumSites);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const Site& site = sites[static_cast<std::size_t>(i)];
        survey.SiteData(kX, i) = site.x;
        survey.SiteData(kY, i) = site.y;
        survey.SiteData(kEM1, i) = site.em1;
        survey.SiteData(kEM2, i) = site.em2;
        survey.SiteData(kRow, i) = site.row;
        if (withIDs) survey.SiteID.push_back(site.id);
    }
    return survey;
}

inline std::vector<Site> recordsOf(const Survey& survey) {
    std::vector<Site> sites;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        sites.push_back({survey.SiteData(kX, i), survey.SiteData(kY, i), survey.SiteData(kEM1, i),
                         survey.SiteData(kEM2, i), survey.SiteData(kRow, i),
                         survey.SiteIDPresent ? survey.SiteID[static_cast<std::size_t>(i)] : 0});
    return sites;
}

}  // namespace tessel
