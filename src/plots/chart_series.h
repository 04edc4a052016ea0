// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "drawing/colour_map.h"
#include "plots/chart_points.h"

#include <string>
#include <vector>

namespace tessel {

/// The shapes a series' points can have. A ring is larger than the others, so that it stands around a symbol
/// that lies beneath it.
enum class ChartSymbol { kNone, kDisc, kSquare, kDiamond, kRing };

/// How the points of a series are joined.
enum class ChartLine { kNone, kThin };

/// How a series is drawn. The colour, a number of the 16-colour palette, holds for symbols and line.
struct SeriesStyle {
    ChartSymbol symbol = ChartSymbol::kDisc;
    ChartLine line = ChartLine::kNone;
    int colour = 1;
};

/// The points of a series in data coordinates, and how they are shown.
struct ChartSeries {
    ChartPoints points;
    SeriesStyle style;
    /// One for each point, in whose colours the symbols are drawn; none: they have the colour of the style.
    std::vector<Shade> shades;
    std::string name;  ///< UTF-8; named series are explained beside the header
};

}  // namespace tessel
