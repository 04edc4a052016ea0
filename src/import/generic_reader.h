// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "import/block_import.h"
#include "import/import_result.h"

#include <array>
#include <cstdint>
#include <string>

namespace tessel {

class ErrorLog;

/// A column layout of a generic sensor file: site number, X, Y, first reading, second reading, row number,
/// those in brackets only if the layout has them.
struct GenericLayout {
    bool siteNumber;
    bool secondReading;
    bool rowNumber;

    int columns() const { return 3 + siteNumber + secondReading + rowNumber; }
};

/// The eight layouts, in the order in which they are offered.
inline constexpr std::array<GenericLayout, 8> kGenericLayouts = {{
    {false, false, true},
    {false, true, true},
    {true, false, true},
    {true, true, true},
    {false, false, false},
    {false, true, false},
    {true, false, false},
    {true, true, false},
}};

/// What the window of the generic import asks for.
struct GenericOptions {
    std::string path;          ///< the sensor file
    std::string errorLogPath;  ///< where dropped records go
    double cutoff = 0;         ///< smallest accepted reading (mS/m)
    GenericLayout layout = kGenericLayouts[6];
    bool decimalCommas = false;  ///< semicolons separate values, decimal signs are commas
};

/// Reads a comma- or blank-delimited file into a new survey, dropping records that cannot be used into the
/// error log, checks its row numbers, counts the sites of its rows and calculates the distances of the
/// measure that `parameters` has in force (true distance while it has none).
///
/// Values stand between commas, blanks, tabs and line ends; a record is as many values as the layout has
/// columns and need not be one line. Blanks around a comma belong to it. A value missing between two commas
/// or before the first comma of a record is a value that is not numeric. When a line ends with a comma in the
/// middle of a record, and the next line by itself holds as many values as the layout takes (missing ones
/// counted, also the one behind its last comma), the next line is a record of its own and the one before it
/// is dropped; else the record goes on. A quoted value is its content. With `decimalCommas` the same holds
/// for semicolons, a comma is the decimal sign, and blanks separate nothing.
///
/// Row numbers are taken as they are; one that is not whole is never the same as or one more than another.
///
/// Parameters of row detection and of the other import are taken over from `parameters`. Throws RunTimeError,
/// leaving the last import's error log, when the file cannot be read. However it is read, the result is the
/// same.
ImportResult importGenericFile(const GenericOptions& options, const SurveyParameters& parameters,
                               const ImportPlan& plan = {});

/// Counts the rows of a survey with row numbers into NumRows and RowIndex if these are of use. Requires a
/// site.
ImportedRows checkRows(Survey& survey);

/// The reading alone: fills SiteData, SiteID, SourceLine and NumSites and the two flags of the layout; the
/// table has exactly the sites that were kept. What the file itself is like goes into the summary. Returns
/// the number of dropped records.
std::int64_t readGenericFile(const GenericOptions& options, Survey& survey, ErrorLog& log,
                             ImportSummary& summary, const ImportPlan& plan = {});

}  // namespace tessel
