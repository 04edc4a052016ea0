// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspicious_sites.h"
#include "base/geometry.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// The suspicious sites as a user goes through them.

/// What the rules are called in a list, in their order.
inline constexpr std::array<std::string_view, kSuspectRules> kRuleNames = {
    "outside limits", "spike",    "unlike around", "jump",
    "repeated place", "far away", "stuck",         "readings apart"};

/// The names of the rules that flag a site: "spike, jump".
std::string ruleNames(std::uint8_t flags);

/// The sites that any rule flags, in order.
std::vector<SiteIndex> flaggedSites(const Suspects& suspects);

/// By what a list is ordered; sites that are equal in it stay in the order of the survey. By rules: how many
/// flag a site, then which.
enum class SuspectOrder { kSite, kRow, kX, kY, kEM1, kEM2, kRules };
/// Requires sites of the survey.
void sortSuspects(std::vector<SiteIndex>& sites, const Survey& survey, const Suspects& suspects,
                  SuspectOrder order, bool rising);

/// The runs of the flagged sites that a user has not spared. Requires a mark of 0 or 1 for each site.
std::vector<IndexRange> condemnedRuns(const Suspects& suspects, const std::vector<std::uint8_t>& spared);

/// A copy of what rules and lists look at: sites, their numbers and figures, without distances and lines.
Survey surveyToSearch(const Survey& survey);

/// The coordinates of some sites.
struct SitePlaces {
    std::vector<double> x, y;
};
SitePlaces placesOf(const Survey& survey, const std::vector<SiteIndex>& sites);

}  // namespace tessel
