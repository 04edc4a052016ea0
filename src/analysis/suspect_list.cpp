// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/suspect_list.h"

#include "app/site_runs.h"

#include <algorithm>
#include <bit>

namespace tessel {

namespace {

// What a site is ordered by; sites with the same value are in the order of their indices.
struct Key {
    double value;
    SiteIndex site;
};

double valueOf(const Survey& survey, const Suspects& suspects, SuspectOrder order, SiteIndex site) {
    switch (order) {
        case SuspectOrder::kSite:
            return survey.SiteIDPresent ? survey.SiteID[static_cast<std::size_t>(site)]
                                        : static_cast<double>(site);
        case SuspectOrder::kRow:
            return survey.SiteData(kRow, site);
        case SuspectOrder::kX:
            return survey.SiteData(kX, site);
        case SuspectOrder::kY:
            return survey.SiteData(kY, site);
        case SuspectOrder::kEM1:
            return survey.SiteData(kEM1, site);
        case SuspectOrder::kEM2:
            return survey.SiteData(kEM2, site);
        case SuspectOrder::kRules:
            break;
    }
    const std::uint8_t flags = suspects.flags[static_cast<std::size_t>(site)];
    return std::popcount(flags) * 256 + flags;
}

}  // namespace

std::string ruleNames(std::uint8_t flags) {
    std::string names;
    for (std::size_t rule = 0; rule < kRuleNames.size(); ++rule) {
        if ((flags >> rule & 1) == 0) continue;
        if (!names.empty()) names += ", ";
        names += kRuleNames[rule];
    }
    return names;
}

std::vector<SiteIndex> flaggedSites(const Suspects& suspects) {
    std::vector<SiteIndex> sites;
    sites.reserve(static_cast<std::size_t>(suspects.sites));
    for (std::size_t i = 0; i < suspects.flags.size(); ++i)
        if (suspects.flags[i] != 0) sites.push_back(static_cast<SiteIndex>(i));
    return sites;
}

void sortSuspects(std::vector<SiteIndex>& sites, const Survey& survey, const Suspects& suspects,
                  SuspectOrder order, bool rising) {
    std::vector<Key> keys;
    keys.reserve(sites.size());
    for (const SiteIndex site : sites)
        keys.push_back({valueOf(survey, suspects, order, site), site});
    std::sort(keys.begin(), keys.end(), [rising](const Key& a, const Key& b) {
        if (a.value != b.value) return rising == (a.value < b.value);
        return a.site < b.site;
    });
    std::transform(keys.begin(), keys.end(), sites.begin(), [](const Key& key) { return key.site; });
}

std::vector<IndexRange> condemnedRuns(const Suspects& suspects, const std::vector<std::uint8_t>& spared) {
    std::vector<std::uint8_t> condemned(suspects.flags.size());
    for (std::size_t i = 0; i < condemned.size(); ++i)
        condemned[i] = suspects.flags[i] != 0 && spared[i] == 0 ? 1 : 0;
    return markedRuns(condemned);
}

Survey surveyToSearch(const Survey& survey) {
    Survey copy;
    static_cast<SurveyFigures&>(copy) = survey;
    copy.SiteData = survey.SiteData;
    copy.SiteID = survey.SiteID;
    return copy;
}

SitePlaces placesOf(const Survey& survey, const std::vector<SiteIndex>& sites) {
    SitePlaces places;
    places.x.reserve(sites.size());
    places.y.reserve(sites.size());
    for (const SiteIndex site : sites) {
        places.x.push_back(survey.SiteData(kX, site));
        places.y.push_back(survey.SiteData(kY, site));
    }
    return places;
}

}  // namespace tessel
