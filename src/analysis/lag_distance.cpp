// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/lag_distance.h"

#include <algorithm>
#include <numeric>

namespace tessel {

namespace {

struct Measured {
    const std::vector<double>& distances;
    double largest;
    std::string_view header;
};

Measured measured(const Survey& survey, LagMeasure measure) {
    if (measure == LagMeasure::kAlongX) return {survey.XDist, survey.MaxXDist, "Sample Distance Plot (By X)"};
    if (measure == LagMeasure::kAlongY) return {survey.YDist, survey.MaxYDist, "Sample Distance Plot (By Y)"};
    return {survey.TrueDist, survey.MaxTrueDist, "Sample Distance Plot (True Distance)"};
}

}  // namespace

LagDistances lagDistances(const Survey& survey, LagMeasure measure) {
    const Measured result = measured(survey, measure);
    const auto sites = static_cast<std::size_t>(survey.NumSites);
    return {result.header, std::span(result.distances).first(sites),
            std::max(result.largest, survey.MinDistance)};
}

int distanceModeOf(LagMeasure measure) {
    if (measure == LagMeasure::kTrueDistance) return 1;
    return measure == LagMeasure::kAlongX ? 2 : 3;
}

std::vector<double> sequenceNumbers(SiteIndex first, SiteIndex count) {
    std::vector<double> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), static_cast<double>(first));
    return numbers;
}

}  // namespace tessel
