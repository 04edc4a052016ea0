// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that look at readings alone, or along a row.
#include "analysis/robust_measures.h"
#include "analysis/suspect_rules.h"

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

// Where a site is not asked for, the next one is not either.
bool isTimeToAsk(SiteIndex site) {
    return site % kSitesBetweenQuestions == 0;
}
double partOf(const RuleRun& run, SiteIndex site) {
    return static_cast<double>(site) / static_cast<double>(run.survey.NumSites);
}

// Calls act(run of sites) for each run of neighbours that are alike; false where it gives false.
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

// Looks for spikes of one reading along rows.
class SpikeFinder {
  public:
    SpikeFinder(const RuleRun& run, int column)
        : run_(run),
          values_(run.survey.SiteData.column(column)),
          noise_(readingNoise(run.survey, column)),
          allowed_(run.parameters.spikeThreshold * noise_) {}

    bool flagIn(const IndexRange& row) {
        for (SiteIndex i = row.first; i < row.last; ++i) {
            if (isTimeToAsk(i) && !run_.goesOn(partOf(run_, i))) return false;
            const SiteIndex k = run_.parameters.spikeNeighbours;
            const IndexRange window{std::max(row.first, i - k), std::min(row.last, i + k + 1)};
            if (mayBeSpike(i, window) && isSpike(i, window)) run_.flag(i, kSpike);
        }
        return true;
    }

  private:
    // Only a value from which more than half of the neighbours are further than noise allows, all on one
    // side, can be one: that is counted faster than a median is found.
    bool mayBeSpike(SiteIndex i, const IndexRange& window) const {
        const double low = values_[i] - allowed_;
        const double high = values_[i] + allowed_;
        SiteIndex below = 0;
        SiteIndex above = 0;
        for (SiteIndex j = window.first; j < window.last; ++j) {
            below += values_[j] < low ? 1 : 0;
            above += values_[j] > high ? 1 : 0;
        }
        return 2 * std::max(below, above) + 1 >= window.count();
    }

    bool isSpike(SiteIndex i, const IndexRange& window) {
        constexpr std::size_t kFewest = 4;
        others_.assign(values_ + window.first, values_ + i);
        others_.insert(others_.end(), values_ + i + 1, values_ + window.last);
        return others_.size() >= kFewest &&
               isUnlike(values_[i], others_, run_.parameters.spikeThreshold, noise_);
    }

    const RuleRun& run_;
    const double* values_;
    double noise_;
    double allowed_;
    std::vector<double> others_;
};

// The line EM2 = intercept + slope EM1 on which most sites lie: the median of the slopes between sites half
// the survey apart (H. Theil, "A rank-invariant method of linear and polynomial regression analysis",
// Proceedings of the Royal Netherlands Academy of Sciences 53, 1950; P. K. Sen, Journal of the American
// Statistical Association 63, 1968). Wild readings do not turn it.
double theilSlope(const Survey& survey) {
    const double* const em1 = survey.SiteData.column(kEM1);
    const double* const em2 = survey.SiteData.column(kEM2);
    const SiteIndex half = survey.NumSites / 2;
    std::vector<double> slopes =
        sampleOf(half, [=](SiteIndex i) { return (em2[i + half] - em2[i]) / (em1[i + half] - em1[i]); });
    std::erase_if(slopes, [](double slope) { return !std::isfinite(slope); });
    return slopes.empty() ? 0 : medianOf(slopes);
}

}  // namespace

bool flagOutsideLimits(const RuleRun& run) {
    for (const int column : run.readings()) {
        const double* const values = run.survey.SiteData.column(column);
        const auto reading = static_cast<std::size_t>(column - kEM1);
        const double low = run.parameters.lowest[reading];
        const double high = run.parameters.highest[reading];
        for (SiteIndex i = 0; i < run.survey.NumSites; ++i)
            if (values[i] < low || values[i] > high) run.flag(i, kOutsideLimits);
    }
    return true;
}

bool flagSpikes(const RuleRun& run) {
    const double* const row = run.survey.SiteData.column(kRow);
    const auto alike = [row](SiteIndex a, SiteIndex b) { return row[a] == row[b]; };
    for (const int column : run.readings()) {
        SpikeFinder finder(run, column);
        if (!forEachRun(run.survey.NumSites, alike,
                        [&](const IndexRange& sites) { return finder.flagIn(sites); }))
            return false;
    }
    return true;
}

bool flagStuckReadings(const RuleRun& run) {
    const double* const row = run.survey.SiteData.column(kRow);
    for (const int column : run.readings()) {
        const double* const values = run.survey.SiteData.column(column);
        const auto alike = [=](SiteIndex a, SiteIndex b) {
            return values[a] == values[b] && row[a] == row[b];
        };
        forEachRun(run.survey.NumSites, alike, [&](const IndexRange& sites) {
            if (sites.count() >= run.parameters.stuckSites) run.flag(sites, kStuckReading);
            return true;
        });
    }
    return true;
}

bool flagReadingsApart(const RuleRun& run) {
    const Survey& survey = run.survey;
    if (!survey.TwoEMColumns || survey.NumSites < 4) return true;
    const double* const em1 = survey.SiteData.column(kEM1);
    const double* const em2 = survey.SiteData.column(kEM2);
    const double slope = theilSlope(survey);
    const auto residual = [=](SiteIndex i) { return em2[i] - slope * em1[i]; };
    std::vector<double> sample = sampleOf(survey.NumSites, residual);
    const Spread spread = spreadOf(sample);
    const double allowed = run.parameters.apartThreshold * spread.deviation;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        if (std::abs(residual(i) - spread.median) > allowed) run.flag(i, kReadingsApart);
    return true;
}

}  // namespace tessel
