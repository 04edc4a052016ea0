// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/table_reader.h"

#include "base/text_lines.h"
#include "geodesy/position_conversion.h"
#include "import/column_shapes.h"
#include "import/error_log.h"
#include "import/generic_reader.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

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

// How many lines at the top of a block are none of the table.
struct LinesToSkip {
    int lines = 0;
    bool isNothing() const { return lines == 0; }
};

class TableReader {
  public:
    using Carried = LinesToSkip;

    explicit TableReader(const TableOptions& options)
        : options_(options),
          places_(options.roles),
          degrees_(options.has(TableRole::kLongitude)),
          x_(degrees_ ? TableRole::kLongitude : TableRole::kX),
          y_(degrees_ ? TableRole::kLatitude : TableRole::kY),
          splitter_(options.shape.separator),
          found_(FileColumns{options.has(TableRole::kSite), options.has(TableRole::kEM2),
                             options.has(TableRole::kRow), 1}) {}

    // Reads the lines that are not blank.
    Carried read(std::string_view text, Carried skip) {
        begin(text);
        TextLines lines(text);
        for (std::string_view line; lines.next(line);) {
            ++found_.linesRead;
            if (skip.lines > 0)
                --skip.lines;
            else if (!splitter_.split(line).empty())
                readFields(line);
        }
        return skip;
    }

    // Reads a single line, blank or not, that is known by this number.
    void readLine(std::string_view line, std::int64_t number) {
        begin(line);
        found_.linesRead = number;
        splitter_.split(line);
        readFields(line);
        found_.linesRead = 0;
    }

    const FoundSites& found() const { return found_; }

  private:
    void begin(std::string_view text) {
        found_.clear();
        found_.texts = text;
        for (ColumnShapes& column : shapes_)
            column.beginText(text);
    }

    void readFields(std::string_view line) {
        const std::string_view reason = readSite(splitter_.fields());
        if (!reason.empty())
            found_.reject(found_.linesRead, line, reason);
        else if (found_.sites() == 1)
            found_.firstSiteLength = line.size();
    }

    // A site of the line, or the reason why it is none; in the order of the other imports.
    std::string_view readSite(const std::vector<std::string_view>& fields) {
        const auto at = [&](SiteColumn column) -> double& { return found_.next(column); };
        const FileColumns& columns = found_.fileColumns();
        if (columns.siteID && !number(fields, TableRole::kSite, found_.nextSiteID()))
            return reject_reason::kSiteID;
        if (columns.em2) {
            if (!reading(fields, TableRole::kEM2, at(kEM2))) return reject_reason::kEM2;
            if (!(at(kEM2) >= options_.EMCutoff)) return reject_reason::kEM2BelowCutoff;
        }
        if (!coordinate(fields, x_, at(kX))) return reject_reason::kX;
        if (!coordinate(fields, y_, at(kY))) return reject_reason::kY;
        if (!reading(fields, TableRole::kEM1, at(kEM1))) return reject_reason::kEM1;
        if (!(at(kEM1) >= options_.EMCutoff)) return reject_reason::kEM1BelowCutoff;
        if (columns.row && !number(fields, TableRole::kRow, at(kRow))) return reject_reason::kRow;
        found_.addSite(found_.linesRead);
        return {};
    }

    // The number of a role's column. Where letters of directions may stand, none does in a shape.
    bool number(const std::vector<std::string_view>& fields, TableRole role, double& value,
                bool letters = false) {
        const std::size_t place = places_.of(role);
        if (place >= fields.size() || fields[place].empty()) return false;
        const std::string_view field = fields[place];
        ColumnShapes& shapes = shapes_[static_cast<std::size_t>(role)];
        const auto isWhole = [&field](std::size_t length) { return length == field.size(); };
        if (shapes.take(field.data(), value, isWhole) != nullptr) return true;
        const char sign = options_.shape.decimalSign;
        if (!readField(field, sign, letters, value)) return false;
        if (shapes.areOfUseAt(field.data())) shapes.learn(field.data(), field.data() + field.size(), sign);
        return true;
    }

