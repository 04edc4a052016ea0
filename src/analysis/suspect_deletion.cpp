// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/suspect_deletion.h"

#include "app/site_runs.h"
#include "base/numbers.h"
#include "rows/row_detection.h"
#include "rows/row_editing.h"
#include "rows/site_removal.h"

#include <algorithm>
#include <string>

namespace tessel {

namespace {

std::string between(double low, double high) {
    return shortestText(low) + " to " + shortestText(high) + " mS/m";
}

std::string limitsInWords(const Survey& survey, const SuspectParameters& p) {
    const std::string first = "EM1 " + between(p.lowest[0], p.highest[0]);
    return survey.TwoEMColumns ? first + ", EM2 " + between(p.lowest[1], p.highest[1]) : first;
}

std::string deviations(double threshold) {
    return shortestText(threshold) + " deviations";
}

const char* keptOf(RepeatedPlaces repeated) {
    return repeated == RepeatedPlaces::kKeepFirst  ? "the first site stays"
           : repeated == RepeatedPlaces::kKeepLast ? "the last site stays"
                                                   : "the first site stays with the mean reading";
}

std::string parametersOf(const Survey& survey, const SuspectParameters& p, int rule) {
    switch (rule) {
        case kOutsideLimits:
            return limitsInWords(survey, p);
        case kSpike:
            return std::to_string(p.spikeNeighbours) + " neighbours on each side, " +
                   deviations(p.spikeThreshold);
        case kUnlikeAround:
            return "within " + shortestText(p.radius) + " m, " + deviations(p.aroundThreshold);
        case kJump:
            return "longer than " + shortestText(p.jump) + " m";
        case kRepeatedPlace:
            return keptOf(p.repeated);
        case kFarAway:
            return shortestText(p.farFactor) + " times the median distance";
        case kStuckReading:
            return std::to_string(p.stuckSites) + " sites or more";
        default:
            return deviations(p.apartThreshold);
    }
}

// Names that say more than those in the narrow column of a list.
constexpr std::array<const char*, kSuspectRules> kRulesInFull = {
    "readings outside limits",      "spikes along the row",
    "readings unlike those around", "jumps out and back",
    "repeated positions",           "positions at 0, 0 or far away",
    "readings that stay the same",  "readings that do not go together",
};

// Of places of which a site goes, the means that the sites take over that stay.
struct NewReadings {
    std::vector<SiteIndex> sites;
    std::vector<double> em1, em2;
};

bool goes(const std::vector<IndexRange>& runs, SiteIndex site) {
    const auto behind = std::ranges::upper_bound(runs, site, {}, &IndexRange::first);
    return behind != runs.begin() && site < std::prev(behind)->last;
}

NewReadings newReadings(const Survey& survey, const std::vector<IndexRange>& runs,
                        const SuspectParameters& parameters) {
    NewReadings readings;
    if (!parameters.uses[kRepeatedPlace] || parameters.repeated != RepeatedPlaces::kKeepMean) return readings;
    for (const MeanReadings& mean : meansOfRepeatedPlaces(survey)) {
        // The site behind the first is at the same place.
        if (goes(runs, mean.site) || !goes(runs, mean.site + 1)) continue;
        readings.sites.push_back(mean.site);
        readings.em1.push_back(mean.em1);
        readings.em2.push_back(mean.em2);
    }
    return readings;
}

Difference differenceFor(Survey& survey, const std::vector<IndexRange>& runs, NewReadings readings) {
    Difference difference(survey);
    difference.keepRowNumbers(survey);
    difference.keepSites(survey, runs);
    if (readings.sites.empty()) return difference;
    difference.keepEntries(kEM1, readings.sites, std::move(readings.em1));
    if (survey.TwoEMColumns) difference.keepEntries(kEM2, std::move(readings.sites), std::move(readings.em2));
    return difference;
}

}  // namespace

ActDescription deletionOfSuspects(const Survey& survey, const SuspectParameters& parameters, SiteIndex sites,
                                  SiteIndex spared) {
    const std::string count = std::to_string(sites) + (sites == 1 ? " suspicious site" : " suspicious sites");
    ActDescription act{ActKind::kDeleteSuspects, "delete " + count, "Deleted " + count, {}};
    for (std::size_t rule = 0; rule < kSuspectRules; ++rule)
        if (parameters.uses[rule])
            act.parameters.emplace_back(kRulesInFull[rule],
                                        parametersOf(survey, parameters, static_cast<int>(rule)));
    if (spared > 0) act.parameters.emplace_back("flagged sites that were kept", std::to_string(spared));
    return act;
}

DeletedSuspects deleteSuspects(Survey& survey, const std::vector<IndexRange>& runs,
                               const SuspectParameters& parameters) {
    const SurveyFigures before = survey;
    const bool closesUp = survey.NumRows <= kMaxRows && rowsAreUsable(survey);
    DeletedSuspects deleted{false, differenceFor(survey, runs, newReadings(survey, runs, parameters))};
    if (closesUp) Calculate_NumPoints(survey);
    deleted.difference.exchangeEntries(survey);
    try {
        removeSites(survey, runs, closesUp ? EmptiedRows::kCloseUp : EmptiedRows::kLeaveGaps);
    } catch (...) {
        deleted.difference.exchangeEntries(survey);
        static_cast<SurveyFigures&>(survey) = before;
        throw;
    }
    if (survey.NumSites == 0) {
        forgetRows(survey);
    } else if (!closesUp && !ValidateRowInfo(survey)) {
        putAllInOneRow(survey);
        deleted.rowsLost = true;
    }
    return deleted;
}

}  // namespace tessel
