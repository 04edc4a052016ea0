#include "import/generic_reader.h"

#include "app/line_reader.h"
#include "import/error_log.h"
#include "import/value_scanner.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace {

// The table begins with room for this many sites and grows by as many when it is full.
constexpr SiteIndex kCapacityStep = 100;
constexpr std::size_t kMostColumns = 6;

// Where the columns of a layout stand in a record; a column that it lacks stands at kMostColumns.
struct ColumnPlaces {
    std::size_t siteID = kMostColumns, x, y, em1, em2 = kMostColumns, row = kMostColumns, count = 0;

    explicit ColumnPlaces(const GenericLayout& layout) {
        if (layout.siteNumber) siteID = count++;
        x = count++;
        y = count++;
        em1 = count++;
        if (layout.secondReading) em2 = count++;
        if (layout.rowNumber) row = count++;
    }
};

class GenericReader {
  public:
    GenericReader(const GenericOptions& options, Survey& survey, ErrorLog& log)
        : options_(options), survey_(survey), log_(log), at_(options.layout) {
        // Columns that the layout lacks: no second reading, everything in row 1, no site number.
        values_[kMostColumns].number = 0;
        enlarge(kCapacityStep);
    }

    std::int64_t dropped() const { return dropped_; }

    void reserveFor(std::int64_t fileSize, std::size_t lineLength) {
        survey_.SiteData.reserve(fileSize / static_cast<std::int64_t>(lineLength + 1) + 2 * kCapacityStep);
        enlarge(capacity_);
    }

    void readLine(std::string_view line, std::int64_t lineNumber) {
        scanner_.beginLine(line);
        if (count_ == 0)
            scanner_.expectValue();
        else if (valueIsMissingBefore(line))
            closeRecord();
        while (scanner_.next(values_[count_])) {
            if (count_ == 0) recordLine_ = lineNumber;
            if (++count_ == at_.count) finishRecord();
        }
        if (count_ > 0) keepTexts();
    }

    void finishFile() {
        if (count_ > 0) drop(reject_reason::kIncomplete);
        survey_.SiteData.resize(survey_.NumSites);
        if (options_.layout.siteNumber) survey_.SiteID.resize(static_cast<std::size_t>(survey_.NumSites));
    }

  private:
    // A record that ends with a comma goes on in the next line, or its next value is missing and the next
    // line is a record of its own. Taking the latter for the former would put every value that follows into a
    // wrong column without a word.
    bool valueIsMissingBefore(std::string_view line) const {
        if (!scanner_.afterComma()) return false;
        ValueScanner ahead;
        ahead.beginLine(line);
        ScannedValue ignored;
        std::size_t values = 0;
        while (values <= at_.count && ahead.next(ignored))
            ++values;
        return values == at_.count;
    }

    void closeRecord() {
        for (; count_ < at_.count; ++count_)
            values_[count_] = {};
        finishRecord();
        scanner_.expectValue();
    }

    void finishRecord() {
        const std::string_view reason = check();
        if (reason.empty()) {
            append();
            count_ = 0;
        } else {
            drop(reason);
        }
    }

    // In the order of the other import, the second reading before the coordinates.
    std::string_view check() const {
        const auto numeric = [this](std::size_t place) { return values_[place].numeric; };
        const auto accepted = [this](std::size_t place) { return values_[place].number >= options_.cutoff; };
        const GenericLayout& layout = options_.layout;
        if (layout.siteNumber && !numeric(at_.siteID)) return reject_reason::kSiteID;
        if (layout.secondReading && !numeric(at_.em2)) return reject_reason::kEM2;
        if (layout.secondReading && !accepted(at_.em2)) return reject_reason::kEM2BelowCutoff;
        if (!numeric(at_.x)) return reject_reason::kX;
        if (!numeric(at_.y)) return reject_reason::kY;
        if (!numeric(at_.em1)) return reject_reason::kEM1;
        if (!accepted(at_.em1)) return reject_reason::kEM1BelowCutoff;
        if (layout.rowNumber && !(numeric(at_.row) && isWhole(values_[at_.row].number)))
            return reject_reason::kRow;
        return {};
    }

    static bool isWhole(double number) { return std::trunc(number) == number; }

