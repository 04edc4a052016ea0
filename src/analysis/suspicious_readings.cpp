// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that look at readings alone, or along a row.
#include "analysis/robust_measures.h"
#include "analysis/suspect_rules.h"
#include "base/bounded.h"

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

// Looks for spikes of one reading along rows.
class SpikeFinder {
  public:
    SpikeFinder(const RuleRun& run, int column)
        : run_(run),
          column_(column),
          values_(run.survey.SiteData.column(column)),
          noise_(readingNoise(run.survey, column)),
          allowed_(run.parameters.spikeThreshold * noise_),
          between_(1 + kUsual * kSitesBetweenQuestions / std::max(kUsual, neighbours())) {}

    bool flagIn(const IndexRange& row) {
        for (SiteIndex i = row.first; i < row.last; ++i) {
            if (i % between_ == 0 && !run_.goesOn(partDone(i))) return false;
            const IndexRange window{std::max(row.first, i - neighbours()),
                                    std::min(row.last, i + neighbours() + 1)};
            if (mayBeSpike(i, window) && isSpike(i, window)) run_.flag(i, kSpike);
        }
        return true;
    }

  private:
    // Of more neighbours than that a question is due after fewer sites, as each takes longer.
    static constexpr SiteIndex kUsual = 5;

    SiteIndex neighbours() const { return run_.parameters.spikeNeighbours; }

    // One reading after the other.
    double partDone(SiteIndex site) const {
        const double part = static_cast<double>(site) / static_cast<double>(run_.survey.NumSites);
        return (column_ - kEM1 + part) / static_cast<double>(run_.readings().size());
    }

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
    int column_;
    const double* values_;
    double noise_;
    double allowed_;
    SiteIndex between_;  // sites between two questions
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

// What the line leaves of the second reading.
class Residuals {
  public:
    explicit Residuals(const Survey& survey)
        : sites_(survey.NumSites),
          em1_(survey.SiteData.column(kEM1)),
          em2_(survey.SiteData.column(kEM2)),
          slope_(theilSlope(survey)),
          mostNoise_(std::hypot(readingNoise(survey, kEM2), bounded(slope_ * readingNoise(survey, kEM1)))) {}

    double of(SiteIndex i) const { return bounded(em2_[i] - bounded(slope_ * em1_[i])); }
    // How much of it may come from calculating with Doubles alone.
    double rounding(SiteIndex i) const { return 1e-9 * (std::abs(em2_[i]) + std::abs(slope_ * em1_[i])); }

    Spread spread() const {
        std::vector<double> sample = sampleOf(sites_, [this](SiteIndex i) { return of(i); });
        return spreadOf(sample);
    }
    // Readings of few digits lie on the line exactly, most of them: then their spread is 0, their noise not.
    // It is at most that of both readings, less where they change together.
    double noise() const {
        std::vector<double> differences = sampleOf(sites_ - 1, [this](SiteIndex i) {
            const double difference = bounded(std::abs(of(i + 1) - of(i)));
            return difference > rounding(i) + rounding(i + 1) ? difference : 0;
        });
        return std::min(noiseIn(differences), mostNoise_);
    }

  private:
    SiteIndex sites_;
    const double* em1_;
    const double* em2_;
    double slope_;
    double mostNoise_;
};

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
    const Residuals residuals(survey);
    const Spread spread = residuals.spread();
    const double allowed = run.parameters.apartThreshold * std::max(spread.deviation, residuals.noise());
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        if (std::abs(residuals.of(i) - spread.median) > std::max(allowed, residuals.rounding(i)))
            run.flag(i, kReadingsApart);
    return true;
}

}  // namespace tessel
