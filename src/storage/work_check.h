// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/saved_work.h"

namespace tessel {

// Work that comes from a file is looked at before it is used, so that nothing that stands in a file, whoever
// has made it, leads beyond a column's end later. Each throws DamagedBytes with what does not fit.

/// The survey, and every act: acts in force can be taken back one after the other, those that were taken back
/// can be done again, and no survey on the way has room for more than `mostSites`. Looks at counts and runs,
/// not at sites.
void requireWhole(const SavedWork& work, SiteIndex mostSites);

/// What the journal does not know, alone.
void requireRecords(const SavedWork& work);
/// The figures alone, and the parameters alone.
void requireParameters(const SurveyParameters& parameters);
void requireFigures(const SurveyFigures& figures);

/// The act can be done again on this survey.
void requireFits(const Survey& survey, const Difference& waiting);

/// So many sites may have had room in a survey whose work takes so many bytes: each has been written but
/// those of acts that are forgotten.
SiteIndex mostSitesIn(std::uint64_t bytes);

}  // namespace tessel
