// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/journal.h"
#include "rows/row_selection.h"
#include "rows/row_turns.h"

namespace tessel {

// The acts on rows and sites, in words.

/// Requires neighbouring rows.
ActDescription joinOf(int row1, int row2);
/// Of the row before one of its sites, by its place in the row (1 for the first).
ActDescription divisionOf(int row, SiteIndex place);
/// Require the survey before the act, with a row of that number.
ActDescription deletionOfRow(const Survey& survey, int row);
ActDescription deletionOfPicked(int row, const RowSelection& selection);
ActDescription deletionOfMasked(SiteIndex sites);
/// By a measure (1 true distance, 2 along X, 3 along Y) and a threshold in metres.
ActDescription searchForRows(int distanceMode, double minDistance);
/// Rows found by turns, before they are put into the survey.
ActDescription searchByTurns(const TurnParameters& parameters, const RowTurns& found, TurnSites inTurns);
ActDescription lossOfRows();

}  // namespace tessel
