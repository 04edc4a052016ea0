// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/site_runs.h"
#include "journal/difference.h"

namespace tessel {

// The one way out for sites.

/// What becomes of the number of a row that loses its last site.
enum class EmptiedRows {
    kCloseUp,   ///< it goes to the row behind: rows stay numbered without a gap
    kLeaveGaps  ///< it stays, as a row of 0 sites in NumPoints, and NumRows and RowIndex with it
};

/// What has been taken out.
struct RemovedSites {
    SiteIndex sites = 0;    ///< how many sites
    int rows = 0;           ///< how many rows have lost their last site
    Difference difference;  ///< the way back
};

/// Takes sites out of the survey, given their runs (in order, none reaching into the next), and brings
/// everything that depends on them in step:
/// - the others keep their order and move together in all columns, in SiteID and in SourceLine; the entries
///   freed at the end are 0, and the storage keeps its size;
/// - distances that were in step with the sites stay so, by all three measures, each array and its largest
///   value as if calculated anew; those in force are calculated where there were none, others that were not
///   in step are forgotten;
/// - NumPoints, and where rows close up row numbers, NumRows and RowIndex.
/// To close up requires rows in order and NumPoints as counted. Where memory runs out nothing has been
/// changed. One pass over what lies behind the first site taken out.
RemovedSites removeSites(Survey& survey, std::vector<IndexRange> runs, EmptiedRows emptied);

}  // namespace tessel
