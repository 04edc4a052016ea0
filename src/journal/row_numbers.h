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
    RowNumbers() = default;
    explicit RowNumbers(const Survey& survey);

    /// Writes them into the column. Requires as many sites as there were.
    void putInto(Survey& survey) const;
    /// Whether the column is the same to the last bit.
    bool areThoseOf(const Survey& survey) const;
    std::size_t bytes() const { return runs_.capacity() * sizeof(Run) + column_.capacity() * sizeof(double); }

    struct Run {
        double number = 0;
        SiteIndex end = 0;  ///< behind its last site
    };
    /// Hands all that it holds to visit(), for whoever keeps it in a file.
    template <typename Self, typename Visit>
    static void forEachField(Self& self, Visit&& visit) {
        visit(self.runs_, self.column_);
    }

  private:
    std::vector<Run> runs_;
    std::vector<double> column_;  ///< in place of runs
};

}  // namespace tessel
