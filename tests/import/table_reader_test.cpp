// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/table_reader.h"

#include "base/run_time_error.h"
#include "export/table_file.h"
#include "geodesy/coordinate_systems.h"
#include "import/error_log.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"
#include "support/survey_invariants.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Role = TableRole;

class TableImport : public testing::Test {
  protected:
    TableImport() {
        options.path = folder / "table.csv";
        options.errorLogPath = folder / "error_log.dat";
        options.roles = {Role::kX, Role::kY, Role::kEM1};
        options.EMCutoff = -10;
        options.MinDistance = 3;
    }

    ImportResult import(std::string_view bytes) {
        writeFile(options.path, bytes);
        return importTable(options);
    }
    std::string log() const { return readFile(options.errorLogPath); }

    const TemporaryFolder folder;
    TableOptions options;
};

}  // namespace

TEST_F(TableImport, TakesTheColumnsThatWereChosenAndFindsRows) {
    options.shape = {';', ',', 1, false};
    options.roles = {Role::kSite, Role::kNothing, Role::kEM2, Role::kY, Role::kX, Role::kEM1};
    const ImportResult result =
        import("site;note;em2;y;x;em1\n11;a;40;0;0,5;20\n12;;41;1;0,5;21\n13;b;42;1;9;22\n14;b;43;0;9;23\n");
    EXPECT_EQ(
        sitesIn(result.survey),
        (std::vector<MadeSite>{
            {0.5, 0, 20, 40, 1, 11}, {0.5, 1, 21, 41, 1, 12}, {9, 1, 22, 42, 2, 13}, {9, 0, 23, 43, 2, 14}}));
    EXPECT_EQ(linesIn(result.survey), (std::vector<std::uint32_t>{2, 3, 4, 5}));
    EXPECT_EQ(result.survey.NumRows, 2);
    EXPECT_EQ(result.rejected, 0);
    EXPECT_EQ(result.survey.PositionsCRS, 0);
    EXPECT_EQ(brokenInvariant(result.survey), "");
    EXPECT_EQ(result.summary.fields.size(), 5U);
    EXPECT_EQ(result.summary.fields[1].name, "EM2");
    EXPECT_EQ(result.summary.fields[1].first, 3);
}

TEST_F(TableImport, RejectsLineByLineAndLogsThemAsTheyStand) {
    options.roles = {Role::kX, Role::kY, Role::kEM1, Role::kEM2, Role::kSite, Role::kRow};
    options.EMCutoff = 0;
    const std::string good = "1,2,3,4,5,1\n";
    EXPECT_EQ(import(good +
                     "\n \nx,2,3,4,5,1\n1,x,3,4,5,1\n1,2,x,4,5,1\n1,2,-3,4,5,1\n1,2,3,x,5,1\n1,2,3,-4,5,1\n"
                     "1,2,3,4,x,1\n1,2,3,4,5,x\n1,2,3\n" +
                     good)
                  .survey.NumSites,
              2);
    EXPECT_EQ(log(),
              "Line # 4 x,2,3,4,5,1  -> non-numeric X-coord data\r\n"
              "Line # 5 1,x,3,4,5,1  -> non-numeric Y-coord data\r\n"
              "Line # 6 1,2,x,4,5,1  -> non-numeric 1st EM reading\r\n"
              "Line # 7 1,2,-3,4,5,1  -> 1st EM reading below cut-off\r\n"
              "Line # 8 1,2,3,x,5,1  -> non-numeric 2nd EM reading\r\n"
              "Line # 9 1,2,3,-4,5,1  -> 2nd EM reading below cut-off\r\n"
              "Line # 10 1,2,3,4,x,1  -> non-numeric site ID\r\n"
              "Line # 11 1,2,3,4,5,x  -> non-numeric row number\r\n"
              "Line # 12 1,2,3  -> non-numeric site ID\r\n");
}

TEST_F(TableImport, NeedsOnlyTheChosenColumnsOnALine) {
    options.shape.linesToSkip = 1;
    EXPECT_EQ(import("x,y,ec,note,time\n1,2,3\n4,5,6,a\n").survey.NumSites, 2);
}

