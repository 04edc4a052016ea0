// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "drawing/colour_map.h"

namespace tessel {

/// From the 2nd to the 98th percentile of the readings in a column (kEM1 or kEM2): the range over which
/// colours are spread, so that a few wild readings do not take all colours for themselves. Readings that are
/// no finite numbers do not count; 0 to 1 where there is no other.
Interval readingRange(const Survey& survey, SiteColumn column);

/// The shade of every site's reading in a column.
std::vector<Shade> readingShades(const Survey& survey, SiteColumn column, const Interval& range);

/// The title of a scale of colours.
inline const char* readingTitle(SiteColumn column) {
    return column == kEM1 ? "1st EM reading (mS/m)" : "2nd EM reading (mS/m)";
}

}  // namespace tessel
