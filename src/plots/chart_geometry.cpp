// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_geometry.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace tessel {

namespace {

constexpr double kFarthestPixel = 1e9;
constexpr double kNowhere = std::numeric_limits<double>::infinity();

double clampedPixel(double pixel) {
    return std::clamp(pixel, -kFarthestPixel, kFarthestPixel);
}

/// Cuts the line from a to b off at the rectangle; false when nothing of it lies inside.
bool clipLine(const Rectangle& area, PixelPoint& a, PixelPoint& b) {
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
    if (!cut(-dx, a.x - area.x.from) || !cut(dx, area.x.to - a.x)) return false;
    if (!cut(-dy, a.y - area.y.from) || !cut(dy, area.y.to - a.y)) return false;
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
        shown_ = map.area.widened(kSlack);
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
        const double dx = outside(map_.pixelX(box.x.from), map_.pixelX(box.x.to), px_);
        const double dy = outside(map_.pixelY(box.y.from), map_.pixelY(box.y.to), py_);
        return dx * dx + dy * dy;
    }

  private:
    /// How far a place lies outside of what is between two others, in either order.
    static double outside(double a, double b, double place) {
        return std::max({0.0, std::min(a, b) - place, place - std::max(a, b)});
    }

    const PixelMap map_;
    const double px_, py_;
    Rectangle shown_;
};

/// Whether a box of data reaches into a rectangle of pixels.
bool meets(const PixelMap& map, const Rectangle& data, const Rectangle& pixels) {
    const auto reach = [](double a, double b, const Interval& side) {
        return std::min(a, b) <= side.to && std::max(a, b) >= side.from;
    };
    return reach(map.pixelX(data.x.from), map.pixelX(data.x.to), pixels.x) &&
           reach(map.pixelY(data.y.from), map.pixelY(data.y.to), pixels.y);
}

/// Takes points in their order and lays down the lines that remain.
class LineBuilder {
  public:
    LineBuilder(const PixelMap& map, double columnsPerPixel, PixelLines& lines)
        : map_(map), area_(map.area), columnsPerPixel_(columnsPerPixel), lines_(lines) {}

    /// Whether all points of a box fall into the column that the last point fell into.
    bool holds(const ChartPoints::Box& box) const {
        return box.isWhole && holds(placeOf(map_.pixelX(box.x.from))) &&
               holds(placeOf(map_.pixelX(box.x.to)));
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
        const double a = clampedPixel(map_.pixelY(box.y.from));
        const double b = clampedPixel(map_.pixelY(box.y.to));
        if (std::min(a, b) < lowest_.y || std::max(a, b) > highest_.y)
            for (std::size_t i = first; i < last; ++i)
                if (y[i] == box.y.from || y[i] == box.y.to) add(pixelOf(x[i], y[i]));
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
        return std::clamp(pixel, area_.x.from - 2, area_.x.to + 2) * columnsPerPixel_;
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
            lines_.pieces.push_back({std::ssize(lines_.points), 0});
            lines_.points.push_back(from);
        }
        lines_.points.push_back(to);
        lines_.pieces.back().last = std::ssize(lines_.points);
        continues_ = true;
    }

    const PixelMap& map_;
    const Rectangle& area_;
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

NearestPoint nearestPoint(std::span<const ChartSeries> series, const PixelMap& map, double px, double py,
                          double within, const std::function<bool(std::size_t)>& isMeant) {
    const Distances from(map, px, py);
    // Just above, so that what lies exactly `within` pixels away is found.
    double best = std::nextafter(within * within, kNowhere);
    NearestPoint found;
    std::int64_t lookedAt = 0;
    for (std::size_t s = 0; s < series.size(); ++s) {
        const ChartPoints& points = series[s].points;
        const double* const x = points.x().data();
        const double* const y = points.y().data();
        points.visit([&](const ChartPoints::Box& box) { return from.squared(box) < best; },
                     [&](std::size_t first, std::size_t last) {
                         lookedAt += static_cast<std::int64_t>(last - first);
                         for (std::size_t i = first; i < last; ++i) {
                             const double distance = from.squared(x[i], y[i]);
                             if (!(distance < best) || (isMeant && !isMeant(i))) continue;
                             best = distance;
                             found = {static_cast<int>(s) + 1, static_cast<std::int64_t>(i), 0, 0};
                         }
                     });
    }
    if (found.series > 0) found.distance = std::sqrt(best);
    found.lookedAt = lookedAt;
    return found;
}

std::vector<std::int64_t> pointsIn(const ChartPoints& points, const PixelMap& map, const Rectangle& box) {
    const Distances shown(map, 0, 0);
    const double* const x = points.x().data();
    const double* const y = points.y().data();
    std::vector<std::int64_t> found;
    points.visit(
        [&](const ChartPoints::Box& block) { return meets(map, block, box); },
        [&](std::size_t first, std::size_t last) {
            for (std::size_t i = std::max<std::size_t>(first, 1); i < last; ++i)
                if (box.contains(map.pixelX(x[i]), map.pixelY(y[i])) && shown.squared(x[i], y[i]) < kNowhere)
                    found.push_back(static_cast<std::int64_t>(i));
        });
    return found;
}

std::vector<IndexRange> stretchesShown(const ChartPoints& points, const PixelMap& map) {
    // A pixel more than is shown, for the rounding of other ways to the same pixels.
    const Rectangle shown = map.area.widened(1);
    std::vector<IndexRange> stretches;
    points.visit([&](const ChartPoints::Box& box) { return meets(map, box, shown); },
                 [&](std::size_t first, std::size_t last) {
                     const IndexRange next{static_cast<std::int64_t>(first), static_cast<std::int64_t>(last)};
                     if (!stretches.empty() && stretches.back().last == next.first)
                         stretches.back().last = next.last;
                     else
                         stretches.push_back(next);
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
