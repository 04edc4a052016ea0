#include "plots/chart_geometry.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

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

/// Whether one of a block of points may be nearer than `best` (a squared distance). Two passes without
/// branches, the second only where the first, across alone, leaves it open.
class NearBlock {
  public:
    static constexpr std::size_t kPoints = 128;

    NearBlock(const PixelMap& map, double px, double py) : map_(map), px_(px), py_(py) {}

    bool mayBeNearer(const double* x, const double* y, double best) const {
        // The signs of the differences, gathered without a branch. Of what is no number any sign will do.
        std::int64_t signs = 0;
        for (std::size_t i = 0; i < kPoints; ++i)
            signs |= std::bit_cast<std::int64_t>(squareX(x[i]) - best);
        if (signs >= 0) return false;
        signs = 0;
        for (std::size_t i = 0; i < kPoints; ++i)
            signs |= std::bit_cast<std::int64_t>(squareX(x[i]) + squareY(y[i]) - best);
        return signs < 0;
    }

  private:
    double squareX(double x) const {
        const double dx = map_.pixelX(x) - px_;
        return dx * dx;
    }
    double squareY(double y) const {
        const double dy = map_.pixelY(y) - py_;
        return dy * dy;
    }

    PixelMap map_;
    double px_, py_;
};

/// How far (squared) a few of the points are at most from a pixel: what is farther need not be looked at.
/// `squared` gives infinity for points that cannot be picked.
template <typename Squared>
double squaredOfSample(std::span<const ChartSeries> series, const Squared& squared) {
    double best = kNowhere;
    for (const ChartSeries& s : series)
        for (std::size_t i = 0; i < s.x.size(); i += 16 * NearBlock::kPoints)
            best = std::min(best, squared(s.x[i], s.y[i]));
    return best;
}

struct Stretch {
    std::size_t first, last;  ///< one past the last
};

/// The points of a series that can lie within `reach` pixels of a column: all, unless x ascends.
Stretch pointsNear(const ChartSeries& series, const PixelMap& map, double column, double reach) {
    if (!series.ascends || !(reach < kNowhere)) return {0, series.x.size()};
    reach += 1;  // whatever rounding does to the way back from pixels
    const auto [low, high] =
        std::minmax({(column - reach - map.xShift) / map.xScale, (column + reach - map.xShift) / map.xScale});
    const auto begin = series.x.begin();
    const auto first = std::lower_bound(begin + 1, series.x.end(), low);
    const auto last = std::upper_bound(first, series.x.end(), high);
    return {static_cast<std::size_t>(first - begin), static_cast<std::size_t>(last - begin)};
}

/// Takes points one by one and lays down the lines that remain.
class LineBuilder {
  public:
    LineBuilder(const PixelRect& area, double columnsPerPixel, PixelLines& lines)
        : area_(area), columnsPerPixel_(columnsPerPixel), lines_(lines) {}

    void add(PixelPoint point) {
        // Points beyond the sides share one column each: they matter only for the slope of the line that
        // enters the plot area.
        const double place = std::clamp(point.x, area_.left - 2, area_.right + 2) * columnsPerPixel_;
        if (!open_ || !(place >= column_ && place < column_ + 1)) {
            finishColumn();
            column_ = std::floor(place);
            first_ = lowest_ = highest_ = point;
            lowestFirst_ = open_ = true;
        }
        if (point.y < lowest_.y) lowest_ = point, lowestFirst_ = false;
        if (point.y > highest_.y) highest_ = point, lowestFirst_ = true;
        last_ = point;
    }

    void interrupt() {
        finishColumn();
        open_ = joined_ = false;
    }

  private:
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

    PixelRect area_;
    double columnsPerPixel_;
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
    // A point on the very edge of the plot area is shown and can be picked, whatever rounding did to it.
    const double slack = 1e-3;
    const PixelRect shown{map.area.left - slack, map.area.top - slack, map.area.right + slack,
                          map.area.bottom + slack};
    const auto squared = [&](double x, double y) {
        const double pointX = map.pixelX(x);
        const double pointY = map.pixelY(y);
        const double dx = pointX - px;
        const double dy = pointY - py;
        const bool isPickable = shown.contains(pointX, pointY) && !isHole(x, y);
        return isPickable ? dx * dx + dy * dy : kNowhere;
    };
    const NearBlock block(map, px, py);
    // Just above, so that the first of equally near points is found anew.
    const double known = std::min(squaredOfSample(series, squared), within * within);
    double best = std::nextafter(known, kNowhere);
    NearestPoint found;
    for (std::size_t s = 0; s < series.size(); ++s) {
        const double* x = series[s].x.data();
        const double* y = series[s].y.data();
        const auto [first, last] = pointsNear(series[s], map, px, std::sqrt(best));
        for (std::size_t i = first; i < last; ++i) {
            if (i % NearBlock::kPoints == 0)
                while (i + NearBlock::kPoints <= last && !block.mayBeNearer(x + i, y + i, best))
                    i += NearBlock::kPoints;
            if (i == last) break;
            const double distance = squared(x[i], y[i]);
            if (!(distance < best)) continue;
            best = distance;
            found = {static_cast<int>(s) + 1, static_cast<std::int64_t>(i), 0};
        }
    }
    if (found.series > 0) found.distance = std::sqrt(best);
    return found;
}

void PixelLines::clear() {
    points.clear();
    pieces.clear();
}

void appendLines(const ChartSeries& series, const PixelMap& map, double columnsPerPixel, PixelLines& lines) {
    LineBuilder builder(map.area, columnsPerPixel, lines);
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        if (isHole(series.x[i], series.y[i])) {
            builder.interrupt();
            continue;
        }
        builder.add({clampedPixel(map.pixelX(series.x[i])), clampedPixel(map.pixelY(series.y[i]))});
    }
    builder.interrupt();
}
