// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/geopackage.h"
#include "storage/saved_work.h"

#include <string>

namespace tessel {

// What of the work other programs read in a survey file: two layers of points and two tables.

/// Layer `sites`: the sites as they are. One pass, nothing kept of a site.
void writeSites(Database& database, const Survey& survey, const SpatialReference& reference,
                const std::string& now);

/// Layer `removed_sites`: what acts in force since the last import have taken out, each site as it was then,
/// without a position if positions have been converted since.
void writeRemovedSites(Database& database, const Journal& journal, const SpatialReference& reference,
                       const std::string& now);

/// Table `journal`: every act that is known, also those that have been taken back.
void writeActs(Database& database, const Journal& journal, const std::string& now);

/// Table `survey`: names and values.
void writeFacts(Database& database, const Journal& journal, const SavedRecords& records,
                const SpatialReference& reference, const std::string& now);

}  // namespace tessel
