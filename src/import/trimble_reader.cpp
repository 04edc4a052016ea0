// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/trimble_reader.h"

#include "base/line_reader.h"
#include "base/numbers.h"
#include "import/error_log.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace tessel {

namespace {

// The table begins with room for this many sites and grows by as many, ten sites before it is full.
constexpr SiteIndex kCapacityStep = 100;
constexpr SiteIndex kSpareSites = 10;

// A field as a range of bytes of its line, empty for a layout that makes no sense.
struct ByteRange {
    std::size_t begin = 0, end = 0;

    explicit ByteRange(const FieldColumns& field) {
        if (field.Start < 1 || field.Len < 1) return;
        begin = static_cast<std::size_t>(field.Start) - 1;
        end = begin + static_cast<std::size_t>(field.Len);
    }

    // A field is as short as its line makes it; one that begins behind the line's end is empty.
    bool number(std::string_view line, double& value) const {
        const std::size_t last = std::min(end, line.size());
        return begin < last && parseNumber(line.data() + begin, line.data() + last, value);
    }
};

bool isDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

// The places between two bytes of a line at which the fields in use begin and end.
class FieldEdges {
  public:
    explicit FieldEdges(const TrimbleOptions& options) {
        if (options.SiteIDPresent) add(options.SiteIDField);
        if (options.TwoEMColumns) add(options.EM2Field);
        for (const FieldColumns& field : {options.XField, options.YField, options.EM1Field})
            add(field);
        std::sort(beside_.begin(), beside_.end());
        beside_.erase(std::unique(beside_.begin(), beside_.end()), beside_.end());
    }

    // Whether a digit stands on both sides of an edge: a number goes on outside of its field. Requires a line
    // that is not empty.
    bool cut(std::string_view line) {
        if (line.size() != lineLength_) goInto(line.size());
        // Hardly ever there is a digit beside a field, so only those few bytes are looked at, without a
        // branch.
        unsigned digits = 0;
        for (const std::size_t place : looked_)
            digits |= unsigned{isDigit(line[place])};
        return digits != 0 && hasDigitsOnBothSides(line);
    }

  private:
    void add(const FieldColumns& field) {
        const ByteRange range(field);
        if (range.end == 0) return;
        edges_.insert(edges_.end(), {range.begin, range.end});
        if (range.begin > 0) beside_.push_back(range.begin - 1);
        beside_.push_back(range.end);
    }

    // Neighbouring lines mostly have the same length. In the place of a byte that a line does not have the
    // first one beside a field is looked at once more.
    void goInto(std::size_t lineLength) {
        lineLength_ = lineLength;
        const std::size_t first = beside_.empty() ? 0 : beside_.front();
        looked_.fill(first < lineLength ? first : 0);
        for (std::size_t i = 0; i < beside_.size(); ++i)
            if (beside_[i] < lineLength) looked_[i] = beside_[i];
    }

    bool hasDigitsOnBothSides(std::string_view line) const {
        return std::any_of(edges_.begin(), edges_.end(), [&](std::size_t edge) {
            return edge > 0 && edge < line.size() && isDigit(line[edge - 1]) && isDigit(line[edge]);
        });
    }

    std::vector<std::size_t> edges_;        // the byte behind each
    std::vector<std::size_t> beside_;       // the bytes outside of a field and next to it, each once
    std::array<std::size_t, 10> looked_{};  // those of them that the line looked at last has
    std::size_t lineLength_ = 0;
};

// Lines whose numbers were read although an edge of a field cuts through digits.
class CutLines {
  public:
    explicit CutLines(const TrimbleOptions& options) : edges_(options) {}

    void look(std::string_view line, std::int64_t number) {
        if (!edges_.cut(line)) return;
        if (lines_++ == 0) first_ = number;
    }
    void describe(ImportSummary& summary) const {
        summary.linesCut = lines_;
        summary.firstLineCut = first_;
    }

  private:
    FieldEdges edges_;
    std::int64_t lines_ = 0, first_ = 0;
};

bool isBelowCutoff(std::string_view reason) {
    return reason == reject_reason::kEM1BelowCutoff || reason == reject_reason::kEM2BelowCutoff;
}

class TrimbleReader {
  public:
    TrimbleReader(const TrimbleOptions& options, Survey& survey)
        : options_(options),
          survey_(survey),
          siteID_(options.SiteIDField),
          x_(options.XField),
          y_(options.YField),
          em1_(options.EM1Field),
          em2_(options.EM2Field) {
        enlarge(kCapacityStep);
    }

    // Makes room for a file of lines as long as this one, or somewhat shorter.
    void reserveFor(std::int64_t fileSize, std::size_t lineLength) {
        survey_.SiteData.reserve(fileSize / static_cast<std::int64_t>(lineLength) + 2 * kCapacityStep);
        enlarge(capacity_);
    }

