// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/processing_record.h"
#include "import/import_summary.h"
#include "journal/journal.h"
#include "storage/saved_work.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace tessel {

/// What the processing record needs to know beside the journal: every import and every export.
class RecordKeeper {
  public:
    RecordKeeper() { become({}); }

    /// The act done last was an import, and this is what it found.
    void noteImport(const Journal& journal, const ImportSummary& summary);
    /// What the import found from which a survey comes; null where it comes from none, or nothing is known of
    /// it.
    const ImportSummary* importOf(const Survey& survey) const;
    /// The survey has been written.
    void noteExport(const Journal& journal, const RecordedExport& file);

    /// Calculates the digests of files of up to so many bytes that are not known yet.
    void identifyFiles(std::int64_t upTo);

    /// What has been done to the survey as it is: its import, the acts in force since then, and all exports
    /// since then. Calculates digests that are not known yet.
    ProcessingRecord record(const Journal& journal);

    /// All that it knows, with the menu items that are counted today; and another's in its place.
    const SavedRecords& records() const { return records_; }
    void become(SavedRecords records);

  private:
    SavedImport* importWithNumber(int number);

    SavedRecords records_;
};

}  // namespace tessel
