// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tessel {

// The VARN-95 transect data file: one line for each site, ended by CR LF, without a header. A line holds the
// site ID (when the survey has them), X, Y, EM1, EM2 (when there are two readings) and the row number (unless
// it is left out), each in a print zone of 14 characters.

/// What the user may choose about the file.
struct TransectFormat {
    bool withRows = true;  ///< false: the grid format, without row numbers
    int firstRow = 1;      ///< the row number written for row 1; the others follow
};

/// The names of the fields on a line, as a person reads them: "X_coord  Y_coord  EM1  Row_#".
std::string recordFormat(bool siteIDs, bool twoEMColumns, bool withRows);

/// The width of a print zone. A field begins at the first zone boundary at or behind the end of the one
/// before it: one that overruns its zone pushes the next field on.
inline constexpr int kPrintZone = 14;

/// The number of sites whose row number is no whole number from 1. One pass over the row column.
SiteIndex sitesWithoutRow(const Survey& survey);

/// What a user should know before a survey with so many sites without a row number is written with these
/// choices; empty when there is nothing to say.
std::string exportNotice(const Survey& survey, SiteIndex withoutRow, const TransectFormat& format);

/// Writes the file (with no site an empty one). It is put in place whole and closed when this returns; on any
/// failure RunTimeError is thrown with path and reason, and a file of that name stays as it was. Throws
/// overflow when a number of the survey is not finite.
void writeTransectFile(const Survey& survey, const std::string& path, const TransectFormat& format);

/// What is known of an exported file before it is in place.
struct WrittenFile {
    std::int64_t size = 0;  ///< bytes
    std::string sha256;
};

/// Writes the file, and beside it (recordPath()) the text that `record` makes of it. Both are put in place,
/// or on any failure both stay as they were.
void writeTransectFileAndRecord(const Survey& survey, const std::string& path, const TransectFormat& format,
                                const std::function<std::string(const WrittenFile&)>& record);

/// Where the record of an exported file lies.
std::string recordPath(const std::string& exportPath);

}  // namespace tessel
