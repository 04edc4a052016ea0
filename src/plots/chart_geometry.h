// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/chart_series.h"

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace tessel {

/// The part of an axis that is shown: lower < upper, both finite; `reversed` says that values fall from left
/// to right (or from the bottom up).
struct AxisView {
    double lower = 0;
    double upper = 1;
    bool reversed = false;
    bool operator==(const AxisView&) const = default;
};

/// What is shown for limits as they were set: equal limits (or limits a Double can hardly tell apart) are
/// widened around their value, so that it stands in the middle; falling limits give a reversed axis; limits
/// that are no numbers give 0 to 1.
AxisView viewOfLimits(double minimum, double maximum);

/// `view` made `factor` times as wide around the place `fraction` of its length from its first end. The width
/// stays between a millionth and a thousand times that of `home`, and wide enough for a Double to resolve.
AxisView zoomed(const AxisView& view, const AxisView& home, double fraction, double factor);

/// `view` moved along by `fraction` of its length towards its second end, never farther from `home` than a
/// thousand times its width.
AxisView moved(const AxisView& view, const AxisView& home, double fraction);

/// A rectangle in pixels, y downwards.
struct PixelRect {
    double left = 0, top = 0, right = 0, bottom = 0;
    bool contains(double x, double y) const { return x >= left && x <= right && y >= top && y <= bottom; }
};

/// The way from data to pixels of one plot area: pixel = scale * value + shift.
struct PixelMap {
    PixelRect area;
    double xScale = 1, xShift = 0, yScale = 1, yShift = 0;

    double pixelX(double x) const { return xScale * x + xShift; }
    double pixelY(double y) const { return yScale * y + yShift; }
    double dataX(double pixel) const { return (pixel - xShift) / xScale; }
    double dataY(double pixel) const { return (pixel - yShift) / yScale; }
};

/// Requires an area of positive width and height.
PixelMap pixelMap(const PixelRect& area, const AxisView& x, const AxisView& y);

/// A point of a chart by its numbers, series from 1 and points as ChartSeries counts them, and its distance
/// in pixels; series and point are -1 when there is none.
struct NearestPoint {
    int series = -1;
    std::int64_t point = -1;
    double distance = -1;
};

/// The point nearest to a pixel position among those that lie in the plot area and not farther away than
/// `within` pixels; of equally near ones the first. Looks at few points, however many there are, and
/// allocates nothing but when it is the first to ask where the points lie.
NearestPoint nearestPoint(std::span<const ChartSeries> series, const PixelMap& map, double px, double py,
                          double within = std::numeric_limits<double>::infinity());

/// The points first..last - 1 of a series.
struct PointStretch {
    std::size_t first = 0, last = 0;
};

/// The stretches of a series' points outside of which none lies in the plot area, in their order; between two
/// of them there is at least one point.
std::vector<PointStretch> stretchesShown(const ChartPoints& points, const PixelMap& map);

struct PixelPoint {
    double x = 0, y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// Lines ready to be drawn: each from points[begin] to points[end - 1], at least two points.
struct PixelLines {
    struct Piece {
        std::size_t begin = 0, end = 0;
    };
    std::vector<PixelPoint> points;
    std::vector<Piece> pieces;
    void clear();
};

/// Appends the line through the points of `series` in their order, cut off at the plot area. Of neighbouring
/// points within one pixel column (`columnsPerPixel` columns a pixel) only the first, the lowest, the highest
/// and the last are kept, so that a million points cost no more than the columns they fall into and no spike
/// is lost. A hole ends a line and begins another.
void appendLines(const ChartSeries& series, const PixelMap& map, double columnsPerPixel, PixelLines& lines);

}  // namespace tessel
