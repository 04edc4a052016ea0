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

constexpr std::uint32_t kParts = kShades - 1;

/// So many parts of the one colour and the rest of the other.
constexpr std::uint32_t mixed(std::uint32_t from, std::uint32_t to, std::uint32_t parts) {
    std::uint32_t colour = 0;
    for (const int shift : {0, 8, 16}) {
        const std::uint32_t sum = (from >> shift & 255U) * (kParts - parts) + (to >> shift & 255U) * parts;
        colour |= (sum + kParts / 2) / kParts << shift;
    }
    return colour;
}

constexpr std::array<std::uint32_t, kShades> makeColourMap() {
    std::array<std::uint32_t, kShades> map{};
    for (std::uint32_t i = 0; i < kParts; ++i) {
        const std::uint32_t place = i * static_cast<std::uint32_t>(kPlaces.size() - 1);
        map[i] = mixed(kPlaces[place / kParts], kPlaces[place / kParts + 1], place % kParts);
    }
    map[kParts] = kPlaces.back();
    return map;
}

constexpr std::array<std::uint32_t, kShades> kColourMap = makeColourMap();

}  // namespace

const std::array<std::uint32_t, kShades>& colourMap() {
    return kColourMap;
}

std::vector<Shade> shadesOf(std::span<const double> values, const Interval& range) {
    constexpr double kLast = kShades - 1;
    constexpr double kHalf = kShades / 2.0;
    // By halves, since the whole range may be too large for a Double.
    const double half = range.halfLength();
    const double factor = half > 0 ? kHalf / half : 0;
    const double shift = half > 0 ? -range.from * factor : kHalf;
    std::vector<Shade> shades(values.size());
    std::transform(values.begin(), values.end(), shades.begin(), [=](double value) {
        const double place = value * factor + shift;
        const double notBelow = place > 0 ? place : 0;
        return static_cast<Shade>(intWithin(notBelow < kLast ? notBelow : kLast));
    });
    return shades;
}

}  // namespace tessel
