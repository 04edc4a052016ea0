// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/suspicious_sites.h"

#include "analysis/robust_measures.h"
#include "analysis/suspect_rules.h"
#include "base/bounded.h"
#include "base/whole_numbers.h"
#include "rows/walked_path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessel {

namespace {

using Rule = bool (*)(const RuleRun&);
constexpr std::array<Rule, kSuspectRules> kRules = {flagOutsideLimits, flagSpikes,         flagUnlikeAround,
                                                    flagJumps,         flagRepeatedPlaces, flagFarAway,
                                                    flagStuckReadings, flagReadingsApart};

// From a tenth of the sites to nine tenths in one direction, as long as all would be without wild ones.
double extentOf(const Survey& survey, int column) {
    const double* const values = survey.SiteData.column(column);
    std::vector<double> sample = sampleOf(survey.NumSites, [=](SiteIndex i) { return values[i]; });
    const auto at = [&](double part) {
        const auto i = int64Within(static_cast<double>(sample.size() - 1) * part);
        std::nth_element(sample.begin(), sample.begin() + i, sample.end());
        return sample[static_cast<std::size_t>(i)];
    };
    return bounded((at(0.9) - at(0.1)) / 0.8);
}

void countFlags(Suspects& suspects) {
    std::array<SiteIndex, 256> sites{};
    for (const std::uint8_t flags : suspects.flags)
        ++sites[flags];
    suspects.sites = static_cast<SiteIndex>(suspects.flags.size()) - sites[0];
    for (std::size_t flags = 0; flags < sites.size(); ++flags)
        for (std::size_t rule = 0; rule < kSuspectRules; ++rule)
            if ((flags >> rule & 1) != 0) suspects.counts[rule] += sites[flags];
}

}  // namespace

SuspectParameters proposedSuspectParameters(const Survey& survey) {
    constexpr double kSitesAround = 60;
    SuspectParameters proposed;
    if (survey.NumSites < 2) return proposed;
    const double step = medianStep(survey);
    if (step > 0) proposed.jump = bounded(10 * step);
    const double area = bounded(extentOf(survey, kX) * extentOf(survey, kY));
    const double radius =
        std::sqrt(area) * std::sqrt(kSitesAround / std::numbers::pi / static_cast<double>(survey.NumSites));
    // Of a single row there is no area.
    proposed.radius = std::max(radius, proposed.jump / 2);
    proposed.apartThreshold = proposedApartThreshold(survey);
    return proposed;
}

Suspects findSuspects(const Survey& survey, const SuspectParameters& parameters,
                      const SearchProgress& progress) {
    Suspects suspects;
    suspects.flags.assign(static_cast<std::size_t>(survey.NumSites), 0);
    const auto used = static_cast<double>(std::count(parameters.uses.begin(), parameters.uses.end(), true));
    double done = 0;
    const SearchProgress goesOn = [&](double part) { return !progress || progress((done + part) / used); };
    const RuleRun run{survey, parameters, suspects.flags, goesOn};
    for (std::size_t rule = 0; rule < kRules.size(); ++rule) {
        if (!parameters.uses[rule]) continue;
        suspects.cancelled = !goesOn(0) || !kRules[rule](run);
        if (suspects.cancelled) return suspects;
        ++done;
    }
    countFlags(suspects);
    return suspects;
}

}  // namespace tessel
