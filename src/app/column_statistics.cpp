// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/column_statistics.h"

#include "base/compensated_sum.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

int clampColumn(int column) {
    return std::clamp<int>(column, kX, kEM2);
}

// Sums f(i) over all sites in four independent running sums, each compensated (A. Neumaier, 1974), so that a
// million readings keep the digits of a few; four, so that the additions overlap.
template <typename Term>
CompensatedSum sumOverSites(SiteIndex sites, Term term) {
    constexpr int kLanes = 4;
    CompensatedSum lanes[kLanes];
    SiteIndex i = 0;
    for (; i + kLanes <= sites; i += kLanes)
        for (int lane = 0; lane < kLanes; ++lane)
            lanes[lane].add(term(i + lane));
    for (; i < sites; ++i)
        lanes[0].add(term(i));
    for (int lane = 1; lane < kLanes; ++lane) {
        lanes[0].add(lanes[lane].value);
        lanes[0].lost += lanes[lane].lost;
    }
    return lanes[0];
}

// The Double nearest to the mean, so that a constant column has exactly its constant as mean.
double meanOf(const double* values, SiteIndex count) {
    if (count < 1) throw RunTimeError::divisionByZero();
    return requireFinite(sumOverSites(count, [=](SiteIndex i) { return values[i]; }).meanOver(count));
}

}  // namespace

ColumnMinMax Column_MinMax(const Survey& survey, int column) {
    if (survey.NumSites < 1) throw RunTimeError::subscriptOutOfRange();
    const double* const values = survey.SiteData.column(clampColumn(column));
    ColumnMinMax result{values[0], values[0], 0};
    double minimum = values[0];
    double maximum = values[0];
    SiteIndex notPositive = 0;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        minimum = values[i] < minimum ? values[i] : minimum;
        maximum = values[i] > maximum ? values[i] : maximum;
        notPositive += values[i] <= 0 ? 1 : 0;
    }
    result.minimum = minimum;
    result.maximum = maximum;
    result.notPositive = notPositive;
    return result;
}

double Column_Mean(const Survey& survey, int column) {
    return meanOf(survey.SiteData.column(clampColumn(column)), survey.NumSites);
}

ColumnMeanSD Column_MeanSD(const Survey& survey, int column) {
    if (survey.NumSites < 2) throw RunTimeError::divisionByZero();
    const double* const values = survey.SiteData.column(clampColumn(column));
    const double mean = meanOf(values, survey.NumSites);
    const double squares = sumOverSites(survey.NumSites, [=](SiteIndex i) {
                               const double deviation = values[i] - mean;
                               return deviation * deviation;
                           }).rounded();
    return {mean, std::sqrt(squares / static_cast<double>(survey.NumSites - 1))};
}

Regression EM_Regression(const Survey& survey) {
    constexpr double kScale = 100.0;  // readings are divided by it to keep the sums small
    const SiteIndex sites = survey.NumSites;
    const double* const em1 = survey.SiteData.column(kEM1);
    const double* const em2 = survey.SiteData.column(kEM2);
    const double meanX = meanOf(em1, sites);
    const double meanY = meanOf(em2, sites);
    const double sxx = sumOverSites(sites, [=](SiteIndex i) {
                           const double dx = (em1[i] - meanX) / kScale;
                           return dx * dx;
                       }).rounded();
    if (sxx == 0) throw RunTimeError::divisionByZero();
    const double sxy = sumOverSites(sites, [=](SiteIndex i) {
                           return (em1[i] - meanX) / kScale * ((em2[i] - meanY) / kScale);
                       }).rounded();
    const double slope = requireFinite(sxy / sxx);
    return {requireFinite(meanY - slope * meanX), slope};
}

}  // namespace tessel
