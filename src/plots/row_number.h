// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace tessel {

/// What was typed as the number of the row to plot.
struct RowNumber {
    enum Outcome { Valid, NotNumeric, Empty, OutOfRange };
    Outcome outcome = Valid;
    int row = 0;  ///< 1..numRows when valid
};

/// Reads a typed row number. Whether it is numeric comes first, so that nothing typed is NotNumeric; a
/// fraction is rounded, halves to the even neighbour.
RowNumber readRowNumber(std::string_view typed, int numRows);

/// What the user is told; empty for a valid number.
std::string_view rowNumberMessage(RowNumber::Outcome outcome);

}  // namespace tessel
