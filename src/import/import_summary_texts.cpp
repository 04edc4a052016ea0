// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/import_summary_texts.h"

#include "base/numbers.h"
#include "rows/row_detection.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace tessel {

namespace {

// Beyond this a number with all its digits would be wider than it is clear.
constexpr double kLongNumber = 1e12;
// Picture formats of metres and readings, and of degrees.
constexpr int kDecimals = 2, kDegreeDecimals = 5, kDegreeStepDecimals = 7;

std::string counted(std::int64_t number, std::string_view what) {
    std::string text = std::to_string(number) + ' ' + std::string(what);
    return number == 1 ? text : text + 's';
}

std::string shownNumber(double value, int decimals) {
    if (std::abs(value) < kLongNumber) return pictureFormat(value, decimals);
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific, kDegreeDecimals);
    return std::string(buffer.data(), end.ptr);
}

std::string percentage(std::int64_t part, std::int64_t whole) {
    const double share = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    if (share < 1) return "Less than 1 %";
    if (share > 99 && part < whole) return "More than 99 %";
    return pictureFormat(share, 0) + " %";
}

// The error log's reasons begin with an arrow.
std::string bareReason(const std::string& reason) {
    const std::size_t begin = reason.find_first_not_of(" ->");
    return begin == std::string::npos ? reason : reason.substr(begin);
}

std::string headline(const Survey& survey) {
    const std::string sites = counted(survey.NumSites, "site");
    if (survey.NumSites == 0) return "The survey has no sites.";
    if (rowsAreUsable(survey))
        return sites + " in " + counted(survey.NumRows, "row") +
               "\nThe Plot menu shows them, the Edit menu cleans them.";
    if (survey.RowIndex > kMaxRows)
        return sites +
               ", in too many rows\nEdit, then “Delete / Join / Re-calculate Rows” takes a larger distance";
    return sites + ", with row numbers that are of no use\nImport another sensor file";
}

class Description {
  public:
    Description(const Survey& survey, const SurveyFacts& facts, const ImportSummary& import)
        : survey_(survey), facts_(facts), import_(import) {}

    SurveyDescription compose(bool logIsInMenu) {
        warnOfTheFile();
        warnOfTheSites();
        warnOfTheRows();
        if (!import_.path.empty()) tellTheFile();
        tellTheSurvey();
        if (!import_.logPath.empty()) tellTheLog(logIsInMenu);
        return {headline(survey_), std::move(lines_)};
    }

  private:
    using Kind = DescriptionKind;

    // Captions of lines that go on with the one above are left out, names are numbered.
    void add(Kind kind, const std::string& name, const std::string& caption, std::string text) {
        const bool goesOn = !lines_.empty() && lines_.back().kind == kind && lines_.back().name == name;
        lines_.push_back({kind, name, goesOn ? std::string() : caption, std::move(text), {}, {}});
    }
    void warn(std::string text) { add(Kind::kWarning, "Warning", "Attention", std::move(text)); }

    // What the beginning of the file looks like.
    void warnOfTheFile() {
        if (!import_.kind.isText) warn("This is not a text file.");
        if (import_.kind.decimalCommas && !import_.decimalCommasRead)
            warn(
                "Semicolons stand between the values of this file and its decimal signs are commas, but it "
                "was "
                "not read so. “Inport a generic Sensor file” has a box to tick for that.");
        if (import_.kind.tabs && import_.fixedColumns)
            warn(
                "Tabs stand between the values of this file: columns of characters do not line up. “Inport a "
                "generic Sensor file” reads such a file.");
        if (import_.linesNotFitting > 0)
            warn(counted(import_.linesNotFitting, "line") + (import_.linesNotFitting == 1 ? " does" : " do") +
                 " not hold as many values as the layout takes" + from(import_.firstLineNotFitting) +
                 ": values may have been read across line ends.");
        if (import_.linesCut > 0)
            warn("In " + counted(import_.linesCut, "line") + " an edge of a field cuts through digits" +
                 from(import_.firstLineCut) +
                 ": values lack digits, or hold some of their neighbours'. Compare the positions of the "
                 "fields "
                 "with the ruler of the import.");
        if (!import_.logProblem.empty())
            warn("The error log could not be written: " + import_.logProblem +
                 "\n“Display the Error_log.dat file” does not show this import.");
    }

    static std::string from(std::int64_t line) { return " (first in line " + std::to_string(line) + ")"; }

    void warnOfTheSites() {
        if (facts_.looksLikeDegrees)
            warn(
                "The positions look like degrees. Distances, rows and plots need metres: “Coordinates” in "
                "the Edit menu makes them.");
        if (!import_.positionsKept.empty()) warn(import_.positionsKept);
        if (facts_.sitesAtZero > 0)
            warn(counted(facts_.sitesAtZero, "site") + (facts_.sitesAtZero == 1 ? " lies" : " lie") +
                 " at 0, 0. Unless that is a place in the field, the position was missing: delete " +
                 (facts_.sitesAtZero == 1 ? "it" : "them") + " on the map or with “Find Suspicious Sites”.");
        if (facts_.repeatedPositions > 0)
            warn(percentage(facts_.repeatedPositions, facts_.steps) +
                 " of the steps between sites are exactly 0 (" + std::to_string(facts_.repeatedPositions) +
                 " of " + std::to_string(facts_.steps) + "): positions are repeated.");
    }

