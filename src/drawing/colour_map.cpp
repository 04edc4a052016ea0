// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/colour_map.h"

#include "base/whole_numbers.h"

#include <algorithm>

namespace tessel {

namespace {

/// The colours "viridis" at nine places, from which the others differ by less than the eye sees when they are
/// mixed evenly. In the public domain.
constexpr std::array<std::uint32_t, 9> kPlaces = {0x440154, 0x472D7B, 0x3B528B, 0x2C728E, 0x21918C,
                                                  0x28AE80, 0x5EC962, 0xADDC30, 0xFDE725};

constexpr std::uint32_t mixed(std::uint32_t from, std::uint32_t to, double part) {
    std::uint32_t colour = 0;
    for (const int shift : {0, 8, 16}) {
        const double low = from >> shift & 255U;
        const double high = to >> shift & 255U;
        colour |= static_cast<std::uint32_t>(low + part * (high - low) + 0.5) << shift;
    }
    return colour;
}

constexpr std::array<std::uint32_t, kShades> makeColourMap() {
    std::array<std::uint32_t, kShades> map{};
    for (std::size_t i = 0; i < kShades; ++i) {
        const double place = static_cast<double>(i) * (kPlaces.size() - 1) / (kShades - 1);
        const std::size_t below = i + 1 < kShades ? static_cast<std::size_t>(place) : kPlaces.size() - 2;
        map[i] = mixed(kPlaces[below], kPlaces[below + 1], place - static_cast<double>(below));
    }
    return map;
}

constexpr std::array<std::uint32_t, kShades> kColourMap = makeColourMap();

}  // namespace

const std::array<std::uint32_t, kShades>& colourMap() {
    return kColourMap;
}

std::vector<Shade> shadesOf(std::span<const double> values, const Interval& range) {
    constexpr double kLast = kShades - 1;
    // By halves, since the whole range may be too large for a Double.
    const double half = range.halfLength();
    const double factor = half > 0 ? kShades / 2 / half : 0;
    const double shift = half > 0 ? -range.from * factor : kShades / 2;
    std::vector<Shade> shades(values.size());
    std::transform(values.begin(), values.end(), shades.begin(), [=](double value) {
        const double place = value * factor + shift;
        const double notBelow = place > 0 ? place : 0;
        return static_cast<Shade>(intWithin(notBelow < kLast ? notBelow : kLast));
    });
    return shades;
}

}  // namespace tessel
