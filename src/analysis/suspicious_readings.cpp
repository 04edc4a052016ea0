// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that look at readings alone, or along a row.
#include "analysis/robust_measures.h"
#include "analysis/suspect_rules.h"
#include "base/bounded.h"
#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

// Whose values are compared with those of their neighbours along the row, and how.
struct AlongRow {
    const double* values;
    double noise;
    SiteIndex neighbours;  // on each side
    double threshold;
};

// What the neighbours along the row say of a value.
class Neighbourhood {
  public:
    Neighbourhood(const Survey& survey, const AlongRow& along)
        : sites_(survey.NumSites),
          row_(survey.SiteData.column(kRow)),
          along_(along),
          allowed_(along.threshold * along.noise) {}

    // Whether it is further from them than the threshold allows; they lie in this row.
    bool isUnlikeThem(SiteIndex i, const IndexRange& row) {
        const IndexRange window{std::max(row.first, i - along_.neighbours),
                                std::min(row.last, i + along_.neighbours + 1)};
        return mayBeUnlike(i, window) && gatherOthers(i, window) &&
               isUnlike(along_.values[i], others_, along_.threshold, along_.noise);
    }

    // How many deviations it is away from them; 0 where that is certainly not above the threshold.
    double distance(SiteIndex i) {
        const IndexRange window = windowAround(i);
        return mayBeUnlike(i, window) && gatherOthers(i, window)
                   ? deviationsFrom(along_.values[i], others_, along_.noise)
                   : 0;
    }

  private:
    // Only a value from which more than half of the neighbours are further than noise allows, all on one
    // side, can be unlike them: that is counted faster than a median is found.
    bool mayBeUnlike(SiteIndex i, const IndexRange& window) const {
        const double low = along_.values[i] - allowed_;
        const double high = along_.values[i] + allowed_;
        SiteIndex below = 0;
        SiteIndex above = 0;
        for (SiteIndex j = window.first; j < window.last; ++j) {
            below += along_.values[j] < low ? 1 : 0;
            above += along_.values[j] > high ? 1 : 0;
        }
        return 2 * std::max(below, above) + 1 >= window.count();
    }

    // Whether they are enough to say something.
    bool gatherOthers(SiteIndex i, const IndexRange& window) {
        constexpr std::size_t kFewest = 4;
        others_.assign(along_.values + window.first, along_.values + i);
        others_.insert(others_.end(), along_.values + i + 1, along_.values + window.last);
        return others_.size() >= kFewest;
    }

    IndexRange windowAround(SiteIndex i) const {
        const SiteIndex first = std::max<SiteIndex>(0, i - along_.neighbours);
        const SiteIndex last = std::min(sites_, i + along_.neighbours + 1);
        IndexRange window{i, i + 1};
        while (window.first > first && row_[window.first - 1] == row_[i])
            --window.first;
        while (window.last < last && row_[window.last] == row_[i])
            ++window.last;
        return window;
    }

    const SiteIndex sites_;
    const double* const row_;
    const AlongRow along_;
    const double allowed_;
    std::vector<double> others_;
};

// A part of what a rule has to do: `before` of `all` such parts are done.
struct WorkPart {
    double before, all;
};

// Flags the values that are unlike their neighbours along the row.
bool flagAlongRows(const RuleRun& run, const AlongRow& along, SuspectRule rule, const WorkPart& part) {
    // Of more neighbours than usual a question is due after fewer sites, as each takes longer.
    constexpr SiteIndex kUsual = 5;
    const SiteIndex between = 1 + kUsual * kSitesBetweenQuestions / std::max(kUsual, along.neighbours);
    const auto sites = static_cast<double>(run.survey.NumSites);
    const double* const row = run.survey.SiteData.column(kRow);
    Neighbourhood neighbours(run.survey, along);
    const auto flagIn = [&](const IndexRange& ofRow) {
        for (SiteIndex i = ofRow.first; i < ofRow.last; ++i) {
            if (i % between == 0 && !run.goesOn((part.before + static_cast<double>(i) / sites) / part.all))
                return false;
            if (neighbours.isUnlikeThem(i, ofRow)) run.flag(i, rule);
        }
        return true;
    };
    return forEachRun(
        run.survey.NumSites, [row](SiteIndex a, SiteIndex b) { return row[a] == row[b]; }, flagIn);
}

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
        : survey_(survey), slope_(theilSlope(survey)), values_(static_cast<std::size_t>(survey.NumSites)) {
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            values_[static_cast<std::size_t>(i)] = bounded(em2(i) - bounded(slope_ * em1(i)));
    }

    // Compared with so many neighbours that a coil may be off over several sites.
    AlongRow along(double threshold) const {
        constexpr SiteIndex kNeighbours = 10;
        return {values_.data(), std::max(noise(), typicalRounding()), kNeighbours, threshold};
    }

  private:
    double em1(SiteIndex i) const { return survey_.SiteData(kEM1, i); }
    double em2(SiteIndex i) const { return survey_.SiteData(kEM2, i); }

    // How much of a residual may come from calculating with Doubles alone.
    double rounding(SiteIndex i) const {
        return bounded(1e-9 * (std::abs(em2(i)) + std::abs(bounded(slope_ * em1(i)))));
    }
    double typicalRounding() const {
        std::vector<double> sample = sampleOf(survey_.NumSites, [this](SiteIndex i) { return rounding(i); });
        return medianOf(sample);
    }

    // Readings of few digits lie on the line exactly, most of them: then their spread is 0, their noise not.
    // It is at most that of both readings, less where they change together.
    double noise() const {
        const double* const values = values_.data();
        std::vector<double> differences = sampleOf(survey_.NumSites - 1, [=, this](SiteIndex i) {
            const double difference = bounded(std::abs(values[i + 1] - values[i]));
            return difference > rounding(i) + rounding(i + 1) ? difference : 0;
        });
        const double ofBoth =
            std::hypot(readingNoise(survey_, kEM2), bounded(slope_ * readingNoise(survey_, kEM1)));
        return std::min(noiseIn(differences), ofBoth);
    }

    const Survey& survey_;
    const double slope_;
    std::vector<double> values_;
};

bool canGoApart(const Survey& survey) {
    return survey.TwoEMColumns && survey.NumSites >= 4;
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
    const std::vector<int> readings = run.readings();
    const auto all = static_cast<double>(readings.size());
    return std::ranges::all_of(readings, [&](int column) {
        const AlongRow along{run.survey.SiteData.column(column), readingNoise(run.survey, column),
                             run.parameters.spikeNeighbours, run.parameters.spikeThreshold};
        return flagAlongRows(run, along, kSpike, {static_cast<double>(column - kEM1), all});
    });
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
    if (!canGoApart(run.survey)) return true;
    const Residuals residuals(run.survey);
    return flagAlongRows(run, residuals.along(run.parameters.apartThreshold), kReadingsApart, {0, 1});
}

double proposedApartThreshold(const Survey& survey) {
    constexpr double kUsual = 4, kMost = 1000;
    constexpr double kWithin = 0.98;  // of the sites
    if (!canGoApart(survey)) return kUsual;
    const Residuals residuals(survey);
    Neighbourhood neighbours(survey, residuals.along(kUsual));
    std::vector<double> distances =
        sampleOf(survey.NumSites, [&](SiteIndex i) { return neighbours.distance(i); });
    const auto within = distances.begin() + int64Within(kWithin * static_cast<double>(distances.size()));
    std::nth_element(distances.begin(), within, distances.end());
    return std::clamp(std::ceil(*within), kUsual, kMost);
}

}  // namespace tessel
