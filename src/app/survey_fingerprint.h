// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <cstdint>

namespace tessel {

/// A number that stands for everything that a transect file holds of a survey: how many sites there are,
/// their positions, readings, row numbers and IDs, to the last bit. Two surveys that differ have different
/// numbers but for one case in 2^64 or so. One pass over the survey.
std::uint64_t surveyFingerprint(const Survey& survey);

}  // namespace tessel
