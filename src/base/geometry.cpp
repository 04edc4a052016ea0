// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/geometry.h"

namespace tessel {

namespace {

constexpr double kLargest = 1e240;

/// The smallest width that ticks and pixels around `value` can still resolve.
double resolvableWidth(double value) {
    return std::max(1e-200, std::fabs(value) * 1e-10);
}

}  // namespace

PixelMap pixelMap(const Rectangle& area, const Interval& x, const Interval& y) {
    PixelMap map;
    map.area = area;
    map.xScale = area.width() / x.length();
    map.xShift = area.x.from - map.xScale * x.from;
    map.yScale = -area.height() / y.length();
    map.yShift = area.y.to - map.yScale * y.from;
    return map;
}

Interval viewOfLimits(const Interval& limits) {
    if (!std::isfinite(limits.from) || !std::isfinite(limits.to)) return {};
    const Interval view{std::clamp(limits.from, -kLargest, kLargest),
                        std::clamp(limits.to, -kLargest, kLargest)};
    const double middle = view.from / 2 + view.to / 2;
    if (std::fabs(view.length()) >= resolvableWidth(middle)) return view;
    return Interval{middle, middle}.widened(std::max(1.0, std::fabs(middle) * 1e-8) / 2);
}

Interval zoomed(const Interval& view, const Interval& home, double part, double factor) {
    const double length = std::fabs(view.length());
    const double homeLength = std::fabs(home.length());
    const double least = std::max(homeLength * 1e-6, resolvableWidth(view.at(part)));
    const double shortest = std::min(least, length);
    // What is looked at may lie so far from home that no number in between could be told from the next.
    const double longest = std::max(homeLength * 1e3, shortest);
    return view.stretched(part, std::clamp(length * factor, shortest, longest) / length);
}

Interval moved(const Interval& view, const Interval& home, double part) {
    const double length = view.high() - view.low();
    const double reach = (home.high() - home.low()) * 1e3;
    const double low =
        std::clamp(view.low() + part * view.length(), home.low() - reach - length, home.high() + reach);
    return view.startingAt(view.falls() ? low + length : low);
}

}  // namespace tessel
