// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_geometry.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tessel {

namespace {

constexpr double kLargest = 1e240;
constexpr double kFarthestPixel = 1e9;
constexpr double kNowhere = std::numeric_limits<double>::infinity();

/// The smallest width that ticks and pixels around `value` can still resolve.
double resolvableWidth(double value) {
    return std::max(1e-200, std::fabs(value) * 1e-10);
}

AxisView around(double centre, double width, bool reversed) {
    return {centre - width / 2, centre + width / 2, reversed};
}

double clampedPixel(double pixel) {
    return std::clamp(pixel, -kFarthestPixel, kFarthestPixel);
}

/// Cuts the line from a to b off at the rectangle; false when nothing of it lies inside.
bool clipLine(const PixelRect& area, PixelPoint& a, PixelPoint& b) {
    double from = 0;
    double to = 1;
    const auto cut = [&](double direction, double distance) {
        if (direction == 0) return distance >= 0;
        const double t = distance / direction;
        if (direction < 0) from = std::max(from, t);
        if (direction > 0) to = std::min(to, t);
        return from <= to;
    };
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    if (!cut(-dx, a.x - area.left) || !cut(dx, area.right - a.x)) return false;
    if (!cut(-dy, a.y - area.top) || !cut(dy, area.bottom - a.y)) return false;
    const PixelPoint start = a;
    if (to < 1) b = {start.x + to * dx, start.y + to * dy};
    if (from > 0) a = {start.x + from * dx, start.y + from * dy};
    return true;
}

/// Places and boxes in pixels, seen from one place.
class Distances {
  public:
    Distances(const PixelMap& map, double px, double py) : map_(map), px_(px), py_(py) {
        // A point on the very edge of the plot area is shown and can be picked, whatever rounding did to it.
        constexpr double kSlack = 1e-3;
        shown_ = {map.area.left - kSlack, map.area.top - kSlack, map.area.right + kSlack,
                  map.area.bottom + kSlack};
    }

    /// Squared; infinite for a point that cannot be picked.
    double squared(double x, double y) const {
        const double pointX = map_.pixelX(x);
        const double pointY = map_.pixelY(y);
        if (!shown_.contains(pointX, pointY) || isHole(x, y)) return kNowhere;
        return (pointX - px_) * (pointX - px_) + (pointY - py_) * (pointY - py_);
    }

    /// Squared; no point of the box is nearer.
    double squared(const ChartPoints::Box& box) const {
        const double dx = outside(map_.pixelX(box.left), map_.pixelX(box.right), px_);
        const double dy = outside(map_.pixelY(box.bottom), map_.pixelY(box.top), py_);
        return dx * dx + dy * dy;
    }

  private:
    /// How far a place lies outside of what is between two others, in either order.
    static double outside(double a, double b, double place) {
        return std::max({0.0, std::min(a, b) - place, place - std::max(a, b)});
    }

    const PixelMap map_;
    const double px_, py_;
    PixelRect shown_;
};

/// Takes points in their order and lays down the lines that remain.
class LineBuilder {
  public:
    LineBuilder(const PixelMap& map, double columnsPerPixel, PixelLines& lines)
        : map_(map), area_(map.area), columnsPerPixel_(columnsPerPixel), lines_(lines) {}

    /// Whether all points of a box fall into the column that the last point fell into.
    bool holds(const ChartPoints::Box& box) const {
        return box.isWhole && holds(placeOf(map_.pixelX(box.left))) && holds(placeOf(map_.pixelX(box.right)));
    }

    /// The points first..last - 1.
    void add(const double* x, const double* y, std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) {
            if (isHole(x[i], y[i]))
                interrupt();
            else
                add(pixelOf(x[i], y[i]));
        }
    }

    /// The points first..last - 1, which lie in a box that the present column holds: of those only the lowest
    /// and the highest can matter, and the last.
    void add(const ChartPoints::Box& box, const double* x, const double* y, std::size_t first,
             std::size_t last) {
        const double a = clampedPixel(map_.pixelY(box.bottom));
        const double b = clampedPixel(map_.pixelY(box.top));
        if (std::min(a, b) < lowest_.y || std::max(a, b) > highest_.y)
            for (std::size_t i = first; i < last; ++i)
                if (y[i] == box.bottom || y[i] == box.top) add(pixelOf(x[i], y[i]));
        last_ = pixelOf(x[last - 1], y[last - 1]);
    }

    void interrupt() {
        finishColumn();
        open_ = joined_ = false;
    }

  private:
    PixelPoint pixelOf(double x, double y) const {
        return {clampedPixel(map_.pixelX(x)), clampedPixel(map_.pixelY(y))};
    }

    /// Points beyond the sides share one column each: they matter only for the slope of the line that enters
    /// the plot area.
    double placeOf(double pixel) const {
        return std::clamp(pixel, area_.left - 2, area_.right + 2) * columnsPerPixel_;
    }

    bool holds(double place) const { return open_ && place >= column_ && place < column_ + 1; }

    void add(PixelPoint point) {
        const double place = placeOf(point.x);
        if (!holds(place)) {
            finishColumn();
            column_ = std::floor(place);
            first_ = lowest_ = highest_ = point;
            lowestFirst_ = open_ = true;
        }
        if (point.y < lowest_.y) lowest_ = point, lowestFirst_ = false;
        if (point.y > highest_.y) highest_ = point, lowestFirst_ = true;
        last_ = point;
    }

    void finishColumn() {
        if (!open_) return;
        emit(first_);
        emit(lowestFirst_ ? lowest_ : highest_);
        emit(lowestFirst_ ? highest_ : lowest_);
        emit(last_);
    }

