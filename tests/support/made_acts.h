// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/em_adjustment.h"
#include "geodesy/position_conversion.h"
#include "journal/journal.h"
#include "plots/site_masking.h"
#include "rows/row_detection.h"

namespace tessel {

/// A journal with room for more than tests do, or for so many bytes, whose first act is the import of a
/// survey.
Journal journalOf(Survey survey, std::size_t mostBytes = std::size_t{1} << 30);

// Acts as windows have them done.

void importSurvey(Journal& journal, Survey survey);
void deleteRow(Journal& journal, int row);
/// A row and the next one.
void joinRows(Journal& journal, int row);
RowDetection findRows(Journal& journal, int measure, double distance);
void adjust(Journal& journal, const AdjustmentRequest& request);
/// These points of a row, from 1.
void deletePicked(Journal& journal, int row, const std::vector<SiteIndex>& points);
void deleteMasked(Journal& journal, SiteMaskArray mask);
void convert(Journal& journal, const PositionRequest& request);

}  // namespace tessel
