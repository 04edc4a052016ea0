// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

namespace tessel {

/// What holds for a survey at every moment between two events, whatever the user has done. Gives what does
/// not hold, or nothing.
std::string brokenInvariant(const Survey& survey);

}  // namespace tessel
