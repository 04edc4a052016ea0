// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that look at positions.
#include "analysis/robust_measures.h"
#include "analysis/suspect_rules.h"
#include "base/bounded.h"
#include "base/compensated_sum.h"
#include "base/whole_numbers.h"
#include "rows/walked_path.h"

#include <algorithm>

namespace tessel {

namespace {

// Calls act(sites) for each run of two and more neighbours of a row at one place.
template <typename Act>
void forEachRepeatedPlace(const Survey& survey, Act act) {
    const SiteTable& sites = survey.SiteData;
    const auto isOnePlace = [&](SiteIndex a, SiteIndex b) {
        return sites(kX, a) == sites(kX, b) && sites(kY, a) == sites(kY, b) &&
               sites(kRow, a) == sites(kRow, b);
    };
    forEachRun(survey.NumSites, isOnePlace, [&](const IndexRange& run) {
        if (run.count() > 1) act(run);
        return true;
    });
}

// The median of distances that are not 0. Where the logger has rested, most of them may tell how its
// positions trembled there: never less than a third of the distance within which nine of ten sites stand. In
// a field without a rest that third is the smaller one, in a round field as along a line.
double usualDistance(std::vector<double>& distances) {
    constexpr double kMost = 0.9;
    const double median = medianBesideZero(distances);
    if (distances.empty()) return 0;
    const auto most = distances.begin() + int64Within(kMost * static_cast<double>(distances.size()));
    std::nth_element(distances.begin(), most, distances.end());
    return std::max(median, *most / 3);
}

double meanOf(const Survey& survey, int column, const IndexRange& sites) {
    CompensatedSum sum;
    for (SiteIndex i = sites.first; i < sites.last; ++i)
        sum.add(survey.SiteData(column, i));
    return requireFinite(sum.meanOver(sites.count()));
}

}  // namespace

bool flagJumps(const RuleRun& run) {
    const double jump = run.parameters.jump;
    const WalkedPath path = walkedPath(run.survey, {jump, jump, 1, jump});
    for (const IndexRange& strays : path.strays)
        run.flag(strays, kJump);
    return true;
}

bool flagRepeatedPlaces(const RuleRun& run) {
    const bool keepsLast = run.parameters.repeated == RepeatedPlaces::kKeepLast;
    forEachRepeatedPlace(run.survey, [&](const IndexRange& sites) {
        run.flag(
            keepsLast ? IndexRange{sites.first, sites.last - 1} : IndexRange{sites.first + 1, sites.last},
            kRepeatedPlace);
    });
    return true;
}

bool flagFarAway(const RuleRun& run) {
    const Survey& survey = run.survey;
    if (survey.NumSites < 1) return true;
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    const double middleX = medianOfColumn(survey, kX);
    const double middleY = medianOfColumn(survey, kY);
    const auto distance = [=](SiteIndex i) { return lengthBetween(x[i], y[i], middleX, middleY); };
    const auto isAtZero = [=](SiteIndex i) { return x[i] == 0 && y[i] == 0; };
    std::vector<double> sample =
        sampleOf(survey.NumSites, [&](SiteIndex i) { return isAtZero(i) ? 0 : distance(i); });
    const double allowed = run.parameters.farFactor * usualDistance(sample);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        if (isAtZero(i) || (allowed > 0 && distance(i) > allowed)) run.flag(i, kFarAway);
    return true;
}

std::vector<MeanReadings> meansOfRepeatedPlaces(const Survey& survey) {
    std::vector<MeanReadings> means;
    forEachRepeatedPlace(survey, [&](const IndexRange& sites) {
        means.push_back(
            {sites.first, meanOf(survey, kEM1, sites),
             survey.TwoEMColumns ? meanOf(survey, kEM2, sites) : survey.SiteData(kEM2, sites.first)});
    });
    return means;
}

}  // namespace tessel
