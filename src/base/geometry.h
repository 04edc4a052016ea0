// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bounded.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tessel {

/// From one number to another. What runs along it falls where `to` lies below `from`.
struct Interval {
    double from = 0;
    double to = 1;
    bool operator==(const Interval&) const = default;

    bool falls() const { return to < from; }
    double low() const { return std::min(from, to); }
    double high() const { return std::max(from, to); }
    /// Negative where it falls; infinite where the whole is too large for a Double.
    double length() const { return to - from; }
    /// Halving changes no digit, and half of what is too large for a Double is none.
    double halfLength() const { return to / 2 - from / 2; }

    /// The place that is reached after this part of the length.
    double at(double part) const { return from + part * length(); }
    double partOf(double place) const { return (place - from) / length(); }

    /// As long, and `factor` times as long with the place after `part` of the length kept.
    Interval startingAt(double place) const { return {place, place + length()}; }
    Interval stretched(double part, double factor) const {
        const double start = at(part) - part * length() * factor;
        return {start, start + length() * factor};
    }

    // These require one that does not fall.
    bool contains(double value) const { return value >= from && value <= to; }
    double nearest(double value) const { return std::clamp(value, from, to); }
    /// From the lower of both beginnings to the higher of both ends.
    Interval with(const Interval& other) const {
        return {std::min(from, other.from), std::max(to, other.to)};
    }
    /// Longer by `margin` at both ends; an end that would lie beyond all Doubles is the largest one.
    Interval widened(double margin) const { return {bounded(from - margin), bounded(to + margin)}; }
};

/// The place in both directions. In pixels y runs downwards: y.from is the upper edge.
struct Rectangle {
    Interval x, y;
    bool operator==(const Rectangle&) const = default;

    static constexpr Rectangle at(double left, double top, double width, double height) {
        return {{left, left + width}, {top, top + height}};
    }
    double width() const { return x.length(); }
    double height() const { return y.length(); }
    /// Requires one that does not fall in either direction.
    bool contains(double px, double py) const { return x.contains(px) && y.contains(py); }
    Rectangle widened(double margin) const { return {x.widened(margin), y.widened(margin)}; }
};

/// The consecutive things first..last - 1 of a numbered row of them.
struct IndexRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
    bool operator==(const IndexRange&) const = default;

    std::int64_t count() const { return last - first; }
};

/// The way from data to pixels of one area: pixel = scale * value + shift. What lies outside of the area is
/// not shown.
struct PixelMap {
    Rectangle area;
    double xScale = 1, xShift = 0, yScale = 1, yShift = 0;

    double pixelX(double x) const { return xScale * x + xShift; }
    double pixelY(double y) const { return yScale * y + yShift; }
    double dataX(double pixel) const { return (pixel - xShift) / xScale; }
    double dataY(double pixel) const { return (pixel - yShift) / yScale; }
};

/// x runs from left to right over the area and y from the bottom up. Requires an area of positive width and
/// height, and lengths other than 0.
PixelMap pixelMap(const Rectangle& area, const Interval& x, const Interval& y);

/// The part of an axis that is shown for limits as they were set: equal limits (or limits a Double can hardly
/// tell apart) are widened around their value, so that it stands in the middle; limits that are no numbers
/// give 0 to 1.
Interval viewOfLimits(const Interval& limits);

/// `view` made `factor` times as long around the place after `part` of its length. The length stays between a
/// millionth and a thousand times that of `home`, and long enough for a Double to resolve.
Interval zoomed(const Interval& view, const Interval& home, double part, double factor);

/// `view` moved on by `part` of its length, never farther from `home` than a thousand times its length.
Interval moved(const Interval& view, const Interval& home, double part);

}  // namespace tessel
