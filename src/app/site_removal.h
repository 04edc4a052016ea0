#pragma once

#include "app/survey.h"

#include <cstdint>
#include <span>

/// Takes sites out of the survey for good: those whose mark is not 0. The others keep their order and move
/// together in all five columns and in SiteID; the entries freed at the end are 0 and the storage keeps its
/// size; NumSites becomes the number kept. Row numbers, NumPoints and distances are left to the caller.
/// Requires one mark for each site. Gives the number of sites removed. One pass over each column.
SiteIndex removeSites(Survey& survey, std::span<const std::uint8_t> marks);
