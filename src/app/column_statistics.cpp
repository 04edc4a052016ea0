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

void include(ColumnMinMax& range, double value) {
    range.minimum = value < range.minimum ? value : range.minimum;
    range.maximum = value > range.maximum ? value : range.maximum;
    range.notPositive += value <= 0 ? 1 : 0;
}

ColumnMinMax joined(const ColumnMinMax& range, const ColumnMinMax& other) {
    return {other.minimum < range.minimum ? other.minimum : range.minimum,
            other.maximum > range.maximum ? other.maximum : range.maximum,
            range.notPositive + other.notPositive};
}

// Zeros of both signs are equal: the one that stands first in the column is meant.
ColumnMinMax withFirstZeros(ColumnMinMax range, std::span<const double> column) {
    if (range.minimum != 0 && range.maximum != 0) return range;
    const double zero = *std::find(column.begin(), column.end(), 0.0);
    if (range.minimum == 0) range.minimum = zero;
    if (range.maximum == 0) range.maximum = zero;
    return range;
}

}  // namespace

ColumnMinMax minMaxOf(std::span<const double> column) {
    if (column.empty()) throw RunTimeError::subscriptOutOfRange();
    const double* const values = column.data();
    constexpr std::size_t kLanes = 4;  // so that the comparisons overlap
    ColumnMinMax lanes[kLanes];
    std::fill_n(lanes, kLanes, ColumnMinMax{values[0], values[0], 0});
    std::size_t i = 0;
    for (; i + kLanes <= column.size(); i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            include(lanes[lane], values[i + lane]);
    for (; i < column.size(); ++i)
        include(lanes[0], values[i]);
    for (std::size_t lane = 1; lane < kLanes; ++lane)
        lanes[0] = joined(lanes[0], lanes[lane]);
    return withFirstZeros(lanes[0], column);
}

ColumnMinMax Column_MinMax(const Survey& survey, int column) {
    return minMaxOf({survey.SiteData.column(clampColumn(column)), static_cast<std::size_t>(survey.NumSites)});
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
