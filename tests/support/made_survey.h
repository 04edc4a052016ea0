// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <vector>

namespace tessel {

/// A site of a survey made up for a test. Rows must be numbered 1, 2, ... in order.
struct MadeSite {
    double x = 0, y = 0, em1 = 0, em2 = 0;
    int row = 1;
};

/// A survey of these sites with two readings, site IDs 1001, 1002, ..., rows counted, true distances chosen
/// and calculated.
Survey madeSurvey(const std::vector<MadeSite>& sites);

/// The sites of a survey, to be compared whole.
std::vector<MadeSite> madeSitesOf(const Survey& survey);
bool operator==(const MadeSite& a, const MadeSite& b);

/// Fails the running test where two surveys differ in anything but the storage behind the last site: sites,
/// IDs, rows, counts, distances and the measure chosen.
void expectSameSurvey(const Survey& actual, const Survey& expected);

}  // namespace tessel
