// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"
#include "plots/chart_series.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <vector>

namespace tessel {

/// A point of a chart by its numbers, series from 1 and points as ChartSeries counts them, and its distance
/// in pixels; series and point are -1 when there is none.
struct NearestPoint {
    int series = -1;
    std::int64_t point = -1;
    double distance = -1;
    std::int64_t lookedAt = 0;  ///< points that were measured for it
};

/// The point nearest to a pixel position among those that lie in the plot area and not farther away than
/// `within` pixels; of equally near ones the first. Looks at few points, however many there are, and
/// allocates nothing but when it is the first to ask where the points lie. Points that `isMeant` refuses are
/// passed over.
NearestPoint nearestPoint(std::span<const ChartSeries> series, const PixelMap& map, double px, double py,
                          double within = std::numeric_limits<double>::infinity(),
                          const std::function<bool(std::size_t point)>& isMeant = {});

/// The points (from 1) that are shown within a box of pixels, its edges included, in their order. Looks at
/// those of the blocks that reach into it.
std::vector<std::int64_t> pointsIn(const ChartPoints& points, const PixelMap& map, const Rectangle& box);

/// The stretches of a series' points outside of which none lies in the plot area, in their order; between two
/// of them there is at least one point.
std::vector<IndexRange> stretchesShown(const ChartPoints& points, const PixelMap& map);

/// A place in pixels of the widget, from its upper left corner.
struct PixelPoint {
    double x = 0, y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// Lines ready to be drawn: the pieces tell which of the points, at least two, each goes through.
struct PixelLines {
    std::vector<PixelPoint> points;
    std::vector<IndexRange> pieces;
    void clear();
};

/// Appends the line through the points of `series` in their order, cut off at the plot area. Of neighbouring
/// points within one pixel column (`columnsPerPixel` columns a pixel) only the first, the lowest, the highest
/// and the last are kept, so that a million points cost no more than the columns they fall into and no spike
/// is lost. A hole ends a line and begins another.
void appendLines(const ChartSeries& series, const PixelMap& map, double columnsPerPixel, PixelLines& lines);

}  // namespace tessel
