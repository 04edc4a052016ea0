// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/series_pixels.h"

#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

// The points whose numbers may lie between two pixel positions, and one more on each side for rounding.
IndexRange pointsBetween(const PixelMap& map, double left, double right, std::size_t points) {
    const double a = map.dataX(left);
    const double b = map.dataX(right);
    const auto last = static_cast<double>(points);
    const auto place = [last](double number) { return int64Within(std::clamp(number, 1.0, last)); };
    return {place(std::min(a, b) - 1), place(std::max(a, b) + 2)};
}

}  // namespace

bool SeriesPixels::areFor(const PixelMap& map) const {
    return !pixels_.empty() && map.area == map_.area && map.xScale == map_.xScale &&
           map.xShift == map_.xShift && map.yScale == map_.yScale && map.yShift == map_.yShift;
}

void SeriesPixels::begin(const PixelMap& map) {
    map_ = map;
    left_ = intBelow(map.area.x.from);
    top_ = intBelow(map.area.y.from);
    height_ = intBelow(map.area.y.to) - top_ + 1;
    const int width = intBelow(map.area.x.to) - left_ + 1;
    written_.assign(static_cast<std::size_t>(width), false);
    pixels_.assign(written_.size() * static_cast<std::size_t>(height_), 0);
}

// Gives how many points were looked at.
std::int64_t SeriesPixels::write(std::span<const double> values, int column) {
    const auto place = static_cast<std::size_t>(column);
    if (column < 0 || place >= written_.size() || written_[place] || values.empty()) return 0;
    written_[place] = true;
    std::uint32_t* const pixels = &pixels_[place * static_cast<std::size_t>(height_)];
    const int across = left_ + column;
    const IndexRange points = pointsBetween(map_, across, across + 1, values.size());
    for (std::int64_t i = points.first; i < points.last; ++i) {
        const double x = map_.pixelX(static_cast<double>(i));
        const double y = map_.pixelY(values[static_cast<std::size_t>(i)]);
        if (!map_.area.contains(x, y) || intBelow(x) != across) continue;
        std::uint32_t& pixel = pixels[intBelow(y) - top_];
        if (pixel == 0) pixel = static_cast<std::uint32_t>(i);
    }
    return points.count();
}

std::uint32_t SeriesPixels::at(int column, int line) const {
    if (column < 0 || static_cast<std::size_t>(column) >= written_.size() || line < 0 || line >= height_)
        return 0;
    return pixels_[static_cast<std::size_t>(column) * static_cast<std::size_t>(height_) +
                   static_cast<std::size_t>(line)];
}

SeriesPixels::Found SeriesPixels::nearest(const PixelMap& map, std::span<const double> values, int px, int py,
                                          int within) {
    Found found;
    if (!areFor(map)) begin(map);
    double best = within + 0.5;
    for (int across = -within; across <= within; ++across) {
        const int column = px + across - left_;
        found.lookedAt += write(values, column);
        for (int down = -within; down <= within; ++down) {
            ++found.lookedAt;
            const std::uint32_t point = at(column, py + down - top_);
            const double distance = std::hypot(across, down);
            const bool isNearer = distance < best || (distance == best && point < found.point);
            if (point == 0 || !isNearer) continue;
            best = distance;
            found.point = point;
        }
    }
    return found;
}

}  // namespace tessel
