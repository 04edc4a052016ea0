// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

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

  private:
    bool hasSites_ = false;
    std::vector<double> largest_;  ///< the largest gaps, falling
};

}  // namespace tessel