TEST_F(TableImport, NegatesAndDividesBeforeTheCutoff) {
    options.NegateEM = options.DivideEMBy10 = true;
    options.EMCutoff = 25.4;
    const ImportResult result = import("1,2,-254\n1,2,-253\n1,2,254\n");
    EXPECT_EQ(readingsOf(result.survey, kEM1), std::vector<double>{25.4});
    EXPECT_EQ(result.rejected, 2);
}

TEST_F(TableImport, TakesRowNumbersWhereAColumnHoldsThem) {
    options.roles = {Role::kX, Role::kY, Role::kEM1, Role::kRow};
    const ImportResult good = import("0,0,1,1\n0,1,1,1\n0,2,1,2\n");
    EXPECT_EQ(good.rows, ImportedRows::kUsable);
    EXPECT_EQ(good.survey.NumRows, 2);
    EXPECT_EQ(good.survey.NumPoints[1], 2);
    EXPECT_EQ(import("0,0,1,2\n").rows, ImportedRows::kFirstRowNotOne);
    EXPECT_EQ(import("0,0,1,1\n0,0,1,3\n").rows, ImportedRows::kNotSequential);
}

TEST_F(TableImport, StopsAtTooManyRows) {
    std::string bytes;
    for (int i = 0; i < 300; ++i)
        bytes += std::to_string(i * 10) + ",0,1\n";
    EXPECT_EQ(import(bytes).rows, ImportedRows::kTooManyRows);
}

TEST_F(TableImport, MakesMetresOfDegreesAndMinutesBeforeItLooksForRows) {
    options.shape = {'\t', '.', 1, true};
    options.roles = {Role::kLatitude, Role::kLongitude, Role::kNothing, Role::kEM1};
    const ImportResult result = import(
        "Latitude\tLongitude\tTime\tCond.1\tNote\n5224.461145N\t00220.673280W\t09:51:46.89\t4.90\n"
        "5224.461129N\t00220.673282W\t09:51:47.94\t4.82\n5224.471129N\t00220.673282W\t09:51:48\t4.8\n");
    ASSERT_EQ(result.survey.NumSites, 3);
    EXPECT_EQ(result.survey.PositionsCRS, 32630);
    EXPECT_NEAR(result.survey.SiteData(kX, 0), 544586.53, 0.006);
    EXPECT_NEAR(result.survey.SiteData(kY, 0), 5806585.84, 0.006);
    EXPECT_NEAR(result.survey.TrueDist[1], 0.03, 0.01);
    EXPECT_EQ(result.survey.NumRows, 2) << "18 m further on";
    EXPECT_EQ(result.summary.positionsKept, "");
    EXPECT_EQ(brokenInvariant(result.survey), "");
}

TEST_F(TableImport, ConvertsToTheSystemThatWasChosen) {
    options.roles = {Role::kLongitude, Role::kLatitude, Role::kEM1};
    options.system = 27700;
    double x = -2.3, y = 52.4;
    const ImportResult result = import("-2.3,52.4,1\n");
    Transformation(27700).toMetres(&x, &y, 1);
    EXPECT_EQ(result.survey.SiteData(kX, 0), x);
    EXPECT_EQ(result.survey.PositionsCRS, 27700);
    options.system = 1;
    EXPECT_THROW(import("-2.3,52.4,1\n"), RunTimeError);
}

TEST_F(TableImport, KeepsPositionsThatAreNoneAndTells) {
    options.roles = {Role::kLongitude, Role::kLatitude, Role::kEM1};
    const ImportResult result = import("-2.3,52.4,1\n0,0,2\n-2.3,92,3\n");
    EXPECT_EQ(result.survey.NumSites, 3);
    EXPECT_EQ(result.survey.SiteData(kX, 1), 0);
    EXPECT_EQ(result.survey.SiteData(kY, 2), 92);
    EXPECT_EQ(result.summary.positionsKept,
              "2 positions stay as they are: 1 out of range, 1 at 0, 0 (line 2, 3).");
    options.shape.minutes = true;
    const ImportResult minutes = import("-218,5224,1\n-218,5265,2\n");
    EXPECT_EQ(minutes.survey.SiteData(kY, 1), 5265);
    EXPECT_EQ(import("0,0,1\n").survey.PositionsCRS, 0) << "no zone fits";
}

