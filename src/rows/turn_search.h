// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/row_turns.h"
#include "rows/walked_path.h"

#include <vector>

namespace tessel {

/// The sites of each row, in order, and how often the way was cut at a gap.
struct TurnSearch {
    std::vector<IndexRange> rows;
    int gaps = 0;
};

/// The rows between turns and gaps, as `findRowTurns` describes them.
TurnSearch rowsBetweenTurns(const Survey& survey, const TurnParameters& parameters);

}  // namespace tessel
