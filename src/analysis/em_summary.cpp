// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/em_summary.h"

#include "app/column_statistics.h"

namespace tessel {

namespace {

// What `compute` gives, or nothing when it fails; the first failure is kept.
template <typename Compute>
auto ifItExists(std::optional<RunTimeError>& firstError, Compute compute)
    -> std::optional<decltype(compute())> {
    try {
        return compute();
    } catch (const RunTimeError& error) {
        if (!firstError) firstError.emplace(error);
        return std::nullopt;
    }
}

ReadingSummary summariseColumn(const Survey& survey, SiteColumn column, std::optional<RunTimeError>& error) {
    ReadingSummary summary;
    summary.sites = survey.NumSites;
    if (const auto both = ifItExists(error, [&] { return Column_MeanSD(survey, column); })) {
        summary.mean = both->mean;
        summary.sd = both->sd;
    } else {
        // The mean exists on a survey of one site, and where only the squares overflow.
        summary.mean = ifItExists(error, [&] { return Column_Mean(survey, column); });
    }
    if (const auto range = ifItExists(error, [&] { return Column_MinMax(survey, column); })) {
        summary.minimum = range->minimum;
        summary.maximum = range->maximum;
        summary.notPositive = range->notPositive;
    }
    return summary;
}

}  // namespace

EMSummary summariseReadings(const Survey& survey) {
    EMSummary summary;
    summary.em1 = summariseColumn(survey, kEM1, summary.error);
    if (!survey.TwoEMColumns) return summary;
    summary.em2 = summariseColumn(survey, kEM2, summary.error);
    if (const auto line = ifItExists(summary.error, [&] { return EM_Regression(survey); })) {
        summary.slope = line->slope;
        summary.shift = -line->intercept;
    }
    return summary;
}

}  // namespace tessel
