// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "import/import_summary.h"

#include <cstdint>

namespace tessel {

/// What the rows of an import are worth. Row numbers of a file must begin with 1, and be the same as or one
/// more than the one before.
enum class ImportedRows {
    kUsable,           ///< or there is no site
    kTooManyRows,      ///< looked for by distance: more than kMaxRows, which leaves no row numbers of use
    kTooManyNumbered,  ///< numbered in the file as they must, and more than kMaxRows
    kFirstRowNotOne,
    kNotSequential,
};

/// Whether an import with such rows is given up, though its sites stay in memory.
inline bool isFatal(ImportedRows rows) {
    return rows == ImportedRows::kFirstRowNotOne || rows == ImportedRows::kNotSequential;
}

/// What a reader has made of a sensor file.
struct ImportResult {
    Survey survey;              ///< a new one, with distances and, where they are of use, rows
    std::int64_t rejected = 0;  ///< lines or records that are no site
    ImportedRows rows = ImportedRows::kUsable;
    ImportSummary summary;
};

}  // namespace tessel
