// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <vector>

namespace tessel {

/// How many rows each minimum distance would give by one measure, known without finding them: of all gaps
/// between sites only the largest kMaxRows count.
class RowForecast {
  public:
    /// Of a survey without sites: no rows, whatever the distance.
    RowForecast() = default;
    /// Measures every gap of the survey once: 1 true distance, 2 along X, 3 along Y.
    RowForecast(const Survey& survey, int distanceMode);

    /// The rows that finding them with this distance (metres, not negative) would give, or kMaxRows + 1 where
    /// there would be too many. A search among kMaxRows gaps, however large the survey is.
    int rows(double minDistance) const;

    /// The sites of each of these rows, in order; none where there would be too many. Costs as little.
    std::vector<IndexRange> rowSites(double minDistance) const;

  private:
    struct Gap {
        SiteIndex behind = 0;  ///< the site that would begin a row
        double length = 0;
    };
    SiteIndex sites_ = 0;
    std::vector<double> largest_;  ///< the largest gaps, falling
    std::vector<Gap> gaps_;        ///< those that can divide rows, in the order of the sites
};

}  // namespace tessel
