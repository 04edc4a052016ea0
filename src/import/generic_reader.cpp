// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/generic_reader.h"

#include "base/text_lines.h"
#include "import/error_log.h"
#include "import/plain_lines.h"
#include "import/record_assembler.h"
#include "rows/row_detection.h"

#include <array>
#include <string>
#include <string_view>

namespace tessel {

namespace {

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

// Makes sites of the records of a block, or lines of the error log.
template <class Values>
class GenericReader {
  public:
    using Carried = OpenRecord;

    explicit GenericReader(const GenericOptions& options)
        : options_(options),
          at_(options.layout),
          plain_(at_.count),
          records_(at_.count, *this),
          found_(FileColumns{options.layout.siteNumber, options.layout.secondReading,
                             options.layout.rowNumber, 1}) {}
    GenericReader(const GenericReader&) = delete;
    GenericReader& operator=(const GenericReader&) = delete;

    Carried read(std::string_view text, const Carried& carried) {
        clear();
        if (!carried.isNothing()) records_.goOnWith(carried);
        plain_.beginText(text);
        TextLines lines(text);
        for (std::string_view line; nextLine(lines, line);)
            if (found_.sites() > 0 && found_.firstSiteLength == 0) found_.firstSiteLength = line.size();
        found_.texts = rejectedTexts_;
        return records_.takeOpenRecord(found_.linesRead);
    }

    // Reads the end of a file behind this.
    void finish(const Carried& carried) {
        clear();
        if (!carried.isNothing()) records_.goOnWith(carried);
        records_.finishFile();
        found_.texts = rejectedTexts_;
    }

    const FoundSites& found() const { return found_; }

    void record(const RecordValues& record) {
        const std::string_view reason = check(record.values);
        if (reason.empty())
            append([&](std::size_t place) { return record.values[place].number; }, record.line);
        else
            drop(record, reason);
    }

    void incompleteRecord(const RecordValues& record, bool atEnd) {
        drop(record, atEnd ? reject_reason::kIncompleteAtEnd : reject_reason::kIncomplete);
    }

    void lineNotFitting(std::int64_t line) { found_.odd.add(line); }

  private:
    void clear() {
        found_.clear();
        rejectedTexts_.clear();
    }

    // Reads one line; false when there is none.
    bool nextLine(TextLines& lines, std::string_view& line) {
        if (records_.isBetweenRecords() && nextPlainLine(lines, line)) return true;
        if (!lines.next(line)) return false;
        records_.readLine(line, ++found_.linesRead);
        return true;
    }

    // Reads a line if it is plain and a site.
    bool nextPlainLine(TextLines& lines, std::string_view& line) {
        const char* const first = lines.rest().data();
        typename PlainLines<Values>::Numbers numbers;
        const char* const end = plain_.read(first, numbers);
        if (end == nullptr || !isAccepted(numbers[at_.em1])) return false;
        if (options_.layout.secondReading && !isAccepted(numbers[at_.em2])) return false;
        line = {first, static_cast<std::size_t>(end - first)};
        lines.passOver(end);
        append([&](std::size_t place) { return numbers[place]; }, ++found_.linesRead);
        return true;
    }

    bool isAccepted(double reading) const { return reading >= options_.cutoff; }

    // In the order of the other import, the second reading before the coordinates.
    std::string_view check(const ScannedValue* values) const {
        const auto numeric = [values](std::size_t place) { return values[place].numeric; };
        const auto accepted = [this, values](std::size_t place) { return isAccepted(values[place].number); };
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

    template <class NumberAt>
    void append(NumberAt numberAt, std::int64_t line) {
        found_.next(kX) = numberAt(at_.x);
        found_.next(kY) = numberAt(at_.y);
        found_.next(kEM1) = numberAt(at_.em1);
        if (options_.layout.secondReading) found_.next(kEM2) = numberAt(at_.em2);
        if (options_.layout.rowNumber) found_.next(kRow) = numberAt(at_.row);
        if (options_.layout.siteNumber) found_.nextSiteID() = numberAt(at_.siteID);
        found_.addSite(line);
    }

    void drop(const RecordValues& record, std::string_view reason) {
        const std::size_t begin = rejectedTexts_.size();
        rejectedTexts_ += record.values[0].text;
        for (std::size_t i = 1; i < record.count; ++i)
            rejectedTexts_.append(" ").append(record.values[i].text);
        found_.rejections.push_back({record.line, begin, rejectedTexts_.size() - begin, reason});
    }

    const GenericOptions& options_;
    const ColumnPlaces at_;
    PlainLines<Values> plain_;
    RecordAssembler<BasicValueScanner<Values>, GenericReader> records_;
    FoundSites found_;
    std::string rejectedTexts_;
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

template <class Values>
void readRecords(LineBlocks& file, SiteCollector& sites, const GenericOptions& options,
                 const ImportPlan& plan) {
    BlockImport<GenericReader<Values>> blocks(file, sites);
    GenericReader<Values> end(options);
    end.finish(blocks.run(plan, options));
    sites.add(end.found());
}

}  // namespace

std::int64_t readGenericFile(const GenericOptions& options, Survey& survey, ErrorLog& log,
                             ImportSummary& summary, const ImportPlan& plan) {
    LineBlocks file(options.path, plan.blockSize);
    summary.kind = recogniseFileKind(file.firstBytes());
    survey.SiteIDPresent = options.layout.siteNumber;
    survey.TwoEMColumns = options.layout.secondReading;
    SiteCollector sites(survey, log, file.fileSize());
    const auto read = options.decimalCommas ? readRecords<DecimalCommaValues> : readRecords<PlainValues>;
    read(file, sites, options, plan);
    sites.finish(survey.NumSites);
    summary.path = options.path;
    summary.file = file.fileState();
    summary.fields = fieldPlaces(options.layout);
    summary.cutoff = options.cutoff;
    summary.decimalCommasRead = options.decimalCommas;
    summary.linesRead = sites.linesRead();
    summary.linesNotFitting = sites.odd().lines;
    summary.firstLineNotFitting = sites.odd().first;
    return sites.rejected();
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

ImportResult importGenericFile(const GenericOptions& options, const SurveyParameters& parameters,
                               const ImportPlan& plan) {
    ImportResult result;
    Survey& survey = result.survey;
    static_cast<SurveyParameters&>(survey) = parameters;
    if (!survey.UseTrueDist && !survey.UseXDist && !survey.UseYDist) survey.chooseDistance(1);
    ErrorLog log(options.errorLogPath);
    result.rejected = readGenericFile(options, survey, log, result.summary, plan);
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