    void append() {
        const SiteIndex slot = survey_.NumSites++;
        columns_[kX][slot] = values_[at_.x].number;
        columns_[kY][slot] = values_[at_.y].number;
        columns_[kEM1][slot] = values_[at_.em1].number;
        columns_[kEM2][slot] = options_.layout.secondReading ? values_[at_.em2].number : 0;
        columns_[kRow][slot] = options_.layout.rowNumber ? values_[at_.row].number : 1;
        if (options_.layout.siteNumber) siteIDs_[slot] = values_[at_.siteID].number;
        if (survey_.NumSites == capacity_) enlarge(capacity_ + kCapacityStep);
    }

    void drop(std::string_view reason) {
        std::string record(values_[0].text);
        for (std::size_t i = 1; i < count_; ++i)
            record.append(" ").append(values_[i].text);
        log_.reject(recordLine_, record, reason);
        ++dropped_;
        count_ = 0;
    }

    // A record goes on in the next line: what its values point to is about to vanish.
    void keepTexts() {
        for (std::size_t i = 0; i < count_; ++i) {
            if (values_[i].text.data() != kept_[i].data()) kept_[i].assign(values_[i].text);
            values_[i].text = kept_[i];
        }
    }

    void enlarge(SiteIndex capacity) {
        capacity_ = capacity;
        survey_.SiteData.resize(capacity);
        for (int c = 0; c < kSiteColumns; ++c)
            columns_[static_cast<std::size_t>(c)] = survey_.SiteData.column(c);
        if (!options_.layout.siteNumber) return;
        survey_.SiteID.resize(static_cast<std::size_t>(capacity));
        siteIDs_ = survey_.SiteID.data();
    }

    const GenericOptions& options_;
    Survey& survey_;
    ErrorLog& log_;
    const ColumnPlaces at_;
    SiteIndex capacity_ = 0;
    std::array<double*, kSiteColumns> columns_{};
    double* siteIDs_ = nullptr;

    ValueScanner scanner_;
    std::array<ScannedValue, kMostColumns + 1> values_;  // the record under way
    std::array<std::string, kMostColumns> kept_;         // texts of values on earlier lines
    std::size_t count_ = 0;                              // values of the record so far
    std::int64_t recordLine_ = 0;                        // the line on which it began
    std::int64_t dropped_ = 0;
};

// Counts the rows into NumRows if the row numbers are of use.
RowCheck checkRows(Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    if (row[0] != 1) return RowCheck::FirstRowNotOne;
    int rows = 1;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        if (row[i] == row[i - 1]) continue;
        if (row[i] != row[i - 1] + 1) return RowCheck::NotSequential;
        ++rows;
    }
    survey.NumRows = survey.RowIndex = rows;
    return RowCheck::Passed;
}

void completeRows(Survey& survey) {
    Calculate_Chosen_Distance(survey);
    if (survey.NumRows <= kMaxRows) Calculate_NumPoints(survey);
}

}  // namespace

std::int64_t readGenericFile(const GenericOptions& options, Survey& survey, ErrorLog& log,
                             ImportSummary& summary) {
    LineReader file(options.path);
    summary.kind = recogniseFileKind(file.firstBytes());
    survey.SiteIDPresent = options.layout.siteNumber;
    survey.TwoEMColumns = options.layout.secondReading;
    GenericReader reader(options, survey, log);
    for (std::string_view line; file.next(line);) {
        reader.readLine(line, file.lineNumber());
        if (survey.NumSites == 1) reader.reserveFor(file.fileSize(), line.size());
    }
    reader.finishFile();
    summary.path = options.path;
    summary.linesRead = file.lineNumber();
    return reader.dropped();
}

GenericImportResult importGenericFile(const GenericOptions& options, const SurveyParameters& parameters) {
    GenericImportResult result;
    Survey& survey = result.survey;
    static_cast<SurveyParameters&>(survey) = parameters;
    if (!survey.UseTrueDist && !survey.UseXDist && !survey.UseYDist) survey.chooseDistance(1);
    ErrorLog log(options.errorLogPath);
    result.dropped = readGenericFile(options, survey, log, result.summary);
    if (survey.NumSites > 0) {
        result.rowCheck = checkRows(survey);
        if (result.rowCheck == RowCheck::Passed) completeRows(survey);
    }
    log.commit();
    log.describe(result.summary);
    return result;
}
