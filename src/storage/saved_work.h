// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/processing_record.h"
#include "import/import_summary.h"
#include "journal/journal.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tessel {

// What of the work on a survey outlives the program.

/// An import, and what it found beside the survey.
struct SavedImport {
    ImportSummary summary;
    RecordedImport what;
    std::size_t acts = 0;  ///< acts that were done up to it
};

/// An export of the survey of an import, and the number of its content then (Journal::content).
struct SavedExport {
    RecordedExport what;
    int importNumber = 0;
    std::uint64_t content = 0;
};

/// What the journal does not know.
struct SavedRecords {
    std::vector<SavedImport> imports;  ///< by their numbers, from 1
    std::vector<SavedExport> exports;
    std::vector<std::string> menuItems;  ///< by name, those that Act::menus counts
};

/// All of it.
struct SavedWork {
    Journal journal{SIZE_MAX};
    SavedRecords records;
};

}  // namespace tessel
