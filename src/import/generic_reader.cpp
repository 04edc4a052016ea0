// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/generic_reader.h"

#include "base/line_reader.h"
#include "import/error_log.h"
#include "import/record_assembler.h"
#include "rows/row_detection.h"

#include <array>
#include <string>
#include <string_view>

namespace tessel {

namespace {

// The table begins with room for this many sites and grows by as many when it is full.
constexpr SiteIndex kCapacityStep = 100;

// Where the columns of a layout stand in a record; the place of a column that it lacks is not used.
struct ColumnPlaces {
    std::size_t siteID = 0, x = 0, y = 0, em1 = 0, em2 = 0, row = 0, count = 0;

    explicit ColumnPlaces(const GenericLayout& layout) {
        if (layout.siteNumber) siteID = count++;
        x = count++;
        y = count++;
        em1 = count++;
        if (layout.secondReading) em2 = count++;
        if (layout.rowNumber) row = count++;
    }
};

// Makes sites of records, or lines of the error log.
class SiteCollector {
  public:
    SiteCollector(const GenericOptions& options, Survey& survey, ErrorLog& log, ImportSummary& summary)
        : options_(options), survey_(survey), log_(log), summary_(summary), at_(options.layout) {
        enlarge(kCapacityStep);
    }

    std::size_t columns() const { return at_.count; }
    std::int64_t dropped() const { return dropped_; }

    void reserveFor(std::int64_t fileSize, std::size_t lineLength) {
        survey_.SiteData.reserve(fileSize / static_cast<std::int64_t>(lineLength + 1) + 2 * kCapacityStep);
        enlarge(capacity_);
    }

    void record(const RecordValues& record) {
        const std::string_view reason = check(record.values);
        if (reason.empty())
            append(record);
        else
            drop(record, reason);
    }

    void incompleteRecord(const RecordValues& record, bool atEnd) {
        drop(record, atEnd ? reject_reason::kIncompleteAtEnd : reject_reason::kIncomplete);
    }

    void lineNotFitting(std::int64_t lineNumber) {
        if (summary_.linesNotFitting++ == 0) summary_.firstLineNotFitting = lineNumber;
    }

    // Takes back the room that no site needed.
    void finish() {
        const auto sites = static_cast<std::size_t>(survey_.NumSites);
        survey_.SiteData.resize(survey_.NumSites);
        survey_.SourceLine.resize(sites);
        if (options_.layout.siteNumber) survey_.SiteID.resize(sites);
    }

  private:
    // In the order of the other import, the second reading before the coordinates.
    std::string_view check(const ScannedValue* values) const {
        const auto numeric = [values](std::size_t place) { return values[place].numeric; };
        const auto accepted = [this, values](std::size_t place) {
            return values[place].number >= options_.cutoff;
        };
        const GenericLayout& layout = options_.layout;
        if (layout.siteNumber && !numeric(at_.siteID)) return reject_reason::kSiteID;
        if (layout.secondReading && !numeric(at_.em2)) return reject_reason::kEM2;
        if (layout.secondReading && !accepted(at_.em2)) return reject_reason::kEM2BelowCutoff;
        if (!numeric(at_.x)) return reject_reason::kX;
        if (!numeric(at_.y)) return reject_reason::kY;
        if (!numeric(at_.em1)) return reject_reason::kEM1;
        if (!accepted(at_.em1)) return reject_reason::kEM1BelowCutoff;
        if (layout.rowNumber && !numeric(at_.row)) return reject_reason::kRow;
        return {};
    }

    void append(const RecordValues& record) {
        const ScannedValue* const values = record.values;
        const SiteIndex slot = survey_.NumSites++;
        lines_[slot] = sourceLine(record.line);
        columns_[kX][slot] = values[at_.x].number;
        columns_[kY][slot] = values[at_.y].number;
        columns_[kEM1][slot] = values[at_.em1].number;
        columns_[kEM2][slot] = options_.layout.secondReading ? values[at_.em2].number : 0;
        columns_[kRow][slot] = options_.layout.rowNumber ? values[at_.row].number : 1;
        if (options_.layout.siteNumber) siteIDs_[slot] = values[at_.siteID].number;
        if (survey_.NumSites == capacity_) enlarge(capacity_ + kCapacityStep);
    }

