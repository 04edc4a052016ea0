// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/import_result.h"
#include "journal/journal.h"

#include <cstdint>
#include <string>

namespace tessel {

/// A whole number as it is printed among texts: a blank for the sign (or a minus sign), then the digits.
std::string numberField(std::int64_t number);

/// The report of the Trimble/EM-38 import. Lines are separated by line feeds.
std::string trimbleImportReport(std::int64_t valid, std::int64_t errors);

/// The report of the generic import. Lines are separated by line feeds.
std::string genericImportReport(std::int64_t valid, std::int64_t dropped);

/// What has to be said of rows after the report; empty where they are of use.
std::string importedRowsReport(ImportedRows rows);

/// The import as an act.
ActDescription describe(const ImportResult& result);

}  // namespace tessel
