// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tessel {

// Colours of values. From the lowest to the highest value the colours grow lighter in even steps, whatever
// their hue, so that they keep their order in a grey print and for eyes that tell no red from green.

inline constexpr std::size_t kShades = 256;

/// 0xRRGGBB, from the lowest values to the highest.
const std::array<std::uint32_t, kShades>& colourMap();

/// A place in colourMap().
using Shade = std::uint8_t;

/// The shade of each value, spread evenly over a range. Values beyond the range have the shades of its ends;
/// what is no number has the lowest. Requires a range that does not fall; where it has no length its value
/// has the middle shade.
std::vector<Shade> shadesOf(std::span<const double> values, const Interval& range);

}  // namespace tessel
