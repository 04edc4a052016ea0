// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tessel {

/// How often the survey of the process has been changed. Whoever has just changed it says so before anything
/// else is done, so that a failure that comes afterwards can be told from one that has left it as it was.
std::uint64_t surveyChanges();
void noteSurveyChange();

}  // namespace tessel
