// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/row_detection.h"
#include "rows/site_removal.h"

namespace tessel {

// Joining and deleting rows, and finding all rows anew.
//
// All of these give the way back, and keep the survey in one piece: row numbers without gaps, NumRows,
// RowIndex and NumPoints those of the rows as they now are, and the distances of the measure in force in step
// with the sites.

/// Joins two rows: the higher-numbered one becomes part of the lower, and the rows behind it move down by
/// one. No site moves. Requires neighbours between 1 and NumRows, and at most kMaxRows rows.
Difference Joint_Row(Survey& survey, int row1, int row2);

/// Whether the row of a site can be divided before it: something of the row stands before the site, and there
/// are fewer than kMaxRows rows. Requires 0 <= site < NumSites.
bool canSplitRow(const Survey& survey, SiteIndex site);
/// Divides the row of a site before this site: it and those behind it in its row become a row of their own,
/// and later rows move up by one. No site moves. Requires that it can be done, and rows numbered without
/// gaps.
Difference splitRow(Survey& survey, SiteIndex site);

/// Deletes a row with all its sites; the rows behind it move down by one. With the last site NumRows,
/// RowIndex and NumPoints become 0. Requires rows numbered without gaps, 1 <= row <= NumRows and at most
/// kMaxRows rows.
RemovedSites Delete_Row(Survey& survey, int row);

/// What Recalculate_Rows arrived at.
struct FoundRows {
    RowDetection outcome;
    Difference difference;
};

/// Finds the rows anew: the measure (1 true distance, 2 along X, 3 along Y) and the threshold (metres, not
/// negative) become those in force, distances are calculated and rows assigned.
FoundRows Recalculate_Rows(Survey& survey, int distanceMode, double minDistance);

/// True when the row numbers run 1, 1, ..., 2, 2, ... up to NumRows without a gap and never fall back. When
/// they do not, the row information is of no use: makeOneRow(). Requires a site.
bool ValidateRowInfo(const Survey& survey);
/// All sites make up one row.
Difference makeOneRow(Survey& survey);
/// The same, without a way back of its own.
void putAllInOneRow(Survey& survey) noexcept;

/// The rows of a survey without sites: none.
void forgetRows(SurveyCounts& counts);

}  // namespace tessel
