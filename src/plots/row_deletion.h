// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "plots/row_selection.h"

namespace tessel {

/// Takes the selected sites of a row out of the survey for good and clears the selection. Later sites move up
/// with their row numbers; NumSites, the row's NumPoints and the distances of the measure chosen follow. A
/// row that has lost its last site is gone: the sites behind it move to the row number below theirs, NumRows
/// drops by one and NumPoints is counted again, so that rows stay numbered without a gap.
///
/// Requires NumPoints as counted, and a selection of different sites of this row. Gives true when the row was
/// emptied. One pass over the table however many sites are selected.
bool deleteSelectedSites(Survey& survey, int row, RowSelection& selection);

}  // namespace tessel
