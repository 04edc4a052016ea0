// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <array>
#include <string_view>

namespace tessel {

// The parts of the map on which its window can zoom, in the map's space (`site_masking.h`).

/// The window of the map's space that shows the whole field with a margin of 5 % all round.
inline constexpr Rectangle kFullMap = Rectangle::at(-0.05, -0.05, 1.1, 1.1);

/// A menu item that shows a part of the field.
struct MapZone {
    std::string_view item;  ///< object name
    Rectangle window;
};

/// Edges, quadrants and thirds. The edges show the outer 15 % of the field and the margin; the quadrants
/// meet on the centre lines and reach over the outer margin.
inline constexpr std::array<MapZone, 14> kMapZones = {{
    {"mnuZnorth", Rectangle::at(-0.05, -0.05, 1.1, 0.2)},
    {"mnuZsouth", Rectangle::at(-0.05, 0.85, 1.1, 0.2)},
    {"mnuZwest", Rectangle::at(-0.05, -0.05, 0.2, 1.1)},
    {"mnuZeast", Rectangle::at(0.85, -0.05, 0.2, 1.1)},
    {"mnuZnw", Rectangle::at(-0.05, -0.05, 0.55, 0.55)},
    {"mnuZne", Rectangle::at(0.5, -0.05, 0.55, 0.55)},
    {"mnuZsw", Rectangle::at(-0.05, 0.5, 0.55, 0.55)},
    {"mnuZse", Rectangle::at(0.5, 0.5, 0.55, 0.55)},
    {"mnuZw13", Rectangle::at(-0.05, -0.05, 0.35, 1.1)},
    {"mnuZc13v", Rectangle::at(0.3, -0.05, 0.4, 1.1)},
    {"mnuZe13", Rectangle::at(0.7, -0.05, 0.35, 1.1)},
    {"mnuZn13", Rectangle::at(-0.05, -0.05, 1.1, 0.35)},
    {"mnuZc13h", Rectangle::at(-0.05, 0.3, 1.1, 0.4)},
    {"mnuZs13", Rectangle::at(-0.05, 0.7, 1.1, 0.35)},
}};

}  // namespace tessel
