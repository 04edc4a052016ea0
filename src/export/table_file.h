// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/journal.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// A table of the survey for other programs: a line for each site under a header, values between commas or
// semicolons, decimal signs points, quoting and line ends as RFC 4180 has them, UTF-8. A number is written
// with the fewest digits from which the same Double is read again.

/// The columns of a table in their order.
enum class TableColumn {
    kSite,
    kX,
    kY,
    kLongitude,  ///< degrees of WGS 84; empty for a position that is missing or has none
    kLatitude,
    kEM1,
    kEM2,
    kRow,
    kLine
};

struct TableFormat {
    std::vector<TableColumn> columns;  ///< in their order, at least one
    char separator = ',';
    /// Behind the sites those that were taken out, and a last column that says by what. Their values are
    /// those that they had then; positions that have been converted since, or have been given another
    /// coordinate system, are left empty.
    bool withRemoved = false;
    std::string positionUnit = "m";  ///< in the header
};

/// Whether the survey has something to put there.
bool hasColumn(const Survey& survey, TableColumn column);

/// A column's name with its unit as it stands in the header, without quotes.
std::string columnName(TableColumn column, std::string_view positionUnit);
/// The names of all, as a person reads them.
std::string tableColumns(const TableFormat& format);

/// How many sites acts in force have taken out since the import, as far as these acts are known.
SiteIndex removedSites(const Journal& journal);

/// What a user should know before the survey is written so; empty when there is nothing to say.
std::string tableNotice(const Journal& journal, const TableFormat& format);

/// Writes the table of the journal's survey. It is put in place whole and closed when this returns; on any
/// failure RunTimeError is thrown with path and reason, and a file of that name stays as it was. Throws
/// overflow when a number is not finite.
void writeTable(const Journal& journal, const std::string& path, const TableFormat& format);

}  // namespace tessel
