// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

namespace tessel {

/// Deletes the selected points (1-based positions in the row, in the order of selection) one after another,
/// shifting every later site down by one place each time: slow and plain, to compare the fast way with.
void deleteOneByOne(Survey& survey, int row, std::vector<SiteIndex> points);

}  // namespace tessel
