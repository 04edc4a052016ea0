// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <span>

namespace tessel {

/// The sites of one row: `count` consecutive sites from site `first` on.
struct RowSites {
    SiteIndex first = 0;
    SiteIndex count = 0;
};

/// Where row `row` stands in the site table, from NumPoints, which must have been counted. The number behind
/// the last row is allowed and gives an empty row. Throws subscriptOutOfRange outside 1..kMaxRows.
RowSites rowSites(const Survey& survey, int row);

/// One column of these sites; valid until the site table is resized.
std::span<const double> columnOf(const Survey& survey, int column, RowSites sites);

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