    void warnOfTheRows() {
        if (!rowsAreUsable(survey_)) return;
        if (survey_.NumRows == 1 && survey_.NumSites > 1)
            warn(
                "All sites are in one single row. Edit, then “Delete / Join / Re-calculate Rows” finds the "
                "rows with another distance, and “Find Rows by Turns” those of a logger that never stopped.");
        if (survey_.NumRows > kMaxRows)
            warn(std::to_string(survey_.NumRows) + " rows are more than the " + std::to_string(kMaxRows) +
                 " that plots and row statistics can show.");
    }

    void tellTheFile() {
        add(Kind::kPath, "File", "File", import_.path);
        if (const std::string text = kindOfText(); !text.empty()) add(Kind::kFact, "Format", "Format", text);
        add(Kind::kFact, "Lines", "Lines read", std::to_string(import_.linesRead));
        std::int64_t rejected = 0;
        for (const RejectedLines& lines : import_.rejected)
            rejected += lines.lines;
        add(Kind::kFact, "Rejected", "Rejected", rejected == 0 ? "none" : std::to_string(rejected));
        for (const RejectedLines& lines : import_.rejected)
            add(Kind::kFact, "Rejected", "Rejected",
                std::to_string(lines.lines) + " × " + bareReason(lines.reason) + from(lines.firstLine));
    }

    // What a user of the file may want to know; nothing of the most usual kind.
    std::string kindOfText() const {
        const FileKind& kind = import_.kind;
        std::string text;
        const auto also = [&text](const std::string& what) { text += (text.empty() ? "" : ", ") + what; };
        if (kind.encoding != TextEncoding::kBytes) also("UTF-16");
        if (kind.decimalCommas) also("semicolons and decimal commas");
        if (kind.tabs) also("tabs between values");
        if (kind.headerLines > 0) also(counted(kind.headerLines, "header line"));
        return text;
    }

    void tellTheSurvey() {
        add(Kind::kFact, "Sites", "Sites", std::to_string(survey_.NumSites));
        if (survey_.NumSites == 0) return;
        add(Kind::kFact, "Rows", "Rows", rows());
        const int decimals = facts_.looksLikeDegrees ? kDegreeDecimals : kDecimals;
        tellRange(kX, "X", decimals, metres());
        tellRange(kY, "Y", decimals, metres());
        tellRange(kEM1, "EM1", kDecimals, "mS/m");
        if (survey_.TwoEMColumns) tellRange(kEM2, "EM2", kDecimals, "mS/m");
        if (facts_.steps > 0) add(Kind::kFact, "Step", "Median step", step());
        if (const std::string text = positions(); !text.empty())
            add(Kind::kFact, "Positions", "Positions", text);
    }

    std::string rows() const {
        if (rowsAreUsable(survey_)) return std::to_string(survey_.NumRows);
        return survey_.RowIndex > kMaxRows ? "more than " + std::to_string(kMaxRows) : "none";
    }

    // What they are, where that is known.
    std::string positions() const {
        return survey_.PositionsCRS == 0 ? "" : "EPSG:" + std::to_string(survey_.PositionsCRS);
    }

    std::string metres() const { return facts_.looksLikeDegrees ? "degrees" : "m"; }

    void tellRange(SiteColumn column, const std::string& name, int decimals, const std::string& unit) {
        const Interval& range = facts_.ranges[static_cast<std::size_t>(column)];
        lines_.push_back({Kind::kRange, name, name, shownNumber(range.from, decimals),
                          shownNumber(range.to, decimals), unit});
    }

    // Where half of the steps are 0 m the moves say more.
    std::string step() const {
        const int decimals = facts_.looksLikeDegrees ? kDegreeStepDecimals : kDecimals;
        const auto length = [&](double value) { return shownNumber(value, decimals) + ' ' + metres(); };
        const std::string all = length(facts_.medianStep), moves = length(facts_.medianMove);
        return all == moves ? all : all + ", without repeated positions " + moves;
    }

    void tellTheLog(bool logIsInMenu) {
        const bool written = import_.logProblem.empty();
        const bool empty = import_.firstLogLines.empty();
        if (!logIsInMenu && written) add(Kind::kPath, "Log", "Error log", import_.logPath);
        if (written && !(empty && logIsInMenu))
            add(Kind::kLink, "LogLink", logIsInMenu ? "Error log" : "", "Open the error log");
        if (logIsInMenu && written) return;
        if (empty && written) add(Kind::kFact, "LogState", "", "It is empty: no line was rejected.");
        for (const std::string& line : import_.firstLogLines)
            add(Kind::kLogLine, "LogLine", "First rejected", line);
    }

    const Survey& survey_;
    const SurveyFacts& facts_;
    const ImportSummary& import_;
    std::vector<DescriptionLine> lines_;
};

}  // namespace

SurveyDescription describeSurvey(const Survey& survey, const SurveyFacts& facts, const ImportSummary& import,
                                 bool logIsInMenu) {
    return Description(survey, facts, import).compose(logIsInMenu);
}

}  // namespace tessel
