// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/reading_colours.h"

#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tessel {

namespace {

constexpr double kTail = 0.02;

std::span<const double> readings(const Survey& survey, SiteColumn column) {
    return {survey.SiteData.column(column), static_cast<std::size_t>(survey.NumSites)};
}

}  // namespace

Interval readingRange(const Survey& survey, SiteColumn column) {
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(survey.NumSites));
    std::ranges::copy_if(readings(survey, column), std::back_inserter(values),
                         [](double value) { return std::isfinite(value); });
    if (values.empty()) return {};
    const auto rank = int64Within(std::round(kTail * static_cast<double>(values.size() - 1)));
    const auto low = values.begin() + rank;
    const auto high = values.end() - 1 - rank;
    std::nth_element(values.begin(), low, values.end());
    const double lowest = *low;
    std::nth_element(low, high, values.end());
    return {lowest, *high};
}

std::vector<Shade> readingShades(const Survey& survey, SiteColumn column, const Interval& range) {
    return shadesOf(readings(survey, column), range);
}

}  // namespace tessel
