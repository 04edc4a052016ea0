// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/table_file.h"

#include "base/file_replacement.h"
#include "base/run_time_error.h"
#include "geodesy/coordinate_systems.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>

namespace tessel {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
// The most characters of a number, and of a line's numbers with their separators.
constexpr std::size_t kLongestField = 32;
constexpr std::size_t kColumns = static_cast<std::size_t>(TableColumn::kLine) + 1;
constexpr std::size_t kLongestLine = kColumns * (kLongestField + 1);

constexpr std::array kOwnColumns = {TableColumn::kSite, TableColumn::kX,   TableColumn::kY,
                                    TableColumn::kEM1,  TableColumn::kEM2, TableColumn::kRow};

bool isGeographic(TableColumn column) {
    return column == TableColumn::kLongitude || column == TableColumn::kLatitude;
}

int surveyColumn(TableColumn column) {
    switch (column) {
        case TableColumn::kSite:
            return kSiteIDs;
        case TableColumn::kX:
            return kX;
        case TableColumn::kY:
            return kY;
        case TableColumn::kEM1:
            return kEM1;
        case TableColumn::kEM2:
            return kEM2;
        default:
            return kRow;
    }
}

// Lines of the table that end alike. What has no entries is left empty.
struct TableLines {
    std::array<std::span<const double>, kColumns> values;
    std::vector<double> longitudes, latitudes;
    std::span<const std::uint32_t> sourceLines;
    SiteIndex count = 0;
    std::string end;

