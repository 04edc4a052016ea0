// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <vector>

namespace tessel {

/// One row (transect) of the survey.
struct RowSummary {
    SiteIndex sites = 0;
    double length = 0;   ///< straight-line distance from its first to its last site (survey units)
    double em1Mean = 0;  ///< mS/m
    double em2Mean = 0;  ///< mS/m; 0 without a second reading
};

/// The rows as they stood when the statistics were taken.
struct RowStatistics {
    std::vector<RowSummary> rows;
    bool twoEMColumns = false;
    double longest = 0;  ///< the largest row length

    /// A row's length as a percentage of the longest; 0 when all have length 0.
    double relativeLength(const RowSummary& row) const;
};

/// Rows are runs of sites with equal row numbers, counted in file order whatever numbers they carry. One pass
/// over the survey; any number of runs; none without a site. A length that is too large for a Double is the
/// largest Double.
RowStatistics rowStatistics(const Survey& survey);

}  // namespace tessel
