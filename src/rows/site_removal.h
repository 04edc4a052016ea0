// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <cstdint>
#include <span>

namespace tessel {

/// Takes sites out of the survey for good: those whose mark is not 0. The others keep their order and move
/// together in all five columns and in SiteID; the entries freed at the end are 0 and the storage keeps its
/// size; NumSites becomes the number kept. Row numbers, NumPoints and distances are left to the caller.
/// Requires one mark for each site. Gives the number of sites removed. One pass over each column.
SiteIndex removeSites(Survey& survey, std::span<const std::uint8_t> marks);

/// The same for sites given by their indices, ascending, each once, all below NumSites. Moves only what lies
/// behind the first of them.
SiteIndex removeSitesAt(Survey& survey, std::span<const SiteIndex> removed);

/// Takes the entries with these indices (ascending, each once, all below `count`) out of an array; the
/// others move up in order, and what is behind them stays as it is.
void closeGaps(double* values, SiteIndex count, std::span<const SiteIndex> removed);

}  // namespace tessel
