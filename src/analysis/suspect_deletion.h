// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspicious_sites.h"
#include "base/geometry.h"
#include "journal/journal.h"

#include <vector>

namespace tessel {

/// The deletion of so many suspicious sites in words: which rules were used, with their parameters, and from
/// how many sites that they flagged the user took the tick away. Requires the survey before it.
ActDescription deletionOfSuspects(const Survey& survey, const SuspectParameters& parameters, SiteIndex sites,
                                  SiteIndex spared);

/// What has become of the survey beside the sites that are gone.
struct DeletedSuspects {
    bool rowsLost = false;  ///< all sites are one row, to be divided anew
    Difference difference;
};

/// Deletes these sites. Rows that lose their last site close up; where the survey's rows are more than it can
/// number, or of no use, and no longer run without gaps, all sites become one row, as after a deletion on the
/// map. Where a rule was used that leaves one site of several at a place with their mean, the readings become
/// that, if any of them goes. Where memory runs out nothing has been changed.
DeletedSuspects deleteSuspects(Survey& survey, const std::vector<IndexRange>& runs,
                               const SuspectParameters& parameters);

}  // namespace tessel
