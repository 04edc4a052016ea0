// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/series_pixels.h"

#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

// The points whose numbers may lie in the map's area, and one more on each side for rounding.
IndexRange shownPoints(const PixelMap& map, std::size_t points) {
    const double a = map.dataX(map.area.x.from);
    const double b = map.dataX(map.area.x.to);
    const auto last = static_cast<double>(points);
    const auto place = [last](double number) { return int64Within(std::clamp(number, 1.0, last)); };
    return {place(std::min(a, b) - 1), place(std::max(a, b) + 2)};
}

}  // namespace

bool SeriesPixels::areFor(const PixelMap& map) const {
    return !pixels_.empty() && map.area == map_.area && map.xScale == map_.xScale &&
           map.xShift == map_.xShift && map.yScale == map_.yScale && map.yShift == map_.yShift;
}

std::int64_t SeriesPixels::write(const PixelMap& map, std::span<const double> values) {
    map_ = map;
    left_ = intBelow(map.area.x.from);
    top_ = intBelow(map.area.y.from);
    width_ = intBelow(map.area.x.to) - left_ + 1;
    height_ = intBelow(map.area.y.to) - top_ + 1;
    pixels_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0);
    if (values.empty()) return 0;
    const IndexRange shown = shownPoints(map, values.size());
    for (std::int64_t i = shown.first; i < shown.last; ++i) {
        const double x = map.pixelX(static_cast<double>(i));
        const double y = map.pixelY(values[static_cast<std::size_t>(i)]);
        if (!map.area.contains(x, y)) continue;
        const auto line = static_cast<std::size_t>(intBelow(y) - top_);
        std::uint32_t& pixel =
            pixels_[line * static_cast<std::size_t>(width_) + static_cast<std::size_t>(intBelow(x) - left_)];
        if (pixel == 0) pixel = static_cast<std::uint32_t>(i);
    }
    return shown.count();
}

std::uint32_t SeriesPixels::at(int px, int py) const {
    const int column = px - left_;
    const int line = py - top_;
    if (column < 0 || column >= width_ || line < 0 || line >= height_) return 0;
    return pixels_[static_cast<std::size_t>(line) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(column)];
}

SeriesPixels::Found SeriesPixels::nearest(const PixelMap& map, std::span<const double> values, int px, int py,
                                          int within) {
    Found found;
    if (!areFor(map)) found.lookedAt = write(map, values);
    double best = within + 0.5;
    for (int down = -within; down <= within; ++down)
        for (int across = -within; across <= within; ++across) {
            ++found.lookedAt;
            const std::uint32_t point = at(px + across, py + down);
            const double distance = std::hypot(across, down);
            const bool isNearer = distance < best || (distance == best && point < found.point);
            if (point == 0 || !isNearer) continue;
            best = distance;
            found.point = point;
        }
    return found;
}

}  // namespace tessel
