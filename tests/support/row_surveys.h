// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <random>
#include <vector>

namespace tessel {

/// A site of a survey made up for the rows' tests.
struct RowSite {
    double x = 0, y = 0, em1 = 0, em2 = 0, row = 1;
    double id = 0;
};

/// A survey of these sites, with room for a few more, two readings and site IDs. NumRows, RowIndex and
/// NumPoints are those of the row column, which must be in order.
Survey surveyWithRows(const std::vector<RowSite>& sites);

/// Sites along X, the next one `gaps[i]` further on than site i; row column 0, true distance chosen.
Survey surveyAlongX(const std::vector<double>& gaps, double minDistance);

/// The sites of a survey, to be changed literally and compared.
std::vector<RowSite> sitesIn(const Survey& survey);
bool operator==(const RowSite& a, const RowSite& b);

/// Rows of one to `largestRow` sites, coordinates and readings at random, some sites at one place, the rows
/// of the row column contiguous.
Survey randomRows(std::mt19937& random, int rows, int largestRow);

}  // namespace tessel
