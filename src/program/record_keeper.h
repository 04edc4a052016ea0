// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/processing_record.h"
#include "import/import_summary.h"
#include "journal/journal.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessel {

/// What the processing record needs to know beside the journal: every import and every export.
class RecordKeeper {
  public:
    /// The act done last was an import, and this is what it found.
    void noteImport(const Journal& journal, const ImportSummary& summary);
    /// What the import found from which a survey comes; null where it comes from none.
    const ImportSummary* importOf(const Survey& survey) const;
    /// The survey has been written.
    void noteExport(const Journal& journal, const RecordedExport& file);

    /// Calculates the digests of files of up to so many bytes that are not known yet.
    void identifyFiles(std::int64_t upTo);

    /// What has been done to the survey as it is: its import, the acts in force since then, and all exports
    /// since then. Calculates digests that are not known yet.
    ProcessingRecord record(const Journal& journal);

  private:
    struct Import {
        ImportSummary summary;
        RecordedImport what;
        std::size_t acts = 0;  ///< acts that were done up to it
    };
    struct Export {
        RecordedExport what;
        int importNumber = 0;
        std::uint64_t content = 0;
    };

    std::vector<Import> imports_;  // by their numbers, from 1
    std::vector<Export> exports_;
};

}  // namespace tessel