    void drop(const RecordValues& record, std::string_view reason) {
        std::string text(record.values[0].text);
        for (std::size_t i = 1; i < record.count; ++i)
            text.append(" ").append(record.values[i].text);
        log_.reject(record.line, text, reason);
        ++dropped_;
    }

    void enlarge(SiteIndex capacity) {
        capacity_ = capacity;
        survey_.SiteData.resize(capacity);
        for (int c = 0; c < kSiteColumns; ++c)
            columns_[static_cast<std::size_t>(c)] = survey_.SiteData.column(c);
        survey_.SourceLine.resize(static_cast<std::size_t>(capacity));
        lines_ = survey_.SourceLine.data();
        if (!options_.layout.siteNumber) return;
        survey_.SiteID.resize(static_cast<std::size_t>(capacity));
        siteIDs_ = survey_.SiteID.data();
    }

    const GenericOptions& options_;
    Survey& survey_;
    ErrorLog& log_;
    ImportSummary& summary_;
    const ColumnPlaces at_;
    SiteIndex capacity_ = 0;
    std::array<double*, kSiteColumns> columns_{};
    double* siteIDs_ = nullptr;
    std::uint32_t* lines_ = nullptr;

    std::int64_t dropped_ = 0;
};

std::vector<FieldPlace> fieldPlaces(const GenericLayout& layout) {
    std::vector<FieldPlace> places;
    const auto add = [&places](const char* name) {
        places.push_back({name, static_cast<int>(places.size()) + 1, 0});
    };
    if (layout.siteNumber) add("site number");
    for (const char* const name : {"X", "Y", "EM1"})
        add(name);
    if (layout.secondReading) add("EM2");
    if (layout.rowNumber) add("row");
    return places;
}

template <class Scanner>
void readRecords(LineReader& file, SiteCollector& sites, const Survey& survey) {
    RecordAssembler<Scanner, SiteCollector> records(sites.columns(), sites);
    for (std::string_view line; file.next(line);) {
        records.readLine(line, file.lineNumber());
        if (survey.NumSites == 1) sites.reserveFor(file.fileSize(), line.size());
    }
    records.finishFile();
    sites.finish();
}

}  // namespace

std::int64_t readGenericFile(const GenericOptions& options, Survey& survey, ErrorLog& log,
                             ImportSummary& summary) {
    LineReader file(options.path);
    summary.kind = recogniseFileKind(file.firstBytes());
    survey.SiteIDPresent = options.layout.siteNumber;
    survey.TwoEMColumns = options.layout.secondReading;
    SiteCollector sites(options, survey, log, summary);
    const auto read = options.decimalCommas ? readRecords<DecimalCommaScanner> : readRecords<ValueScanner>;
    read(file, sites, survey);
    summary.path = options.path;
    summary.file = file.fileState();
    summary.fields = fieldPlaces(options.layout);
    summary.cutoff = options.cutoff;
    summary.decimalCommasRead = options.decimalCommas;
    summary.linesRead = file.lineNumber();
    return sites.dropped();
}

ImportedRows checkRows(Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    if (row[0] != 1) return ImportedRows::kFirstRowNotOne;
    int rows = 1;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        if (row[i] == row[i - 1]) continue;
        if (row[i] != row[i - 1] + 1) return ImportedRows::kNotSequential;
        ++rows;
    }
    survey.NumRows = survey.RowIndex = rows;
    return rows > kMaxRows ? ImportedRows::kTooManyNumbered : ImportedRows::kUsable;
}

ImportResult importGenericFile(const GenericOptions& options, const SurveyParameters& parameters) {
    ImportResult result;
    Survey& survey = result.survey;
    static_cast<SurveyParameters&>(survey) = parameters;
    if (!survey.UseTrueDist && !survey.UseXDist && !survey.UseYDist) survey.chooseDistance(1);
    ErrorLog log(options.errorLogPath);
    result.rejected = readGenericFile(options, survey, log, result.summary);
    if (survey.NumSites > 0) {
        result.rows = checkRows(survey);
        if (!isFatal(result.rows)) Calculate_Chosen_Distance(survey);
        if (result.rows == ImportedRows::kUsable) Calculate_NumPoints(survey);
    }
    log.commit();
    log.describe(result.summary);
    return result;
}

}  // namespace tessel
