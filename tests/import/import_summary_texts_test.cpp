// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/import_summary_texts.h"

#include "import/error_log.h"
#include "rows/row_detection.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

using Kind = DescriptionKind;

std::string joined(const DescriptionLine& line) {
    std::string text = line.caption.empty() ? "| " : line.caption + " | ";
    text += line.text;
    return line.kind == Kind::kRange ? text + " .. " + line.upTo + ' ' + line.unit : text;
}

std::vector<std::string> linesOf(const SurveyDescription& description) {
    std::vector<std::string> lines;
    for (const DescriptionLine& line : description.lines)
        lines.push_back(joined(line));
    return lines;
}

std::vector<std::string> warningsOf(const SurveyDescription& description) {
    std::vector<std::string> warnings;
    for (const DescriptionLine& line : description.lines)
        if (line.kind == Kind::kWarning) warnings.push_back(line.text);
    return warnings;
}

using Lines = std::vector<std::string>;

// Two rows of three sites, 20 m apart, without anything to warn of; the import rejected three lines.
class ImportNotices : public testing::Test {
  protected:
    ImportNotices() {
        import.path = "/surveys/field.csv";
        import.linesRead = 9;
        using Rejected = RejectedLines;
        import.rejected = {Rejected{std::string(reject_reason::kX), 2, 1}, Rejected {
                               std::string(reject_reason::kEM1BelowCutoff),
                               1,
                               7
                           }};
        import.logPath = "/logs/error_log.dat";
        import.firstLogLines = {"Line # 1 a", "Line # 2 b", "Line # 7 c"};
    }

    SurveyDescription description(bool logIsInMenu = true) const {
        return describeSurvey(survey, surveyFacts(survey), import, logIsInMenu);
    }
    Lines warnings() const { return warningsOf(description()); }

    Survey survey = madeSurvey({{100, 10.5, 20, 40, 1},
                                {101, 10.5, 30, 45, 1},
                                {102, 10.5, 25.125, 50, 1},
                                {102, 30.5, -33, 66, 2},
                                {101, 30.5, 31, 62, 2},
                                {99.5, 30.5, 12, 60, 2}});
    ImportSummary import;
};

}  // namespace

TEST_F(ImportNotices, TellFileRejectedLinesRangesAndStep) {
    EXPECT_EQ(description().headline,
              "6 sites in 2 rows\nThe Plot menu shows them, the Edit menu cleans them.");
    EXPECT_EQ(linesOf(description()),
              (Lines{"File | /surveys/field.csv", "Lines read | 9", "Rejected | 3",
                     "| 2 × non-numeric X-coord data (first in line 1)",
                     "| 1 × 1st EM reading below cut-off (first in line 7)", "Sites | 6", "Rows | 2",
                     "X | 99.50 .. 102.00 m", "Y | 10.50 .. 30.50 m", "EM1 | -33.00 .. 31.00 mS/m",
                     "EM2 | 40.00 .. 66.00 mS/m", "Median step | 1.00 m", "Error log | Open the error log"}));
}

TEST_F(ImportNotices, TellOfOneReadingAndNoRejectedLineNoMoreThanThereIs) {
    survey.TwoEMColumns = false;
    import.rejected.clear();
    import.firstLogLines.clear();
    EXPECT_EQ(linesOf(description()),
              (Lines{"File | /surveys/field.csv", "Lines read | 9", "Rejected | none", "Sites | 6",
                     "Rows | 2", "X | 99.50 .. 102.00 m", "Y | 10.50 .. 30.50 m",
                     "EM1 | -33.00 .. 31.00 mS/m", "Median step | 1.00 m"}));
}

TEST_F(ImportNotices, TellOnlyOfASurveyThatComesFromNoFile) {
    import = {};
    EXPECT_EQ(linesOf(description()).front(), "Sites | 6");
    EXPECT_EQ(linesOf(description()).back(), "Median step | 1.00 m");
}

TEST_F(ImportNotices, OfAnEmptySurveyShowPathAndFirstLinesOfTheLogThatNoMenuItemOpens) {
    survey.NumSites = 0;
    const SurveyDescription empty = description(false);
    EXPECT_EQ(empty.headline, "The survey has no sites.");
    EXPECT_EQ(linesOf(empty), (Lines{"File | /surveys/field.csv", "Lines read | 9", "Rejected | 3",
                                     "| 2 × non-numeric X-coord data (first in line 1)",
                                     "| 1 × 1st EM reading below cut-off (first in line 7)", "Sites | 0",
                                     "Error log | /logs/error_log.dat", "| Open the error log",
                                     "First rejected | Line # 1 a", "| Line # 2 b", "| Line # 7 c"}));
    EXPECT_TRUE(warningsOf(empty).empty());
}

