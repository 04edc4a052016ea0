// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/trimble_reader.h"

#include "base/numbers.h"
#include "base/text_lines.h"
#include "import/column_shapes.h"
#include "import/error_log.h"
#include "rows/row_detection.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tessel {

namespace {

// The table begins with room for this many sites and grows by as many, ten sites before it is full.
constexpr SiteIndex kCapacityStep = 100;
constexpr SiteIndex kSpareSites = 10;

SiteIndex capacityFor(SiteIndex sites) {
    return (sites + kSpareSites + kCapacityStep - 1) / kCapacityStep * kCapacityStep;
}

// A field as a range of bytes of its line, empty for a layout that makes no sense.
struct ByteRange {
    std::size_t begin = 0, end = 0;

    explicit ByteRange(const FieldColumns& field) {
        if (field.Start < 1 || field.Len < 1) return;
        begin = static_cast<std::size_t>(field.Start) - 1;
        end = begin + static_cast<std::size_t>(field.Len);
    }
};

// The numbers in a field of lines that follow each other.
class FieldNumbers {
  public:
    explicit FieldNumbers(const FieldColumns& field) : field_(field) {}

    void beginText(std::string_view text) { shapes_.beginText(text); }

    // A field is as short as its line makes it; one that begins behind the line's end is empty.
    bool read(std::string_view line, double& value) {
        const std::size_t end = std::min(field_.end, line.size());
        if (end <= field_.begin) return false;
        const char* const first = line.data() + field_.begin;
        const std::size_t length = end - field_.begin;
        const auto isWhole = [=](std::size_t other) { return other == length; };
        return shapes_.take(first, value, isWhole) != nullptr || readOther(first, first + length, value);
    }

  private:
    bool readOther(const char* first, const char* last, double& value) {
        if (!parseNumber(first, last, value)) return false;
        if (shapes_.areOfUseAt(first)) shapes_.learn(first, last);
        return true;
    }

    const ByteRange field_;
    ColumnShapes shapes_;
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
        looked_.assign(beside_.size(), first < lineLength ? first : 0);
        for (std::size_t i = 0; i < beside_.size(); ++i)
            if (beside_[i] < lineLength) looked_[i] = beside_[i];
    }

    bool hasDigitsOnBothSides(std::string_view line) const {
        return std::any_of(edges_.begin(), edges_.end(), [&](std::size_t edge) {
            return edge > 0 && edge < line.size() && isDigit(line[edge - 1]) && isDigit(line[edge]);
        });
    }

    std::vector<std::size_t> edges_;   // the byte behind each
    std::vector<std::size_t> beside_;  // the bytes outside of a field and next to it, each once
    std::vector<std::size_t> looked_;  // those of them that the line looked at last has
    std::size_t lineLength_ = 0;
};

bool isBelowCutoff(std::string_view reason) {
    return reason == reject_reason::kEM1BelowCutoff || reason == reject_reason::kEM2BelowCutoff;
}

class TrimbleReader {
  public:
    using Carried = NothingCarried;

    explicit TrimbleReader(const TrimbleOptions& options)
        : options_(options),
          shortest_(static_cast<std::size_t>(std::max(options.MinLineLength, 0))),
          siteID_(options.SiteIDField),
          x_(options.XField),
          y_(options.YField),
          em1_(options.EM1Field),
          em2_(options.EM2Field),
          edges_(options),
          found_(FileColumns{options.SiteIDPresent, options.TwoEMColumns, false, 0}) {}

    Carried read(std::string_view text, Carried) {
        found_.clear();
        found_.texts = text;
        for (FieldNumbers* const field : {&siteID_, &x_, &y_, &em1_, &em2_})
            field->beginText(text);
        TextLines lines(text);
        for (std::string_view line; lines.next(line);) {
            ++found_.linesRead;
            if (line.size() <= shortest_) continue;
            readLine(line);
        }
        return {};
    }

    const FoundSites& found() const { return found_; }

