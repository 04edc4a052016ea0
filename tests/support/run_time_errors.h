// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/run_time_error.h"

namespace tessel {

/// The description of the run-time error that an action throws; "no error" when it throws none.
template <typename Action>
std::string descriptionOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        return error.description();
    }
    return "no error";
}

/// Its number; 0 when it throws none.
template <typename Action>
int errorNumberOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

}  // namespace tessel
