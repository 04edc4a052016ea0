// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/table_reader.h"

#include "base/line_reader.h"
#include "geodesy/position_conversion.h"
#include "import/error_log.h"
#include "import/generic_reader.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

constexpr SiteIndex kCapacityStep = 100;
constexpr std::size_t kNoColumn = std::numeric_limits<std::size_t>::max();

// Where the columns of the roles stand.
class RolePlaces {
  public:
    explicit RolePlaces(const std::vector<TableRole>& roles) {
        places_.fill(kNoColumn);
        for (std::size_t i = 0; i < roles.size(); ++i)
            places_[static_cast<std::size_t>(roles[i])] = i;
    }
    std::size_t of(TableRole role) const { return places_[static_cast<std::size_t>(role)]; }

  private:
    std::array<std::size_t, kTableRoles> places_;
};

class TableSites {
  public:
    TableSites(const TableOptions& options, Survey& survey)
        : options_(options),
          survey_(survey),
          places_(options.roles),
          degrees_(options.has(TableRole::kLongitude)),
          x_(places_.of(degrees_ ? TableRole::kLongitude : TableRole::kX)),
          y_(places_.of(degrees_ ? TableRole::kLatitude : TableRole::kY)) {
        enlarge(kCapacityStep);
    }

    // A site of the line, or the reason why it is none; in the order of the other imports.
    std::string_view read(const std::vector<std::string_view>& fields, std::int64_t line) {
        const SiteIndex slot = survey_.NumSites;
        const auto at = [&](int column) -> double& { return survey_.SiteData(column, slot); };
        const auto place = static_cast<std::size_t>(slot);
        if (survey_.SiteIDPresent && !number(fields, places_.of(TableRole::kSite), survey_.SiteID[place]))
            return reject_reason::kSiteID;
        if (survey_.TwoEMColumns) {
            if (!reading(fields, TableRole::kEM2, at(kEM2))) return reject_reason::kEM2;
            if (!(at(kEM2) >= options_.EMCutoff)) return reject_reason::kEM2BelowCutoff;
        }
        if (!coordinate(fields, x_, at(kX))) return reject_reason::kX;
        if (!coordinate(fields, y_, at(kY))) return reject_reason::kY;
        if (!reading(fields, TableRole::kEM1, at(kEM1))) return reject_reason::kEM1;
        if (!(at(kEM1) >= options_.EMCutoff)) return reject_reason::kEM1BelowCutoff;
        const std::size_t row = places_.of(TableRole::kRow);
        at(kRow) = 1;
        if (row != kNoColumn && !number(fields, row, at(kRow))) return reject_reason::kRow;
        survey_.SourceLine[place] = sourceLine(line);
        if (++survey_.NumSites == survey_.SiteData.capacity()) enlarge(survey_.NumSites + kCapacityStep);
        return {};
    }

    void reserveFor(std::int64_t fileSize, std::size_t lineLength) {
        survey_.SiteData.reserve(fileSize / static_cast<std::int64_t>(lineLength + 1) + 2 * kCapacityStep);
    }

    // Takes back the room that no site needed; what lines that are no sites have left there is gone then.
    void finish() {
        survey_.SiteData.resize(survey_.NumSites);
        survey_.SourceLine.resize(static_cast<std::size_t>(survey_.NumSites));
        if (survey_.SiteIDPresent) survey_.SiteID.resize(static_cast<std::size_t>(survey_.NumSites));
    }

  private:
    bool number(const std::vector<std::string_view>& fields, std::size_t place, double& value,
                bool letters = false) const {
        return place < fields.size() && readField(fields[place], options_.shape.decimalSign, letters, value);
    }

    bool reading(const std::vector<std::string_view>& fields, TableRole role, double& value) const {
        if (!number(fields, places_.of(role), value)) return false;
        if (options_.NegateEM) value = 0.0 - value;  // and a reading of 0 gets no sign
        if (options_.DivideEMBy10) value /= 10.0;
        return true;
    }

    // Minutes of 60 or more are left as they stand, out of range for whoever looks at them.
    bool coordinate(const std::vector<std::string_view>& fields, std::size_t place, double& value) const {
        if (!number(fields, place, value, degrees_)) return false;
        if (!degrees_ || !options_.shape.minutes) return true;
        if (const double degrees = degreesFromMinutes(value); !std::isnan(degrees)) value = degrees;
        return true;
    }

    void enlarge(SiteIndex capacity) {
        survey_.SiteData.resize(capacity);
        survey_.SourceLine.resize(static_cast<std::size_t>(capacity));
        if (survey_.SiteIDPresent) survey_.SiteID.resize(static_cast<std::size_t>(capacity));
    }

    const TableOptions& options_;
    Survey& survey_;
    const RolePlaces places_;
    const bool degrees_;
    const std::size_t x_, y_;
};

std::vector<FieldPlace> fieldPlaces(const TableOptions& options) {
    std::vector<FieldPlace> places;
    for (std::size_t i = 0; i < options.roles.size(); ++i)
        if (options.roles[i] != TableRole::kNothing)
            places.push_back({std::string(nameOf(options.roles[i])), static_cast<int>(i) + 1, 0});
    return places;
}

