// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/axis_ticks.h"

#include "base/numbers.h"
#include "base/whole_numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tessel {

namespace {

/// The number `index` of the endless row ... 0.5, 1, 2, 5, 10, 20, 50 ...; number 0 is 1.
double niceNumber(int index) {
    static constexpr std::array<double, 3> kMantissas = {1, 2, 5};
    const int power = intBelow(index / 3.0);
    return kMantissas[static_cast<std::size_t>(index - 3 * power)] * std::pow(10.0, power);
}

int indexOfNiceNumberFrom(double atLeast) {
    int index = 3 * intBelow(std::log10(atLeast));
    while (niceNumber(index) < atLeast * (1 - 1e-9))
        ++index;
    return index;
}

TickStep tickStep(int index) {
    return {niceNumber(index), std::max(0, -intBelow(index / 3.0))};
}

constexpr int kFinerSteps = 6;  ///< a hundredth of the step that was too coarse, at most

constexpr int kFinestSteps = 60;  ///< twenty decimal places, more than a Double has

/// An axis to be given ticks.
struct Axis {
    const Interval& shown;
    const TickRoom& room;

    double length() const { return std::max(1.0, room.axisLength); }
    double range() const { return shown.high() - shown.low(); }

    double widestLabel(const TickStep& ticks) const {
        const auto [first, last] = tickEnds(shown, ticks.step);
        return std::max(room.labelExtent(tickLabel(first, ticks)), room.labelExtent(tickLabel(last, ticks)));
    }
    bool hasRoom(const TickStep& ticks, double apart, double gap) const {
        return apart / range() * length() >= widestLabel(ticks) + gap;
    }
    bool hasTwo(const TickStep& ticks) const { return tickEnds(shown, ticks.step).length() > 0; }

    /// The first step that leaves labels apart, from this one on.
    int readable(int index) const {
        while (tickStep(index).step < range() && !hasRoom(tickStep(index), tickStep(index).step, room.gap))
            ++index;
        return index;
    }
    /// The first finer step with two ticks. An axis whose ends are one Double, after a zoom beyond all
    /// digits, has none.
    int withTwoTicks(int index) const {
        for (int finer = index; finer > index - kFinestSteps; --finer)
            if (hasTwo(tickStep(finer))) return finer;
        return index;
    }
};

}  // namespace

std::string tickLabel(double value, const TickStep& ticks) {
    if (std::fabs(value) < ticks.step * 1e-6) value = 0;
    const bool readable = std::fabs(value) < 1e15 && ticks.decimals <= 9;
    std::array<char, 64> text{};
    char* const end = text.data() + text.size();
    const auto written =
        readable ? std::to_chars(text.data(), end, value, std::chars_format::fixed, ticks.decimals)
                 : std::to_chars(text.data(), end, value, std::chars_format::general, 6);
    return {text.data(), written.ptr};
}

double roundedTo(double value, double resolution) {
    const double unit = std::pow(10.0, std::abs(std::floor(std::log10(resolution))));
    // Dividing by a power of ten gives the nearest Double to the decimals, multiplying by a tenth does not.
    const double rounded = resolution < 1 ? std::round(value * unit) / unit : std::round(value / unit) * unit;
    return std::isfinite(rounded) ? rounded : value;
}

Interval tickEnds(const Interval& axis, double step) {
    return {std::ceil(axis.low() / step) * step, std::floor(axis.high() / step) * step};
}

std::vector<double> ticksOn(const Interval& axis, const TickStep& ticks) {
    if (ticks.endsOnly) {
        const auto [first, last] = tickEnds(axis, ticks.step);
        return {first, last};
    }
    std::vector<double> all;
    const double first = std::ceil(axis.low() / ticks.step);
    const int further = roundToInt(std::floor(axis.high() / ticks.step) - first);
    for (int i = 0; i <= further; ++i)
        all.push_back((first + i) * ticks.step);
    return all;
}

TickStep chooseTickStep(const Interval& shown, const TickRoom& room) {
    const Axis axis{shown, room};
    if (!(axis.range() > 0)) return {1, 0};
    const double preferred = axis.range() * std::min(1.0, room.preferredDistance / axis.length());
    const int wanted = axis.readable(indexOfNiceNumberFrom(preferred));
    const int index = axis.withTwoTicks(wanted);
    // Two labels may come closer to each other than many.
    if (axis.hasRoom(tickStep(index), tickStep(index).step, room.gap / 2)) return tickStep(index);
    for (int finer = index; finer > index - kFinerSteps; --finer) {
        TickStep ends = tickStep(finer);
        ends.endsOnly = true;
        if (axis.hasRoom(ends, tickEnds(shown, ends.step).length(), room.gap / 2)) return ends;
    }
    return tickStep(wanted);
}

}  // namespace tessel
