#pragma once

#include <cmath>
#include <string>
#include <vector>

/// The value of a point that is not there: it is neither drawn nor picked and interrupts a line.
inline constexpr double kHole = 1e308;

/// True for the hole value and for anything that is no finite coordinate.
inline bool isHole(double x, double y) {
    return !(std::fabs(x) < kHole && std::fabs(y) < kHole);
}

/// The shapes a series' points can have. A ring is larger than the others, so that it stands around a symbol
/// that lies beneath it.
enum class ChartSymbol { None, Disc, Square, Diamond, Ring };

/// How the points of a series are joined.
enum class ChartLine { None, Thin };

/// How a series is drawn. The colour, a number of the 16-colour palette, holds for symbols and line.
struct SeriesStyle {
    ChartSymbol symbol = ChartSymbol::Disc;
    ChartLine line = ChartLine::None;
    int colour = 1;
};

/// The points of one series, x and y of equal length. Entry 0 is point 0, which belongs to no site and stays
/// a hole unless somebody sets it; the points proper are 1..size-1.
struct ChartSeries {
    std::vector<double> x{kHole};
    std::vector<double> y{kHole};
    /// x never falls from point 1 on and point 0 is a hole: whoever fills the series says so, and the nearest
    /// point is then looked for near the pointer only.
    bool ascends = false;
    SeriesStyle style;
    std::string name;  ///< UTF-8; named series are explained beside the header
};