    bool reading(const std::vector<std::string_view>& fields, TableRole role, double& value) {
        if (!number(fields, role, value)) return false;
        if (options_.NegateEM) value = 0.0 - value;  // and a reading of 0 gets no sign
        if (options_.DivideEMBy10) value /= 10.0;
        return true;
    }

    // Minutes of 60 or more are left as they stand, out of range for whoever looks at them.
    bool coordinate(const std::vector<std::string_view>& fields, TableRole role, double& value) {
        if (!number(fields, role, value, degrees_)) return false;
        if (!degrees_ || !options_.shape.minutes) return true;
        if (const double degrees = degreesFromMinutes(value); !std::isnan(degrees)) value = degrees;
        return true;
    }

    const TableOptions& options_;
    const RolePlaces places_;
    const bool degrees_;
    const TableRole x_, y_;
    FieldSplitter splitter_;
    std::array<ColumnShapes, kTableRoles> shapes_;
    FoundSites found_;
};

std::vector<FieldPlace> fieldPlaces(const TableOptions& options) {
    std::vector<FieldPlace> places;
    for (std::size_t i = 0; i < options.roles.size(); ++i)
        if (options.roles[i] != TableRole::kNothing)
            places.push_back({std::string(nameOf(options.roles[i])), static_cast<int>(i) + 1, 0});
    return places;
}

void describe(const TableOptions& options, const FileState& file, ImportSummary& summary) {
    summary.path = options.path;
    summary.file = file;
    summary.fields = fieldPlaces(options);
    summary.cutoff = options.EMCutoff;
    summary.isTable = true;
    summary.decimalCommasRead = options.shape.decimalSign == ',';
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

Survey surveyFor(const TableOptions& options) {
    Survey survey;
    static_cast<SurveyParameters&>(survey) = options;
    survey.SiteIDPresent = options.has(TableRole::kSite);
    survey.TwoEMColumns = options.has(TableRole::kEM2);
    return survey;
}

// Reads the points of a layer; each is a line of a table, and be it blank. Returns the number of those that
// are no sites.
std::int64_t readLayer(const TableOptions& options, LayerLines& lines, Survey& survey, ErrorLog& log) {
    survey = surveyFor(options);
    SiteCollector sites(survey, log, lines.fileSize());
    TableReader reader(options);
    for (std::string_view line; lines.next(line);) {
        reader.readLine(line, lines.lineNumber());
        sites.add(reader.found());
    }
    sites.finish(survey.NumSites);
    return sites.rejected();
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

std::int64_t readTable(const TableOptions& options, Survey& survey, ErrorLog& log, ImportSummary& summary,
                       const ImportPlan& plan) {
    LineBlocks file(options.path, plan.blockSize);
    summary.kind = recogniseFileKind(file.firstBytes());
    survey = surveyFor(options);
    SiteCollector sites(survey, log, file.fileSize());
    BlockImport<TableReader>(file, sites, LinesToSkip{options.shape.linesToSkip}).run(plan, options);
    sites.finish(survey.NumSites);
    describe(options, file.fileState(), summary);
    summary.linesRead = sites.linesRead();
    return sites.rejected();
}

ImportResult importTable(const TableOptions& options, const ImportPlan& plan) {
    return importLines(options, [&](ImportResult& result, ErrorLog& log) {
        result.rejected = readTable(options, result.survey, log, result.summary, plan);
    });
}

ImportResult importLayer(const TableOptions& options, const LayerReader& reader) {
    return importLines(options, [&](ImportResult& result, ErrorLog& log) {
        const auto lines = reader.open(options.path, options.layer);
        result.summary.kind.isText = true;
        result.rejected = readLayer(options, *lines, result.survey, log);
        describe(options, lines->fileState(), result.summary);
        result.summary.linesRead = result.survey.NumSites + result.rejected;
        result.survey.PositionsCRS = systemOf(options, reader);
    });
}

}  // namespace tessel