TEST_F(ImportNotices, SayThatALogWithoutALineIsEmpty) {
    survey.NumSites = 0;
    import.rejected.clear();
    import.firstLogLines.clear();
    EXPECT_EQ(linesOf(description(false)).back(), "| It is empty: no line was rejected.");
}

TEST_F(ImportNotices, PointToNoLogThatCouldNotBeWritten) {
    import.logProblem = "/logs/error_log.dat cannot be written: Permission denied";
    for (const bool logIsInMenu : {true, false}) {
        const SurveyDescription told = description(logIsInMenu);
        EXPECT_EQ(
            warningsOf(told),
            Lines{"The error log could not be written: /logs/error_log.dat cannot be written: Permission "
                  "denied\n“Display the Error_log.dat file” does not show this import."});
        EXPECT_EQ(linesOf(told).back(), "| Line # 7 c");
        for (const DescriptionLine& line : told.lines) {
            EXPECT_NE(line.kind, Kind::kLink);
            EXPECT_NE(line.text, import.logPath);
        }
    }
}

TEST_F(ImportNotices, TellTooManyRowsAndRowNumbersOfNoUse) {
    survey.NumRows = 0;
    survey.RowIndex = kMaxRows + 1;
    EXPECT_EQ(
        description().headline,
        "6 sites, in too many rows\nEdit, then “Delete / Join / Re-calculate Rows” takes a larger distance");
    const auto has = [this](const std::string& line) {
        const Lines lines = linesOf(description());
        return std::count(lines.begin(), lines.end(), line) == 1;
    };
    EXPECT_TRUE(has("Rows | more than 250"));
    survey.RowIndex = 0;
    EXPECT_EQ(description().headline,
              "6 sites, with row numbers that are of no use\nImport another sensor file");
    EXPECT_TRUE(has("Rows | none"));
    EXPECT_TRUE(warnings().empty());
}

TEST_F(ImportNotices, WarnOfMoreRowsThanTheProgramHolds) {
    survey.NumSites = 251;
    survey.SiteData.resize(251);
    for (SiteIndex i = 0; i < 251; ++i) {
        survey.SiteData(kX, i) = 1000.0 * static_cast<double>(i + 1);
        survey.SiteData(kRow, i) = static_cast<double>(i + 1);
    }
    survey.NumRows = survey.RowIndex = 251;
    ASSERT_TRUE(rowsAreUsable(survey));
    EXPECT_EQ(warnings(), Lines{"251 rows are more than the 250 that plots and row statistics can show."});
}

TEST_F(ImportNotices, WarnOfOneSingleRow) {
    survey = madeSurvey({{1, 2, 3, 4, 1}, {2, 2, 3, 4, 1}});
    EXPECT_EQ(warnings(),
              Lines{"All sites are in one single row. Edit, then “Delete / Join / Re-calculate Rows” "
                    "finds the rows with another distance, and “Find Rows by Turns” those of a logger that "
                    "never stopped."});
    survey = madeSurvey({{1, 2, 3, 4, 1}});
    EXPECT_TRUE(warnings().empty()) << "one site cannot be in more rows";
    EXPECT_EQ(linesOf(description())[5], "Sites | 1");
}

TEST_F(ImportNotices, WarnOfSitesAtZero) {
    survey.SiteData(kX, 2) = survey.SiteData(kY, 2) = 0;
    EXPECT_EQ(warnings(), Lines{"1 site lies at 0, 0. Unless that is a place in the field, the position was "
                                "missing: delete it on the map or with “Find Suspicious Sites”."});
    survey.SiteData(kX, 4) = survey.SiteData(kY, 4) = 0;
    EXPECT_EQ(warnings(), Lines{"2 sites lie at 0, 0. Unless that is a place in the field, the position was "
                                "missing: delete them on the map or with “Find Suspicious Sites”."});
}

TEST_F(ImportNotices, WarnOfRepeatedPositionsWithTheirShare) {
    survey.SiteData(kX, 1) = 100;
    EXPECT_EQ(warnings(),
              Lines{"20 % of the steps between sites are exactly 0 (1 of 5): positions are repeated."});
    EXPECT_EQ(linesOf(description())[12], "Median step | 1.50 m, without repeated positions 1.75 m");
}

