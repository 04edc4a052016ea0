// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace tessel {

// Sites that should be looked at before they are believed. Nothing here changes a survey: rules propose.
//
// A reading is compared with others by the Hampel identifier (F. R. Hampel, "The influence curve and its role
// in robust estimation", Journal of the American Statistical Association 69, 1974; as a filter along a
// series: L. Davies and U. Gather, "The identification of multiple outliers", the same 88, 1993): its
// distance from the median of its neighbours, in median absolute deviations from this median, scaled
// by 1.4826 to be standard deviations of normal noise. A deviation is never taken for less than the noise of
// the whole survey (`readingNoise`), so that neighbours that agree by chance condemn nobody.

/// The rules, in the order in which a user sees them.
enum SuspectRule : int {
    kOutsideLimits,  ///< a reading below or above what a user allows
    kSpike,          ///< a reading unlike its neighbours along the row (Hampel)
    kUnlikeAround,   ///< a reading unlike those of the sites around, on other rows too (Hampel)
    kJump,  ///< a position to which the way jumps, and from which it jumps back (strays, `walked_path.h`)
    kRepeatedPlace,  ///< a position that is that of the site before (or behind)
    kFarAway,        ///< a position at 0, 0, or far from the middle of the survey by median distances
    kStuckReading,   ///< a reading that stays exactly the same over many sites
    kReadingsApart,  ///< two readings that go apart: what the line of all (Theil and Sen) leaves of the
                     ///< second is unlike that of the neighbours along the row (Hampel)
    kSuspectRules
};

/// Which site of those at one place stays.
enum class RepeatedPlaces {
    kKeepFirst,
    kKeepLast,
    kKeepMean  ///< the first, with the mean of their readings (`meansOfRepeatedPlaces`)
};

struct SuspectParameters {
    std::array<bool, kSuspectRules> uses{};
    // Limits of EM1 and EM2 (mS/m): what lies outside is suspicious.
    std::array<double, 2> lowest{0, 0}, highest{1000, 1000};
    int spikeNeighbours = 5;     ///< on each side along the row, at least 2
    double spikeThreshold = 4;   ///< scaled median absolute deviations
    double radius = 10;          ///< metres around a site
    double aroundThreshold = 4;  ///< scaled median absolute deviations
    double jump = 10;            ///< metres: longer steps out and back are jumps
    RepeatedPlaces repeated = RepeatedPlaces::kKeepFirst;
    double farFactor = 10;  ///< times the median distance from the middle , or more where the logger rested
    SiteIndex stuckSites = 10;  ///< sites in a row with the same reading, at least 2
    double apartThreshold = 4;  ///< scaled median absolute deviations
};

/// Parameters for this survey: no rule is used; a jump is longer than ten times the median step, the circle
/// around a site holds some sixty sites where the survey is as dense as on the whole, and readings that go
/// apart do so by more than about 49 sites in 50 do.
SuspectParameters proposedSuspectParameters(const Survey& survey);

/// What the rules have found. The flags of a site are the bits 1 << rule.
struct Suspects {
    std::vector<std::uint8_t> flags;                ///< of each site
    std::array<SiteIndex, kSuspectRules> counts{};  ///< sites that each rule flags
    SiteIndex sites = 0;                            ///< sites that any rule flags
    bool cancelled = false;                         ///< then nothing else holds
};

/// Told from time to time how much is done (0 to 1); false ends the search.
using SearchProgress = std::function<bool(double)>;

/// Applies the rules that are used. Requires thresholds, radius, jump and factor above 0.
Suspects findSuspects(const Survey& survey, const SuspectParameters& parameters,
                      const SearchProgress& progress = {});

/// The readings of a site that stays for others at its place.
struct MeanReadings {
    SiteIndex site = 0;
    double em1 = 0, em2 = 0;
};
/// Of each first site of several at one place of a row the means of their readings.
std::vector<MeanReadings> meansOfRepeatedPlaces(const Survey& survey);

}  // namespace tessel
