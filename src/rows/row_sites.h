// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <span>

namespace tessel {

/// The sites of one row: where row `row` stands in the site table, from NumPoints, which must have been
/// counted. The number behind the last row is allowed and gives an empty row. Throws subscriptOutOfRange
/// outside 1..kMaxRows.
IndexRange rowSites(const Survey& survey, int row);

/// One column of these sites; valid until the site table is resized.
std::span<const double> columnOf(const Survey& survey, int column, IndexRange sites);

/// The point (1..along.size()) beside `point` to the right (step 1) or to the left (step -1) for who walks
/// along a row, in the order of its sites: to the right is the way to larger coordinates on the whole. Stays
/// at the ends; from 0, which is no point, it comes to the end where the walk begins. 0 when the row is
/// empty.
SiteIndex pointBeside(SiteIndex point, int step, std::span<const double> along);

/// The column that runs along the row's plots: X when the rows are plotted by X, else Y.
inline int alongColumn(bool plotByX) {
    return plotByX ? kX : kY;
}
/// The other coordinate.
inline int acrossColumn(bool plotByX) {
    return plotByX ? kY : kX;
}

}  // namespace tessel
