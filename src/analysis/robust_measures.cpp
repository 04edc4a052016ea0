// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/robust_measures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessel {

double medianOf(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

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

double readingNoise(const Survey& survey, int column) {
    if (survey.NumSites < 2) return 0;
    const double* const readings = survey.SiteData.column(column);
    std::vector<double> differences =
        sampleOf(survey.NumSites - 1, [=](SiteIndex i) { return std::abs(readings[i + 1] - readings[i]); });
    std::erase(differences, 0.0);
    if (differences.empty()) return 0;
    return kScaledDeviation * medianOf(differences) / std::numbers::sqrt2;
}

}  // namespace tessel
