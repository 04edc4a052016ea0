// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/robust_measures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessel {

Spread spreadOf(std::vector<double>& values) {
    const double median = medianOf(values);
    for (double& value : values)
        value = std::abs(value - median);
    return {median, kScaledDeviation * medianOf(values)};
}

bool isUnlike(double value, std::vector<double>& others, double threshold, double noise) {
    const Spread spread = spreadOf(others);
    return std::abs(value - spread.median) > threshold * std::max(spread.deviation, noise);
}

double deviationsFrom(double value, std::vector<double>& others, double noise) {
    const Spread spread = spreadOf(others);
    const double away = std::abs(value - spread.median);
    return away > 0 ? away / std::max(spread.deviation, noise) : 0;
}

double medianOfColumn(const Survey& survey, int column) {
    const double* const values = survey.SiteData.column(column);
    std::vector<double> sample = sampleOf(survey.NumSites, [=](SiteIndex i) { return values[i]; });
    return medianOf(sample);
}

double noiseIn(std::vector<double>& differences) {
    return kScaledDeviation * medianBesideZero(differences) / std::numbers::sqrt2;
}

double readingNoise(const Survey& survey, int column) {
    const double* const readings = survey.SiteData.column(column);
    std::vector<double> differences =
        sampleOf(survey.NumSites - 1, [=](SiteIndex i) { return std::abs(readings[i + 1] - readings[i]); });
    return noiseIn(differences);
}

}  // namespace tessel
