// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/transect_file.h"

#include "base/file_replacement.h"
#include "base/sha256.h"
#include "export/print_number.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>
#include <vector>

namespace tessel {

namespace {

static_assert(kLongestNumber <= 2 * kPrintZone);

constexpr std::size_t kChunk = std::size_t{1} << 16;

// The most characters of one line: six fields that each overrun a zone, and the line's end.
constexpr std::size_t kLongestLine = 6 * 2 * kPrintZone + 2;

// The columns that a line is made of, from the left; the row number is the last.
struct Fields {
    std::array<const double*, 6> columns;
    std::size_t count = 0;
    double rowOffset = 0;
    bool withRows = false;

    void add(const double* column) { columns[count++] = column; }
    double value(std::size_t field, SiteIndex site) const {
        const double stored = columns[field][site];
        return withRows && field + 1 == count ? stored + rowOffset : stored;
    }
};

Fields chooseFields(const Survey& survey, const TransectFormat& format) {
    Fields fields;
    if (survey.SiteIDPresent) fields.add(survey.SiteID.data());
    for (const int column : {kX, kY, kEM1})
        fields.add(survey.SiteData.column(column));
    if (survey.TwoEMColumns) fields.add(survey.SiteData.column(kEM2));
    if (format.withRows) fields.add(survey.SiteData.column(kRow));
    fields.withRows = format.withRows;
    fields.rowOffset = static_cast<double>(format.firstRow) - 1;
    return fields;
}

// Blanks up to the next zone boundary; a field that ends on one needs none. There is always room for a whole
// zone, so that a copy of fixed length serves.
char* fillZone(char* fieldStart, char* fieldEnd) {
    std::memset(fieldEnd, ' ', kPrintZone);
    const std::ptrdiff_t zones = fieldEnd - fieldStart <= kPrintZone ? 1 : 2;
    return fieldStart + zones * kPrintZone;
}

char* writeLine(char* out, const Fields& fields, SiteIndex site) {
    for (std::size_t field = 0; field < fields.count; ++field) {
        char* const start = out;
        out = printNumber(start, fields.value(field, site));
        if (field + 1 < fields.count) out = fillZone(start, out);
    }
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

}  // namespace

std::string recordFormat(bool siteIDs, bool twoEMColumns, bool withRows) {
    std::string names = siteIDs ? "Site_#  X_coord  Y_coord  EM1" : "X_coord  Y_coord  EM1";
    if (twoEMColumns) names += "  EM2";
    if (withRows) names += "  Row_#";
    return names;
}

SiteIndex sitesWithoutRow(const Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    return std::count_if(row, row + survey.NumSites,
                         [](double number) { return !(number >= 1 && std::trunc(number) == number); });
}

std::string exportNotice(const Survey& survey, SiteIndex withoutRow, const TransectFormat& format) {
    if (survey.NumSites == 0) return "The survey has no sites; the file will be empty.";
    if (!format.withRows) return {};
    const std::string written = std::to_string(format.firstRow - std::int64_t{1}) + ".";
    if (withoutRow == 1) return "1 site has no valid row number; it will be written with row " + written;
    if (withoutRow > 1)
        return std::to_string(withoutRow) +
               " sites have no valid row number; they will be written with row " + written;
    if (!rowsAreUsable(survey))
        return "The search for rows found too many and stopped half-way: the row numbers are of no use.";
    return {};
}

namespace {

template <typename Write>
void writeLines(const Survey& survey, const TransectFormat& format, Write write) {
    const Fields fields = chooseFields(survey, format);
    std::vector<char> chunk(kChunk);
    char* const full = chunk.data() + kChunk - kLongestLine;
    char* out = chunk.data();
    for (SiteIndex site = 0; site < survey.NumSites; ++site) {
        out = writeLine(out, fields, site);
        if (out < full) continue;
        write(std::string_view(chunk.data(), static_cast<std::size_t>(out - chunk.data())));
        out = chunk.data();
    }
    write(std::string_view(chunk.data(), static_cast<std::size_t>(out - chunk.data())));
}

}  // namespace

void writeTransectFile(const Survey& survey, const std::string& path, const TransectFormat& format) {
    FileReplacement file(path);
    writeLines(survey, format, [&file](std::string_view lines) { file.write(lines); });
    file.commit();
}

void writeTransectFileAndRecord(const Survey& survey, const std::string& path, const TransectFormat& format,
                                const std::function<std::string(const WrittenFile&)>& record) {
    FileReplacement file(path);
    FileReplacement recordFile(recordPath(path));
    Sha256 sha;
    WrittenFile written;
    writeLines(survey, format, [&](std::string_view lines) {
        file.write(lines);
        sha.add(lines);
        written.size += std::ssize(lines);
    });
    written.sha256 = sha.digest();
    recordFile.write(record(written));
    // The record first: it alone need be taken back when the other fails.
    FileReplacement::commitTogether(recordFile, file);
}

std::string recordPath(const std::string& exportPath) {
    return exportPath + ".record.yaml";
}

}  // namespace tessel