TEST_F(ImportNotices, NeitherRoundAFewRepeatedPositionsToNoneNorMostToAll) {
    SurveyFacts facts = surveyFacts(survey);
    const auto share = [&](SiteIndex repeated, SiteIndex steps) {
        facts.repeatedPositions = repeated;
        facts.steps = steps;
        const std::string text = warningsOf(describeSurvey(survey, facts, import, true)).at(0);
        return text.substr(0, text.find(" of the"));
    };
    EXPECT_EQ(share(1, 1000), "Less than 1 %");
    EXPECT_EQ(share(1, 100), "1 %");
    EXPECT_EQ(share(999, 1000), "More than 99 %");
    EXPECT_EQ(share(7, 7), "100 %");
}

TEST_F(ImportNotices, WarnOfDegreesAndShowTheirDigits) {
    survey = madeSurvey({{-64.415383, 83.442199, 140, 0, 1},
                         {-64.415368, 83.4422, 141, 0, 1},
                         {-64.415366, 83.442202, 142, 0, 2}});
    EXPECT_EQ(
        warnings(),
        Lines{"The positions look like degrees. Distances, rows and plots need metres: “Coordinates” in "
              "the Edit menu makes them."});
    const Lines lines = linesOf(description());
    EXPECT_EQ(lines[8], "X | -64.41538 .. -64.41537 degrees");
    EXPECT_EQ(lines[9], "Y | 83.44220 .. 83.44220 degrees");
    EXPECT_EQ(lines[12], "Median step | 0.0000089 degrees");
}

TEST_F(ImportNotices, ShowNumbersOfAnySizeInAFewCharacters) {
    survey.SiteData(kX, 0) = -1e200;
    survey.SiteData(kX, 1) = 123456789012.5;
    const Lines lines = linesOf(description());
    EXPECT_EQ(lines[7], "X | -1.00000e+200 .. 123456789012.50 m");
}

TEST_F(ImportNotices, WarnOfHowTheFileWasRead) {
    const std::tuple<std::function<void(ImportSummary&)>, const char*> cases[] = {
        {[](ImportSummary& read) { read.linesNotFitting = 1, read.firstLineNotFitting = 4; },
         "1 line does not hold as many values as the layout takes (first in line 4): values may have been "
         "read across line ends."},
        {[](ImportSummary& read) { read.linesNotFitting = 7, read.firstLineNotFitting = 4; },
         "7 lines do not hold as many values as the layout takes (first in line 4): values may have been "
         "read across line ends."},
        {[](ImportSummary& read) { read.linesCut = 12, read.firstLineCut = 3; },
         "In 12 lines an edge of a field cuts through digits (first in line 3): values lack digits, or hold "
         "some of their neighbours'. Compare the positions of the fields with the ruler of the import."},
        {[](ImportSummary& read) { read.kind.isText = false; }, "This is not a text file."},
        {[](ImportSummary& read) { read.kind.tabs = read.fixedColumns = true; },
         "Tabs stand between the values of this file: columns of characters do not line up. “Inport a "
         "generic Sensor file” reads such a file."},
        {[](ImportSummary& read) { read.kind.decimalCommas = true; },
         "Semicolons stand between the values of this file and its decimal signs are commas, but it was not "
         "read so. “Inport a generic Sensor file” has a box to tick for that."}};
    const ImportSummary plain = import;
    for (const auto& [change, warning] : cases) {
        import = plain;
        change(import);
        EXPECT_EQ(warnings(), Lines{warning});
    }
    import.decimalCommasRead = true;
    EXPECT_TRUE(warnings().empty());
    import = plain;
    import.kind.tabs = true;
    EXPECT_TRUE(warnings().empty());
    EXPECT_EQ(linesOf(description())[1], "Format | tabs between values");
}

TEST_F(ImportNotices, TellHowTheFileIsWritten) {
    import.kind.encoding = TextEncoding::kUtf16LittleEndian;
    import.kind.decimalCommas = import.decimalCommasRead = import.kind.tabs = true;
    import.kind.headerLines = 2;
    EXPECT_EQ(linesOf(description())[1],
              "Format | UTF-16, semicolons and decimal commas, tabs between values, 2 header lines");
}

}  // namespace tessel