  private:
    void readLine(std::string_view line) {
        const std::string_view reason = readSite(line);
        // A line whose numbers were read although an edge of a field cuts through digits.
        if ((reason.empty() || isBelowCutoff(reason)) && edges_.cut(line)) found_.odd.add(found_.linesRead);
        if (!reason.empty()) return reject(line, reason);
        if (found_.sites() == 1) found_.firstSiteLength = line.size();
    }

    // Stores the line's values in the next place; gives why it is rejected, or nothing for a site.
    std::string_view readSite(std::string_view line) {
        if (options_.SiteIDPresent && !siteID_.read(line, found_.nextSiteID())) return reject_reason::kSiteID;
        if (options_.TwoEMColumns) {
            double em2 = 0;
            if (!em2_.read(line, em2)) return reject_reason::kEM2;
            em2 = converted(em2);
            if (!(em2 >= options_.EMCutoff)) return reject_reason::kEM2BelowCutoff;
            found_.next(kEM2) = em2;
        }
        if (!x_.read(line, found_.next(kX))) return reject_reason::kX;
        if (!y_.read(line, found_.next(kY))) return reject_reason::kY;
        double em1 = 0;
        if (!em1_.read(line, em1)) return reject_reason::kEM1;
        em1 = converted(em1);
        if (!(em1 >= options_.EMCutoff)) return reject_reason::kEM1BelowCutoff;
        found_.next(kEM1) = em1;
        found_.addSite(found_.linesRead);
        return {};
    }

    double converted(double reading) const {
        if (options_.NegateEM) reading = 0.0 - reading;  // and a reading of 0 gets no sign
        if (options_.DivideEMBy10) reading /= 10.0;
        return reading;
    }

    // What was read before the value that is wrong stays in the place of the next site.
    void reject(std::string_view line, std::string_view reason) {
        found_.reject(found_.linesRead, line, reason);
        if (reason == reject_reason::kSiteID) return;
        LeftValues values;
        if (options_.SiteIDPresent) values.siteID = found_.nextSiteID();
        if (reason != reject_reason::kEM2 && reason != reject_reason::kEM2BelowCutoff) {
            if (options_.TwoEMColumns) values.columns[kEM2] = found_.next(kEM2);
            if (reason != reject_reason::kX) values.columns[kX] = found_.next(kX);
            if (reason != reject_reason::kX && reason != reject_reason::kY)
                values.columns[kY] = found_.next(kY);
        }
        found_.leave(values);
    }

    const TrimbleOptions& options_;
    const std::size_t shortest_;
    FieldNumbers siteID_, x_, y_, em1_, em2_;
    FieldEdges edges_;
    FoundSites found_;
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
                             ImportSummary& summary, const ImportPlan& plan) {
    LineBlocks file(options.path, plan.blockSize);
    summary.kind = recogniseFileKind(file.firstBytes());
    survey = Survey{};
    static_cast<SurveyParameters&>(survey) = options;
    survey.chooseDistance(options.DistanceMode);
    survey.SiteIDPresent = options.SiteIDPresent;
    survey.TwoEMColumns = options.TwoEMColumns;
    SiteCollector sites(survey, log, file.fileSize());
    BlockImport<TrimbleReader>(file, sites).run(plan, options);
    sites.finish(capacityFor(survey.NumSites));
    summary.path = options.path;
    summary.file = file.fileState();
    summary.cutoff = options.EMCutoff;
    summary.fixedColumns = true;
    summary.fields = fieldPlaces(options);
    summary.linesRead = sites.linesRead();
    summary.linesCut = sites.odd().lines;
    summary.firstLineCut = sites.odd().first;
    return sites.rejected();
}

ImportResult importTrimbleFile(const TrimbleOptions& options, const ImportPlan& plan) {
    ImportResult result;
    ErrorLog log(options.errorLogPath);
    result.rejected = readTrimbleFile(options, result.survey, log, result.summary, plan);
    if (result.survey.NumSites > 0) {
        Calculate_Chosen_Distance(result.survey);
        if (Assign_Row(result.survey) == RowDetection::kTooManyRows) result.rows = ImportedRows::kTooManyRows;
    }
    log.commit();
    log.describe(result.summary);
    return result;
}

}  // namespace tessel
