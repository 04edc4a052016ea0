// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <cstddef>
#include <vector>

namespace tessel {

/// The row column as it was: as runs of equal numbers, or whole where that is shorter. It never takes more
/// room than the column.
class RowNumbers {
  public:
    explicit RowNumbers(const Survey& survey);

    /// Writes them into the column. Requires as many sites as there were.
    void putInto(Survey& survey) const;
    /// Whether the column is the same to the last bit.
    bool areThoseOf(const Survey& survey) const;
    std::size_t bytes() const { return runs_.capacity() * sizeof(Run) + column_.capacity() * sizeof(double); }

  private:
    struct Run {
        double number;
        SiteIndex end;  ///< behind its last site
    };
    std::vector<Run> runs_;
    std::vector<double> column_;  ///< in place of runs
};

}  // namespace tessel