// Most numbers are read by the shape of one above them.
TEST_F(TableImport, ReadsEachNumberAsIfItStoodAlone) {
    constexpr std::string_view kForms[] = {"12@5",   "1@25",     "-0@5", "7",    " 7@25", "\"123@5\"",
                                           "1@5E+2", "+12@5000", "@25",  "12@",  "123",   "-123@4567",
                                           "12@5W",  "S1@25",    "12",   "1@2@5"};
    std::mt19937 random(5);
    options.roles = {Role::kLongitude, Role::kEM1, Role::kLatitude};
    options.EMCutoff = -1e9;
    for (const char separator : {';', '\t'})
        for (const char sign : {'.', ','}) {
            options.shape = {separator, sign, 0, false};
            std::string file;
            std::vector<std::array<double, 3>> expected;
            for (int line = 0; line < 2000; ++line) {
                std::array<double, 3> values{};
                bool allNumbers = true;
                for (std::size_t column = 0; column < values.size(); ++column) {
                    std::string text(kForms[std::uniform_int_distribution<>(0, 15)(random)]);
                    std::ranges::replace(text, '@', sign);
                    if (column > 0) file += separator;
                    file += text;
                    std::erase_if(text, [](char c) { return c == ' ' || c == '"'; });
                    allNumbers &= readField(text, sign, column != 1, values[column]);
                }
                file += '\n';
                if (allNumbers) expected.push_back(values);
            }
            writeFile(options.path, file);
            ErrorLog errors(options.errorLogPath);
            Survey survey;
            ImportSummary summary;
            readTable(options, survey, errors, summary);
            ASSERT_EQ(survey.NumSites, std::ssize(expected));
            EXPECT_GT(survey.NumSites, 500);
            for (SiteIndex i = 0; i < survey.NumSites; ++i)
                ASSERT_EQ(
                    (std::array{survey.SiteData(kX, i), survey.SiteData(kEM1, i), survey.SiteData(kY, i)}),
                    expected[static_cast<std::size_t>(i)])
                    << i;
        }
}

TEST_F(TableImport, OfAnEmptyFileHasNoSites) {
    for (const char* const bytes : {"", "x,y,ec\n", "\n\n"}) {
        const ImportResult result = import(bytes);
        EXPECT_EQ(result.survey.NumSites, 0);
        EXPECT_EQ(result.survey.SiteData.capacity(), 0);
    }
    std::filesystem::remove(options.path);
    EXPECT_THROW(importTable(options), RunTimeError);
}

TEST_F(TableImport, ReadsAnExportedTableToTheBit) {
    std::mt19937 random(5);
    Survey survey = randomRows(random, 5, 40);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        for (const SiteColumn column : {kEM1, kEM2})
            survey.SiteData(column, i) = std::abs(survey.SiteData(column, i)) / 3;
    const Journal journal = journalOf(survey);
    for (const char separator : {',', ';'}) {
        writeTable(journal, options.path,
                   {{TableColumn::kSite, TableColumn::kX, TableColumn::kY, TableColumn::kEM1,
                     TableColumn::kEM2, TableColumn::kRow, TableColumn::kLine},
                    separator,
                    false,
                    "m"});
        const std::string bytes = readFile(options.path);
        options.shape = recogniseTable(bytes, false);
        EXPECT_EQ(options.shape, (TableShape{separator, '.', 1, false}));
        options.roles = guessRoles(previewTable(bytes, false, options.shape));
        const ImportResult back = importTable(options);
        EXPECT_EQ(back.rejected, 0);
        EXPECT_EQ(sitesIn(back.survey), sitesIn(survey));
        EXPECT_EQ(back.survey.NumRows, survey.NumRows);
    }
}

}  // namespace tessel
