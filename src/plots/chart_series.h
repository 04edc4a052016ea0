// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/chart_points.h"

#include <string>

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
    std::string name;  ///< UTF-8; named series are explained beside the header
};

}  // namespace tessel
