// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspicious_sites.h"
#include "base/geometry.h"

namespace tessel {

// The rules behind `findSuspects`, one by one.

/// What a rule works with: it sets its bit in the flags of the sites that it suspects, and asks from time to
/// time, with the part of its own work that is done, whether to go on.
struct RuleRun {
    const Survey& survey;
    const SuspectParameters& parameters;
    std::vector<std::uint8_t>& flags;
    const SearchProgress& goesOn;

    void flag(SiteIndex site, SuspectRule rule) const {
        flags[static_cast<std::size_t>(site)] |= static_cast<std::uint8_t>(1 << rule);
    }
    void flag(const IndexRange& sites, SuspectRule rule) const {
        for (SiteIndex site = sites.first; site < sites.last; ++site)
            flag(site, rule);
    }
    /// The columns with readings.
    std::vector<int> readings() const {
        return survey.TwoEMColumns ? std::vector<int>{kEM1, kEM2} : std::vector<int>{kEM1};
    }
};

/// Sites between two questions whether to go on.
inline constexpr SiteIndex kSitesBetweenQuestions = 32768;

/// Calls act(run of sites) for each run of neighbours that are alike; false where it gives false.
template <typename Alike, typename Act>
bool forEachRun(SiteIndex sites, Alike alike, Act act) {
    for (SiteIndex first = 0; first < sites;) {
        SiteIndex last = first + 1;
        while (last < sites && alike(last - 1, last))
            ++last;
        if (!act(IndexRange{first, last})) return false;
        first = last;
    }
    return true;
}

/// Each is false where it was told not to go on.
bool flagOutsideLimits(const RuleRun& run);
bool flagSpikes(const RuleRun& run);
bool flagUnlikeAround(const RuleRun& run);
bool flagJumps(const RuleRun& run);
bool flagRepeatedPlaces(const RuleRun& run);
bool flagFarAway(const RuleRun& run);
bool flagStuckReadings(const RuleRun& run);
bool flagReadingsApart(const RuleRun& run);

/// Four deviations, or, where the ground itself makes the readings go apart, so many whole ones that at most
/// about one site in fifty goes further.
double proposedApartThreshold(const Survey& survey);

}  // namespace tessel
