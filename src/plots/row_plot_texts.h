// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tessel {

// What the row plots say in words.

/// The header of the row map. Requires points >= 0.
std::string rowHeader(int row, std::int64_t points);

/// The header where there is no room for the whole: row number and count.
std::string shortRowHeader(int row, std::int64_t points);

inline constexpr const char* kNoPointSelected = "No Point Selected";

/// The read-out of a point of the row profile: coordinate along the row (metres) and ECa (mS/m).
std::string profileReadout(double along, double eca, bool plotByX);

/// The read-out of a point of the row map, the coordinate along the row first.
std::string mapReadout(double along, double across, bool plotByX);

/// What is said of a box with more sites than can be selected at a time, or than can be selected besides.
std::string tooManyInBox(std::int64_t sites);

/// What is said of a pick that has taken out another site than the one picked.
std::string otherDeselected(bool plotByX);

/// The title of an axis that shows SiteData's column kX or kY.
const char* coordinateTitle(int column);

}  // namespace tessel