    // Stores the line's values in the next slot; gives why it is rejected, or nothing for a site. What a
    // rejected line has left in the slot is overwritten by the next site.
    std::string_view read(std::string_view line, std::int64_t number) {
        const SiteIndex slot = survey_.NumSites;
        if (options_.SiteIDPresent && !siteID_.number(line, idColumn_[slot])) return reject_reason::kSiteID;
        if (options_.TwoEMColumns) {
            double em2 = 0;
            if (!em2_.number(line, em2)) return reject_reason::kEM2;
            em2 = converted(em2);
            if (!(em2 >= options_.EMCutoff)) return reject_reason::kEM2BelowCutoff;
            em2Column_[slot] = em2;
        }
        if (!x_.number(line, xColumn_[slot])) return reject_reason::kX;
        if (!y_.number(line, yColumn_[slot])) return reject_reason::kY;
        double em1 = 0;
        if (!em1_.number(line, em1)) return reject_reason::kEM1;
        em1 = converted(em1);
        if (!(em1 >= options_.EMCutoff)) return reject_reason::kEM1BelowCutoff;
        em1Column_[slot] = em1;
        lineColumn_[slot] = sourceLine(number);
        if (slot + kSpareSites == capacity_) enlarge(capacity_ + kCapacityStep);
        ++survey_.NumSites;
        return {};
    }

  private:
    double converted(double reading) const {
        if (options_.NegateEM) reading = 0.0 - reading;  // and a reading of 0 gets no sign
        if (options_.DivideEMBy10) reading /= 10.0;
        return reading;
    }

    void enlarge(SiteIndex capacity) {
        capacity_ = capacity;
        survey_.SiteData.resize(capacity);
        xColumn_ = survey_.SiteData.column(kX);
        yColumn_ = survey_.SiteData.column(kY);
        em1Column_ = survey_.SiteData.column(kEM1);
        em2Column_ = survey_.SiteData.column(kEM2);
        survey_.SourceLine.resize(static_cast<std::size_t>(capacity));
        lineColumn_ = survey_.SourceLine.data();
        if (!options_.SiteIDPresent) return;
        survey_.SiteID.resize(static_cast<std::size_t>(capacity));
        idColumn_ = survey_.SiteID.data();
    }

    const TrimbleOptions& options_;
    Survey& survey_;
    ByteRange siteID_, x_, y_, em1_, em2_;
    SiteIndex capacity_ = 0;
    double* idColumn_ = nullptr;
    double* xColumn_ = nullptr;
    double* yColumn_ = nullptr;
    double* em1Column_ = nullptr;
    double* em2Column_ = nullptr;
    std::uint32_t* lineColumn_ = nullptr;
};

std::vector<FieldPlace> fieldPlaces(const TrimbleOptions& options) {
    std::vector<FieldPlace> places;
    const auto add = [&places](const char* name, const FieldColumns& field) {
        places.push_back({name, field.Start, field.Start + (field.Len - 1)});
    };
    if (options.SiteIDPresent) add("site number", options.SiteIDField);
    add("X", options.XField);
    add("Y", options.YField);
    add("EM1", options.EM1Field);
    if (options.TwoEMColumns) add("EM2", options.EM2Field);
    return places;
}

}  // namespace

std::int64_t readTrimbleFile(const TrimbleOptions& options, Survey& survey, ErrorLog& log,
                             ImportSummary& summary) {
    LineReader file(options.path);
    summary.kind = recogniseFileKind(file.firstBytes());
    survey = Survey{};
    static_cast<SurveyParameters&>(survey) = options;
    survey.chooseDistance(options.DistanceMode);
    survey.SiteIDPresent = options.SiteIDPresent;
    survey.TwoEMColumns = options.TwoEMColumns;
    TrimbleReader reader(options, survey);
    const auto shortest = static_cast<std::size_t>(std::max(options.MinLineLength, 0));
    CutLines cutLines(options);
    std::int64_t errors = 0;
    for (std::string_view line; file.next(line);) {
        if (line.size() <= shortest) continue;
        const std::string_view reason = reader.read(line, file.lineNumber());
        if (reason.empty() || isBelowCutoff(reason)) cutLines.look(line, file.lineNumber());
        if (reason.empty()) {
            if (survey.NumSites == 1) reader.reserveFor(file.fileSize(), line.size());
            continue;
        }
        log.reject(file.lineNumber(), line, reason);
        ++errors;
    }
    summary.path = options.path;
    summary.file = file.fileState();
    summary.cutoff = options.EMCutoff;
    summary.fixedColumns = true;
    summary.fields = fieldPlaces(options);
    summary.linesRead = file.lineNumber();
    cutLines.describe(summary);
    return errors;
}

ImportResult importTrimbleFile(const TrimbleOptions& options) {
    ImportResult result;
    ErrorLog log(options.errorLogPath);
    result.rejected = readTrimbleFile(options, result.survey, log, result.summary);
    if (result.survey.NumSites > 0) {
        Calculate_Chosen_Distance(result.survey);
        if (Assign_Row(result.survey) == RowDetection::kTooManyRows) result.rows = ImportedRows::kTooManyRows;
    }
    log.commit();
    log.describe(result.summary);
    return result;
}

}  // namespace tessel