    void emit(PixelPoint point) {
        const PixelPoint before = std::exchange(previous_, point);
        if (!std::exchange(joined_, true) || before == point) return;
        PixelPoint from = before;
        PixelPoint to = point;
        if (!clipLine(area_, from, to)) return;
        if (lines_.pieces.empty() || !continues_ || !(lines_.points.back() == from)) {
            lines_.pieces.push_back({lines_.points.size(), 0});
            lines_.points.push_back(from);
        }
        lines_.points.push_back(to);
        lines_.pieces.back().end = lines_.points.size();
        continues_ = true;
    }

    const PixelMap& map_;
    const PixelRect& area_;
    const double columnsPerPixel_;
    PixelLines& lines_;
    double column_ = 0;
    PixelPoint first_, lowest_, highest_, last_, previous_;
    bool lowestFirst_ = true;
    bool open_ = false;
    bool joined_ = false;
    bool continues_ = false;
};

}  // namespace

AxisView viewOfLimits(double minimum, double maximum) {
    if (!std::isfinite(minimum) || !std::isfinite(maximum)) return {};
    minimum = std::clamp(minimum, -kLargest, kLargest);
    maximum = std::clamp(maximum, -kLargest, kLargest);
    const double middle = minimum / 2 + maximum / 2;
    const double width = std::fabs(maximum - minimum);
    if (width < resolvableWidth(middle))
        return around(middle, std::max(1.0, std::fabs(middle) * 1e-8), false);
    return {std::min(minimum, maximum), std::max(minimum, maximum), minimum > maximum};
}

AxisView zoomed(const AxisView& view, const AxisView& home, double fraction, double factor) {
    const double width = view.upper - view.lower;
    const double homeWidth = home.upper - home.lower;
    const double place = view.reversed ? 1 - fraction : fraction;
    const double fixed = view.lower + place * width;
    const double least = std::max(homeWidth * 1e-6, resolvableWidth(fixed));
    const double wanted = std::clamp(width * factor, std::min(least, width), homeWidth * 1e3);
    const double lower = fixed - place * wanted;
    return {lower, lower + wanted, view.reversed};
}

AxisView moved(const AxisView& view, const AxisView& home, double fraction) {
    const double width = view.upper - view.lower;
    const double reach = (home.upper - home.lower) * 1e3;
    const double shift = (view.reversed ? -fraction : fraction) * width;
    const double lower = std::clamp(view.lower + shift, home.lower - reach - width, home.upper + reach);
    return {lower, lower + width, view.reversed};
}

PixelMap pixelMap(const PixelRect& area, const AxisView& x, const AxisView& y) {
    PixelMap map;
    map.area = area;
    map.xScale = (area.right - area.left) / (x.upper - x.lower) * (x.reversed ? -1 : 1);
    map.xShift = (x.reversed ? area.right : area.left) - map.xScale * x.lower;
    map.yScale = (area.bottom - area.top) / (y.upper - y.lower) * (y.reversed ? 1 : -1);
    map.yShift = (y.reversed ? area.top : area.bottom) - map.yScale * y.lower;
    return map;
}

NearestPoint nearestPoint(std::span<const ChartSeries> series, const PixelMap& map, double px, double py,
                          double within) {
    const Distances from(map, px, py);
    // Just above, so that what lies exactly `within` pixels away is found.
    double best = std::nextafter(within * within, kNowhere);
    NearestPoint found;
    for (std::size_t s = 0; s < series.size(); ++s) {
        const ChartPoints& points = series[s].points;
        const double* const x = points.x().data();
        const double* const y = points.y().data();
        points.visit([&](const ChartPoints::Box& box) { return from.squared(box) < best; },
                     [&](std::size_t first, std::size_t last) {
                         for (std::size_t i = first; i < last; ++i) {
                             const double distance = from.squared(x[i], y[i]);
                             if (!(distance < best)) continue;
                             best = distance;
                             found = {static_cast<int>(s) + 1, static_cast<std::int64_t>(i), 0};
                         }
                     });
    }
    if (found.series > 0) found.distance = std::sqrt(best);
    return found;
}

std::vector<PointStretch> stretchesShown(const ChartPoints& points, const PixelMap& map) {
    // A pixel more than is shown, for the rounding of other ways to the same pixels.
    const PixelRect shown{map.area.left - 1, map.area.top - 1, map.area.right + 1, map.area.bottom + 1};
    const auto meets = [](double a, double b, double from, double to) {
        return std::min(a, b) <= to && std::max(a, b) >= from;
    };
    std::vector<PointStretch> stretches;
    points.visit(
        [&](const ChartPoints::Box& box) {
            return meets(map.pixelX(box.left), map.pixelX(box.right), shown.left, shown.right) &&
                   meets(map.pixelY(box.bottom), map.pixelY(box.top), shown.top, shown.bottom);
        },
        [&](std::size_t first, std::size_t last) {
            if (!stretches.empty() && stretches.back().last == first)
                stretches.back().last = last;
            else
                stretches.push_back({first, last});
        });
    return stretches;
}

void PixelLines::clear() {
    points.clear();
    pieces.clear();
}

void appendLines(const ChartSeries& series, const PixelMap& map, double columnsPerPixel, PixelLines& lines) {
    const double* const x = series.points.x().data();
    const double* const y = series.points.y().data();
    LineBuilder builder(map, columnsPerPixel, lines);
    std::size_t first = 0;
    for (const ChartPoints::Box& box : series.points.boxes()) {
        const std::size_t last = std::min(series.points.size(), first + ChartPoints::kBlock);
        if (builder.holds(box))
            builder.add(box, x, y, first, last);
        else
            builder.add(x, y, first, last);
        first = last;
    }
    builder.interrupt();
}

}  // namespace tessel
