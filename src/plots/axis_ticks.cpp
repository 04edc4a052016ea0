#include "plots/axis_ticks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

/// The number `index` of the endless row ... 0.5, 1, 2, 5, 10, 20, 50 ...; number 0 is 1.
double niceNumber(int index) {
    static constexpr std::array<double, 3> kMantissas = {1, 2, 5};
    const int power = static_cast<int>(std::floor(index / 3.0));
    return kMantissas[static_cast<std::size_t>(index - 3 * power)] * std::pow(10.0, power);
}

int indexOfNiceNumberFrom(double atLeast) {
    int index = 3 * static_cast<int>(std::floor(std::log10(atLeast)));
    while (niceNumber(index) < atLeast * (1 - 1e-9))
        ++index;
    return index;
}

TickStep tickStep(int index) {
    return {niceNumber(index), std::max(0, -static_cast<int>(std::floor(index / 3.0)))};
}

double widestLabel(double lower, double upper, const TickStep& ticks, const TickRoom& room) {
    const double first = std::ceil(lower / ticks.step) * ticks.step;
    const double last = std::floor(upper / ticks.step) * ticks.step;
    return std::max(room.labelExtent(tickLabel(first, ticks)), room.labelExtent(tickLabel(last, ticks)));
}

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

TickStep chooseTickStep(double lower, double upper, const TickRoom& room) {
    const double range = upper - lower;
    const double length = std::max(1.0, room.axisLength);
    int index = indexOfNiceNumberFrom(range * std::min(1.0, room.preferredDistance / length));
    while (tickStep(index).step < range) {
        const TickStep ticks = tickStep(index);
        if (ticks.step / range * length >= widestLabel(lower, upper, ticks, room) + room.gap) break;
        ++index;
    }
    return tickStep(index);
}
