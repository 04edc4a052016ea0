// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/run_time_error.h"
#include "import/error_log.h"
#include "import/generic_file.h"
#include "rows/row_detection.h"
#include "support/made_survey.h"

namespace tessel {

TEST_F(GenericFile, InEachLayoutPutsItsColumnsInPlace) {
    for (const GenericLayout& layout : kGenericLayouts) {
        options.layout = layout;
        std::string record;
        if (layout.siteNumber) record += "7,";
        record += "10.5,20.5,30.5";
        if (layout.secondReading) record += ",40.5";
        if (layout.rowNumber) record += ",1";
        const Survey survey = import(record + "\n" + record + "\n").survey;
        ASSERT_EQ(survey.NumSites, 2) << record;
        EXPECT_EQ(survey.SiteIDPresent, layout.siteNumber);
        EXPECT_EQ(survey.TwoEMColumns, layout.secondReading);
        EXPECT_EQ(survey.SiteID.size(), layout.siteNumber ? 2U : 0U);
        const MadeSite site{
            10.5, 20.5, 30.5, layout.secondReading ? 40.5 : 0, 1, layout.siteNumber ? 7.0 : 0};
        EXPECT_EQ(sitesIn(survey), (std::vector<MadeSite>{site, site}));
        EXPECT_EQ(survey.NumRows, 1);
        EXPECT_EQ(survey.NumPoints[1], 2);
    }
}

TEST_F(GenericFile, IsDescribedAsItWasReadWithThePlacesOfItsValues) {
    const auto placesIn = [this](const GenericLayout& layout) {
        options.layout = layout;
        std::string words;
        for (const FieldPlace& field : import("7,10,20,30,40,1\n").summary.fields) {
            EXPECT_EQ(field.last, 0);
            words += field.name + ' ' + std::to_string(field.first) + ", ";
        }
        return words;
    };
    EXPECT_EQ(placesIn(kEverything), "site number 1, X 2, Y 3, EM1 4, EM2 5, row 6, ");
    EXPECT_EQ(placesIn(kGenericLayouts[0]), "X 1, Y 2, EM1 3, row 4, ");
    EXPECT_EQ(placesIn(kGenericLayouts[5]), "X 1, Y 2, EM1 3, EM2 4, ");
    options.cutoff = 2.5;
    const ImportSummary summary = import("1,2,3,4\n").summary;
    EXPECT_EQ(summary.cutoff, 2.5);
    EXPECT_EQ(summary.file, stateOfInputFile(options.path));
}

TEST_F(GenericFile, LayoutsStandInTheirOrder) {
    const std::array<int, 8> columns = {4, 5, 5, 6, 3, 4, 4, 5};
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(kGenericLayouts[i].columns(), columns[i]);
    EXPECT_TRUE(kGenericLayouts[6].siteNumber && !kGenericLayouts[6].secondReading);
}

TEST_F(GenericFile, KeepsReadingsEqualToTheCutOff) {
    options.cutoff = 0.5;
    EXPECT_EQ(import("1,2,0.5\n1,2,0.499\n").survey.NumSites, 1);
    EXPECT_EQ(log(), "Line # 2 1 2 0.499  -> 1st EM reading below cut-off\r\n");
}

TEST_F(GenericFile, DropsReadingsBelowTheCutOffOnLinesLikeTheOnesAbove) {
    options.layout = kEverything;
    std::string lines;
    for (int i = 0; i < 20; ++i)
        lines += "1,10,20,30,31,1\n1,10,20,-9,31,1\n1,10,20,30,-9,1\n";
    const ImportResult result = import(lines);
    EXPECT_EQ(result.survey.NumSites, 20);
    ASSERT_EQ(result.summary.rejected.size(), 2U);
    EXPECT_EQ(result.summary.rejected[0].reason, reject_reason::kEM1BelowCutoff);
    EXPECT_EQ(result.summary.rejected[0].lines, 20);
    EXPECT_EQ(result.summary.rejected[1].reason, reject_reason::kEM2BelowCutoff);
    EXPECT_EQ(result.summary.rejected[1].lines, 20);
}

TEST_F(GenericFile, LogsTheFirstReasonWhyEachRecordIsDropped) {
    options.layout = kEverything;
    const std::pair<const char*, const char*> cases[] = {{"a 1 1 1 1 1", "non-numeric site ID"},
                                                         {"1 1 1 1 x 1", "non-numeric 2nd EM reading"},
                                                         {"1 1 1 1 -1 1", "2nd EM reading below cut-off"},
                                                         {"1 x 1 1 1 1", "non-numeric X-coord data"},
                                                         {"1 1 x 1 1 1", "non-numeric Y-coord data"},
                                                         {"1 1 1 x 1 1", "non-numeric 1st EM reading"},
                                                         {"1 1 1 -1 1 1", "1st EM reading below cut-off"},
                                                         {"1 1 1 1 1 x", "non-numeric row number"},
                                                         {"1 x x -1 -1 x", "2nd EM reading below cut-off"},
                                                         {"x x x x x x", "non-numeric site ID"},
                                                         {"1 x x x x x", "non-numeric 2nd EM reading"}};
    for (const auto& [record, reason] : cases)
        EXPECT_EQ(logOf(record), "Line # 1 " + std::string(record) + "  -> " + reason + "\r\n");
}

TEST_F(GenericFile, LogsTheLineOnWhichARecordBegins) {
    EXPECT_EQ(logOf("1 2\n3\n\n4\nx 6 7\nx\n8 9"),
              "Line # 4 4 x 6  -> non-numeric Y-coord data\r\nLine # 5 7 x 8  -> non-numeric Y-coord data\r\n"
              "Line # 7 9  -> incomplete record at end of file\r\n");
}

TEST_F(GenericFile, KnowsTheLineOnWhichEachSiteBegins) {
    const Survey survey = import("1 2\n3\n\n4\n5 6 7\nx\n8 9 9\n\n 1,1\n,1").survey;
    EXPECT_EQ(survey.SourceLine, (std::vector<std::uint32_t>{1, 4, 7}));
}

// Further apart than the file is read in one piece.
TEST_F(GenericFile, LogsTheValuesOfARecordWhoseLinesLieFarApart) {
    const std::string emptyLines(600'000, '\n');
    EXPECT_EQ(logOf("first 5" + emptyLines + "9\n"), "Line # 1 first 5 9  -> non-numeric X-coord data\r\n");
    EXPECT_EQ(logOf("first" + emptyLines + "5" + emptyLines + "9\n"),
              "Line # 1 first 5 9  -> non-numeric X-coord data\r\n");
}

TEST_F(GenericFile, LogsValuesAsTheyStandInTheFile) {
    EXPECT_EQ(logOf("1.500,  +2.0E0 ,\t-0007\n"),
              "Line # 1 1.500 +2.0E0 -0007  -> 1st EM reading below cut-off\r\n");
}

TEST_F(GenericFile, ThatIsEmptyGivesNothing) {
    for (const char* bytes : {"", "\n\r\n \t\n", "\xEF\xBB\xBF"}) {
        const auto result = import(bytes);
        EXPECT_EQ(result.survey.NumSites + result.survey.NumRows + result.rejected, 0);
        EXPECT_EQ(result.rows, ImportedRows::kUsable);
    }
}

TEST_F(GenericFile, HasATableOfExactlyItsSites) {
    options.layout = kGenericLayouts[6];
    std::string bytes;
    for (int i = 0; i < 250; ++i)
        bytes += std::to_string(i) + ",1,2," + std::to_string(i) + "\n";
    const Survey survey = import(bytes).survey;
    EXPECT_EQ(survey.NumSites, 250);
    EXPECT_EQ(survey.SiteData.capacity(), 250);
    EXPECT_EQ(survey.SiteID.size(), 250U);
    EXPECT_EQ(survey.SourceLine.size(), 250U);
    EXPECT_EQ(survey.SourceLine[249], 250U);
    EXPECT_EQ(survey.SiteData(kEM1, 249), 249);
    EXPECT_EQ(survey.SiteID[249], 249);
}

TEST_F(GenericFile, MayHaveRowsThatGrowByOne) {
    const auto result = importRows({1, 1, 2, 3, 3});
    EXPECT_EQ(result.rows, ImportedRows::kUsable);
    EXPECT_EQ(result.survey.NumRows, 3);
    EXPECT_EQ(result.survey.RowIndex, 3);
    EXPECT_EQ(result.survey.NumPoints[1], 2);
    EXPECT_EQ(result.survey.NumPoints[2], 1);
    EXPECT_EQ(result.survey.NumPoints[3], 2);
    EXPECT_TRUE(rowsAreUsable(result.survey));
}

TEST_F(GenericFile, WhoseRowsAreOutOfOrderOrNotWholeIsReadButRefused) {
    for (const auto& rows : {std::vector<double>{1, 2, 4},
                             {1, 2, 1},
                             {1, 0},
                             {1, 1, 3},
                             {1, 2, 3, 1},
                             {1, 2, 3, 4, 2},
                             {1, -1},
                             {1, 1.5, 2},
                             {1, 1.5, 2.5}}) {
        const auto result = importRows(rows);
        EXPECT_EQ(result.rows, ImportedRows::kNotSequential);
        EXPECT_EQ(result.rejected, 0);
        EXPECT_EQ(result.survey.NumSites, static_cast<SiteIndex>(rows.size()));
        EXPECT_EQ(result.survey.NumRows, 0);
        EXPECT_EQ(readingsOf(result.survey, kRow), rows);
        EXPECT_FALSE(rowsAreUsable(result.survey));
    }
    for (const auto& rows : {std::vector<double>{2, 3}, {0, 1}, {1.5, 2}})
        EXPECT_EQ(importRows(rows).rows, ImportedRows::kFirstRowNotOne);
}

TEST_F(GenericFile, MayHaveMoreRowsThanTheSystemHolds) {
    std::vector<double> rows;
    for (int i = 1; i <= 250; ++i)
        rows.push_back(i);
    EXPECT_EQ(importRows(rows).survey.NumPoints[250], 1);
    rows.push_back(251);
    const auto result = importRows(rows);
    EXPECT_EQ(result.rows, ImportedRows::kTooManyNumbered);
    EXPECT_EQ(result.survey.NumRows, 251);
    EXPECT_EQ(result.survey.RowIndex, 251);
}

TEST_F(GenericFile, IsInOneRowWithoutARowColumn) {
    parameters.NumRows = 7;
    const Survey survey = import("0,0,1\n1000,0,1\n5000,0,1\n").survey;
    EXPECT_EQ(survey.NumRows, 1);
    EXPECT_EQ(survey.RowIndex, 1);
    EXPECT_EQ(survey.SiteData(kRow, 2), 1);
    EXPECT_EQ(survey.NumPoints[1], 3);
}

TEST_F(GenericFile, HasTheDistancesOfTheMeasureInForce) {
    const std::string bytes = "0,0,1\n3,4,1\n";
    EXPECT_EQ(import(bytes).survey.MaxTrueDist, 5);
    EXPECT_TRUE(import(bytes).survey.UseTrueDist);
    parameters.chooseDistance(2);
    EXPECT_EQ(import(bytes).survey.MaxXDist, 3);
    EXPECT_EQ(import(bytes).survey.TrueDist.size(), 0U);
    parameters.chooseDistance(3);
    EXPECT_EQ(import(bytes).survey.MaxYDist, 4);
}

TEST_F(GenericFile, LeavesTheParametersAsTheyWere) {
    parameters.EMCutoff = -3;
    parameters.MinDistance = 4;
    parameters.NegateEM = parameters.DivideEMBy10 = true;
    parameters.chooseDistance(2);
    parameters.MinLineLength = 7;
    FieldColumns Survey::*const fields[] = {&Survey::SiteIDField, &Survey::XField, &Survey::YField,
                                            &Survey::EM1Field, &Survey::EM2Field};
    for (int first = 1; const auto field : fields)
        parameters.*field = {first++, 9, 4};
    const Survey survey = import("1,2,3").survey;
    EXPECT_EQ(static_cast<const SurveyParameters&>(survey), static_cast<const SurveyParameters&>(parameters));
    EXPECT_EQ(survey.SiteData(kEM1, 0), 3);  // and they are not applied
}

TEST_F(GenericFile, ThatCannotBeReadIsAnErrorAndKeepsTheLog) {
    writeFile(options.errorLogPath, "old");
    for (const std::string& unreadable : {folder / "missing.txt", folder.path()}) {
        options.path = unreadable;
        EXPECT_THROW(importGenericFile(options, parameters), RunTimeError);
    }
    EXPECT_EQ(log(), "old");
}

TEST_F(GenericFile, IsReadWithoutALogThatCannotBeCreated) {
    options.errorLogPath = folder / "none/error_log.dat";
    EXPECT_EQ(import("1,2,3\nx,y,z\n").summary.logProblem,
              folder / "none/error_log.dat cannot be written: No such file or directory");
}

TEST_F(GenericFile, ReadsALineOfManyMegabytes) {
    std::string bytes;
    for (int i = 0; i < 500'000; ++i)
        bytes += "1,2,3 ";
    EXPECT_EQ(import(bytes).survey.NumSites, 500'000);
    EXPECT_EQ(logOf("1," + std::string(5'000'000, 'y') + ",3"),
              "Line # 1 1 " + std::string(5'000'000, 'y') + " 3  -> non-numeric Y-coord data\r\n");
}

}  // namespace tessel
