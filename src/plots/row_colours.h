// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

inline constexpr int kColoursInTurn = 15;  // colour 15 is never used

/// The colour of a row among others, a number of the 16-colour palette.
inline int rowColour(int row) {
    return row % kColoursInTurn;
}

}  // namespace tessel
