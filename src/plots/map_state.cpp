// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/map_state.h"

namespace tessel {

const char* mapStateText(MapState state) {
    switch (state) {
        case MapState::NotShown:
            return "Choose a full map in the View menu.";
        case MapState::Browsing:
            return "Clip Grid begins to mask sites in rectangles.";
        case MapState::FirstCorner:
            return "Click the first corner of a rectangle, or drag over it. Finished ends clipping.";
        case MapState::SecondCorner:
            return "Click the second corner, or press Esc to give the rectangle up.";
    }
    return "";
}

}  // namespace tessel
