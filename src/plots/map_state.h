// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// What the map waits for.
enum class MapState { NotShown, Browsing, FirstCorner, SecondCorner };

/// What the user can do in this state, in one line.
const char* mapStateText(MapState state);

}  // namespace tessel