template <typename Lines>
void describe(const TableOptions& options, const Lines& file, ImportSummary& summary) {
    summary.path = options.path;
    summary.file = file.fileState();
    summary.fields = fieldPlaces(options);
    summary.cutoff = options.EMCutoff;
    summary.isTable = true;
    summary.decimalCommasRead = options.shape.decimalSign == ',';
    summary.linesRead = file.lineNumber();
}

// The survey has no distances yet: the way back is not wanted.
void makeMetres(const TableOptions& options, Survey& survey, ImportSummary& summary) {
    PositionRequest request{PositionKind::kDegrees, false, options.system};
    const PositionCheck check = checkPositions(survey, request);
    if (request.system == 0 && check.middle) request.system = utmZoneAt(*check.middle);
    summary.positionsKept = badPositionsInWords(survey, check);
    if (request.system != 0) replacePositions(survey, convertedPositions(survey, request));
}

ImportedRows numberedRows(Survey& survey) {
    const ImportedRows rows = checkRows(survey);
    if (!isFatal(rows)) Calculate_Chosen_Distance(survey);
    return rows;
}

ImportedRows rowsByDistance(Survey& survey) {
    Calculate_Chosen_Distance(survey);
    return Assign_Row(survey) == RowDetection::kAssigned ? ImportedRows::kUsable : ImportedRows::kTooManyRows;
}

// What is no line of a table at all; of a layer each is one, and be it blank.
bool isPassedOver(const LineReader& file, const TableOptions& options, bool isBlank) {
    return isBlank || file.lineNumber() <= options.shape.linesToSkip;
}
bool isPassedOver(const LayerLines&, const TableOptions&, bool) {
    return false;
}

// Reads sites, with a reason in the log for every line that is none.
template <typename Lines>
std::int64_t readLines(const TableOptions& options, Lines& file, Survey& survey, ErrorLog& log) {
    survey = Survey{};
    static_cast<SurveyParameters&>(survey) = options;
    survey.SiteIDPresent = options.has(TableRole::kSite);
    survey.TwoEMColumns = options.has(TableRole::kEM2);
    TableSites sites(options, survey);
    FieldSplitter splitter(options.shape.separator);
    std::int64_t rejected = 0;
    for (std::string_view line; file.next(line);) {
        const std::vector<std::string_view>& fields = splitter.split(line);
        if (isPassedOver(file, options, fields.empty())) continue;
        const std::string_view reason = sites.read(fields, file.lineNumber());
        if (reason.empty()) {
            if (survey.NumSites == 1) sites.reserveFor(file.fileSize(), line.size());
            continue;
        }
        log.reject(file.lineNumber(), line, reason);
        ++rejected;
    }
    sites.finish();
    return rejected;
}

// read(result, log) gives the sites.
template <typename Read>
ImportResult importLines(const TableOptions& options, Read read) {
    ImportResult result;
    Survey& survey = result.survey;
    ErrorLog log(options.errorLogPath);
    read(result, log);
    if (survey.NumSites > 0) {
        if (options.has(TableRole::kLongitude)) makeMetres(options, survey, result.summary);
        result.rows = options.has(TableRole::kRow) ? numberedRows(survey) : rowsByDistance(survey);
        if (result.rows == ImportedRows::kUsable) Calculate_NumPoints(survey);
    }
    log.commit();
    log.describe(result.summary);
    return result;
}

// The system of a layer, where the positions are taken that it is about: the first two columns.
int systemOf(const TableOptions& options, const LayerReader& reader) {
    if (options.roles.size() < 2 || options.roles[0] != TableRole::kX || options.roles[1] != TableRole::kY)
        return 0;
    const auto layers = reader.layersIn(options.path);
    if (!layers) return 0;
    const auto layer = std::ranges::find(*layers, options.layer, &PointLayer::name);
    return layer == layers->end() ? 0 : layer->system;
}

}  // namespace

bool TableOptions::has(TableRole role) const {
    return std::ranges::find(roles, role) != roles.end();
}

std::int64_t readTable(const TableOptions& options, Survey& survey, ErrorLog& log, ImportSummary& summary) {
    LineReader file(options.path);
    summary.kind = recogniseFileKind(file.firstBytes());
    const std::int64_t rejected = readLines(options, file, survey, log);
    describe(options, file, summary);
    return rejected;
}

ImportResult importTable(const TableOptions& options) {
    return importLines(options, [&](ImportResult& result, ErrorLog& log) {
        result.rejected = readTable(options, result.survey, log, result.summary);
    });
}

ImportResult importLayer(const TableOptions& options, const LayerReader& reader) {
    return importLines(options, [&](ImportResult& result, ErrorLog& log) {
        const auto lines = reader.open(options.path, options.layer);
        result.summary.kind.isText = true;
        result.rejected = readLines(options, *lines, result.survey, log);
        describe(options, *lines, result.summary);
        result.summary.linesRead = result.survey.NumSites + result.rejected;
        result.survey.PositionsCRS = systemOf(options, reader);
    });
}

}  // namespace tessel