    std::span<const double>& valuesOf(TableColumn column) { return values[static_cast<std::size_t>(column)]; }
    std::span<const double> valuesOf(TableColumn column) const {
        return values[static_cast<std::size_t>(column)];
    }
};

// A blank ends a value for some readers.
std::string quoted(std::string_view text, char separator) {
    const std::array special = {separator, '"', ' ', '\t', '\r', '\n'};
    if (text.find_first_of(std::string_view(special.data(), special.size())) == text.npos)
        return std::string(text);
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

// An exponent only where zeros would make the number unreadable.
char* writeNumber(char* out, double value) {
    if (!std::isfinite(value)) throw RunTimeError::overflow();
    const double size = std::abs(value);
    if (size == 0 || (size >= 1e-5 && size < 1e17))
        return std::to_chars(out, out + kLongestField, value, std::chars_format::fixed).ptr;
    return std::to_chars(out, out + kLongestField, value).ptr;
}

char* writeField(char* out, const TableLines& lines, TableColumn column, std::size_t i) {
    if (column == TableColumn::kLine) {
        // Nothing of a line whose number is not known.
        const std::uint32_t line = lines.sourceLines.empty() ? 0 : lines.sourceLines[i];
        return line == 0 ? out : std::to_chars(out, out + kLongestField, line).ptr;
    }
    const std::span<const double> values = lines.valuesOf(column);
    const bool isThere = !values.empty() && !(isGeographic(column) && !std::isfinite(values[i]));
    return isThere ? writeNumber(out, values[i]) : out;
}

void writeLines(FileReplacement& file, const TableFormat& format, const TableLines& lines) {
    std::array<char, kLongestLine> line;
    for (std::size_t i = 0; i < static_cast<std::size_t>(lines.count); ++i) {
        char* out = line.data();
        for (const TableColumn column : format.columns) {
            if (column != format.columns.front()) *out++ = format.separator;
            out = writeField(out, lines, column, i);
        }
        file.write({line.data(), static_cast<std::size_t>(out - line.data())});
        file.write(lines.end);
    }
}

std::string lineEnd(const TableFormat& format, std::string_view removedBy) {
    if (!format.withRemoved) return std::string(kLineEnd);
    return format.separator + quoted(removedBy, format.separator) + std::string(kLineEnd);
}

TableLines linesOf(const Survey& survey) {
    TableLines lines;
    const auto sites = static_cast<std::size_t>(survey.NumSites);
    for (const TableColumn column : kOwnColumns) {
        if (!hasColumn(survey, column)) continue;
        const int from = surveyColumn(column);
        const double* const values = from == kSiteIDs ? survey.SiteID.data() : survey.SiteData.column(from);
        lines.valuesOf(column) = {values, sites};
    }
    if (!survey.SourceLine.empty()) lines.sourceLines = std::span(survey.SourceLine).first(sites);
    lines.count = survey.NumSites;
    return lines;
}

// Of the sites that an act has taken out.
TableLines linesOf(const Act& act, const Survey& survey, bool convertedSince) {
    TableLines lines;
    for (const TableColumn column : kOwnColumns) {
        const bool isPosition = column == TableColumn::kX || column == TableColumn::kY;
        if (hasColumn(survey, column) && !(isPosition && convertedSince))
            lines.valuesOf(column) = act.difference.removedEntries(surveyColumn(column));
    }
    lines.sourceLines = act.difference.removedLines();
    lines.count = sitesIn(act.difference.removed());
    return lines;
}

bool wantsDegrees(const TableFormat& format) {
    return std::ranges::any_of(format.columns, isGeographic);
}

// Longitudes and latitudes of the lines' positions, none where these are missing.
void addDegrees(TableLines& lines, const Transformation& way) {
    const std::span<const double> x = lines.valuesOf(TableColumn::kX), y = lines.valuesOf(TableColumn::kY);
    lines.longitudes.assign(x.begin(), x.end());
    lines.latitudes.assign(y.begin(), y.end());
    way.toDegrees(lines.longitudes.data(), lines.latitudes.data(), x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        if (x[i] == 0 && y[i] == 0) lines.longitudes[i] = lines.latitudes[i] = HUGE_VAL;
    lines.valuesOf(TableColumn::kLongitude) = lines.longitudes;
    lines.valuesOf(TableColumn::kLatitude) = lines.latitudes;
}

void writeRemoved(FileReplacement& file, const TableFormat& format, const Journal& journal,
                  const Transformation* way) {
    std::size_t lastConversion = journal.position();
    while (lastConversion > 0 && journal.act(lastConversion - 1).kind != ActKind::kConvert)
        --lastConversion;
    for (std::size_t i = journal.firstSinceImport(); i < journal.position(); ++i) {
        TableLines lines = linesOf(journal.act(i), journal.survey(), i < lastConversion);
        lines.end = lineEnd(format, journal.act(i).words);
        if (way != nullptr) addDegrees(lines, *way);
        writeLines(file, format, lines);
    }
}

void writeHeader(FileReplacement& file, const TableFormat& format) {
    std::string header;
    for (const TableColumn column : format.columns) {
        if (!header.empty()) header += format.separator;
        header += quoted(columnName(column, format.positionUnit), format.separator);
    }
    file.write(header + lineEnd(format, "Removed"));
}

}  // namespace

bool hasColumn(const Survey& survey, TableColumn column) {
    if (column == TableColumn::kSite) return survey.SiteIDPresent;
    if (column == TableColumn::kEM2) return survey.TwoEMColumns;
    if (isGeographic(column)) return survey.PositionsCRS != 0;
    return column != TableColumn::kLine || !survey.SourceLine.empty();
}

std::string columnName(TableColumn column, std::string_view positionUnit) {
    const std::string unit = " (" + std::string(positionUnit) + ")";
    switch (column) {
        case TableColumn::kSite:
            return "Site";
        case TableColumn::kX:
            return "X" + unit;
        case TableColumn::kY:
            return "Y" + unit;
        case TableColumn::kLongitude:
            return "Longitude (degrees)";
        case TableColumn::kLatitude:
            return "Latitude (degrees)";
        case TableColumn::kEM1:
            return "EM1 (mS/m)";
        case TableColumn::kEM2:
            return "EM2 (mS/m)";
        case TableColumn::kRow:
            return "Row";
        case TableColumn::kLine:
            return "Line";
    }
    return {};
}

std::string tableColumns(const TableFormat& format) {
    std::string names;
    for (const TableColumn column : format.columns)
        names += (names.empty() ? "" : ", ") + columnName(column, format.positionUnit);
    return format.withRemoved ? names + ", Removed" : names;
}

SiteIndex removedSites(const Journal& journal) {
    SiteIndex sites = 0;
    for (std::size_t i = journal.firstSinceImport(); i < journal.position(); ++i)
        sites += sitesIn(journal.act(i).difference.removed());
    return sites;
}

std::string tableNotice(const Journal& journal, const TableFormat& format) {
    const Survey& survey = journal.survey();
    if (format.columns.empty()) return "Choose at least one column.";
    if (format.withRemoved && journal.firstSinceImport() == 0 && journal.forgotten() > 0)
        return "What was done first is no longer known: sites that were taken out then are missing.";
    const bool withRows = std::ranges::find(format.columns, TableColumn::kRow) != format.columns.end();
    if (withRows && survey.NumSites > 0 && !rowsAreUsable(survey))
        return "The search for rows found too many and stopped half-way: the row numbers are of no use.";
    return {};
}

void writeTable(const Journal& journal, const std::string& path, const TableFormat& format) {
    std::optional<Transformation> way;
    if (wantsDegrees(format)) way.emplace(journal.survey().PositionsCRS);
    FileReplacement file(path);
    writeHeader(file, format);
    TableLines sites = linesOf(journal.survey());
    sites.end = lineEnd(format, {});
    if (way) addDegrees(sites, *way);
    writeLines(file, format, sites);
    if (format.withRemoved) writeRemoved(file, format, journal, way ? &*way : nullptr);
    file.commit();
}

}  // namespace tessel
