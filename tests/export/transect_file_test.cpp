// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/transect_file.h"

#include "import/generic_reader.h"
#include "support/made_survey.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

Survey twoSites() {
    return surveyWithRows({{436000.12, 4100250.5, 45.25, 101, 1, 7}, {-0.5, -12, 0, .001, 2, 8}});
}

std::string exported(const Survey& survey, const TransectFormat& format = {}) {
    const TemporaryFolder folder;
    writeTransectFile(survey, folder / "transect.txt", format);
    return readFile(folder / "transect.txt");
}

// Fields that begin at the columns given (from 0), a line's end behind the last.
std::string line(std::initializer_list<std::pair<std::size_t, std::string>> fields) {
    std::string text;
    for (const auto& [column, field] : fields) {
        text.resize(column, ' ');
        text += field;
    }
    return text + "\r\n";
}

}  // namespace

TEST(RecordFormat, NamesTheFieldsOfALine) {
    for (const bool id : {true, false})
        for (const bool two : {true, false})
            for (const bool row : {true, false})
                EXPECT_EQ(recordFormat(id, two, row), std::string(id ? "Site_#  " : "") +
                                                          "X_coord  Y_coord  EM1" + (two ? "  EM2" : "") +
                                                          (row ? "  Row_#" : ""));
}

TEST(TransectFile, HoldsSiteNumbersSecondReadingsAndRowsWhereTheyAre) {
    const struct {
        bool ids, two, rows;
        const char* lines;
    } cases[] = {{true, true, true,
                  " 7             436000.12     4100250.5     45.25         101           1 \r\n"
                  " 8            -.5           -12            0             .001          2 \r\n"},
                 {true, true, false,
                  " 7             436000.12     4100250.5     45.25         101 \r\n"
                  " 8            -.5           -12            0             .001 \r\n"},
                 {true, false, true,
                  " 7             436000.12     4100250.5     45.25         1 \r\n"
                  " 8            -.5           -12            0             2 \r\n"},
                 {true, false, false,
                  " 7             436000.12     4100250.5     45.25 \r\n"
                  " 8            -.5           -12            0 \r\n"},
                 {false, true, true,
                  " 436000.12     4100250.5     45.25         101           1 \r\n"
                  "-.5           -12            0             .001          2 \r\n"},
                 {false, true, false,
                  " 436000.12     4100250.5     45.25         101 \r\n"
                  "-.5           -12            0             .001 \r\n"},
                 {false, false, true,
                  " 436000.12     4100250.5     45.25         1 \r\n"
                  "-.5           -12            0             2 \r\n"},
                 {false, false, false,
                  " 436000.12     4100250.5     45.25 \r\n"
                  "-.5           -12            0 \r\n"}};
    for (const auto& [ids, two, rows, lines] : cases) {
        Survey survey = twoSites();
        survey.SiteIDPresent = ids;
        survey.TwoEMColumns = two;
        if (!ids) survey.SiteID.clear();
        EXPECT_EQ(exported(survey, {rows, 1}), lines);
    }
}

TEST(TransectFile, AFieldThatOverrunsItsZonePushesTheNextOn) {
    Survey survey = surveyWithRows({{1.0 / 3, 1234567890.12345, -1.5e-7, 2, 1, 0}});
    survey.SiteIDPresent = false;
    EXPECT_EQ(exported(survey), line({{0, " .333333333333333 "},
                                      {28, " 1234567890.12345 "},
                                      {56, "-1.5E-07 "},
                                      {70, " 2 "},
                                      {84, " 1 "}}));
}

TEST(TransectFile, AFieldOfExactly14CharactersTouchesItsNeighbour) {
    // With its blanks around the first is 14 characters long, the second 15, the third 13.
    Survey survey = surveyWithRows({{123456789.01, -1234567890.12, 12345678.12, 2, 1, 0}});
    survey.SiteIDPresent = false;
    EXPECT_EQ(exported(survey),
              " 123456789.01 -1234567890.12               12345678.12   2             1 \r\n");
    survey = surveyWithRows({{123456789.012, 1, 1, 2, 1, 0}});
    survey.SiteIDPresent = false;
    EXPECT_EQ(exported(survey),
              line({{0, " 123456789.012 "}, {28, " 1 "}, {42, " 1 "}, {56, " 2 "}, {70, " 1 "}}));
}

TEST(TransectFile, TheLongestLineFits) {
    constexpr double kLong = -1.23456789012345e-300;
    const Survey survey = surveyWithRows({{kLong, kLong, kLong, kLong, 1, kLong}});
    const std::string field = "-1.23456789012345E-300 ";
    EXPECT_EQ(exported(survey),
              line({{0, field}, {28, field}, {56, field}, {84, field}, {112, field}, {140, " 1 "}}));
}

TEST(TransectFile, CountsRowsFromTheBeginningRowBeyondWhatAnIntegerHolds) {
    Survey survey = surveyWithRows({{0, 0, 1, 1, 1}, {0, 0, 1, 1, 2}});
    survey.SiteIDPresent = survey.TwoEMColumns = false;
    const auto site = [](const std::string& row) {
        return line({{0, " 0 "}, {14, " 0 "}, {28, " 1 "}, {42, row}});
    };
    EXPECT_EQ(exported(survey, {true, 5}), site(" 5 ") + site(" 6 "));
    EXPECT_EQ(exported(survey, {true, 2147483647}), site(" 2147483647 ") + site(" 2147483648 "));
    EXPECT_EQ(exported(Survey{}), "");
}

TEST(TransectFile, HoldsEverySiteInOrder) {
    std::vector<MadeSite> ten(10), all;
    for (std::size_t i = 0; i < 10; ++i)
        ten[i] = {static_cast<double>(i), 5, 30, 40, 1};
    const std::string lines = exported(surveyWithRows(ten));
    std::string expected;
    for (int times = 0; times < 500; ++times) {
        all.insert(all.end(), ten.begin(), ten.end());
        expected += lines;
    }
    EXPECT_EQ(exported(surveyWithRows(all)), expected);
}

using TransectFileFailure = FolderTest;

TEST_F(TransectFileFailure, OfANumberThatIsNotFiniteLeavesTheOldFile) {
    writeFile(path, "old");
    Survey survey = twoSites();
    survey.SiteData(kEM1, 1) = std::numeric_limits<double>::infinity();
    EXPECT_EQ(descriptionOf([&] { writeTransectFile(survey, path, {}); }), "Overflow");
    expectOldFileAlone();
}

// What the help document on the export warns of.
TEST(TransectFile, ReadBackWithTheCutOffThatTheGenericImportOffersLosesReadingsBelowZero) {
    const TemporaryFolder folder;
    GenericOptions options;
    options.path = folder / "transect.txt";
    options.errorLogPath = folder / "error_log.dat";
    options.layout = kGenericLayouts[3];  // site number, X, Y, two readings, row
    Survey parameters;
    parameters.chooseDistance(1);
    writeTransectFile(surveyWithRows({{0, 0, 20, 30, 1, 1}, {1, 0, -3.4, 30, 1, 2}, {2, 0, 20, 30, 1, 3}}),
                      options.path, {});
    EXPECT_EQ(importGenericFile(options, parameters).survey.NumSites, 2);
    options.cutoff = -1000;
    EXPECT_EQ(importGenericFile(options, parameters).survey.NumSites, 3);
}

TEST(ExportNotice, NamesAnEmptySurvey) {
    EXPECT_EQ(exportNotice(Survey{}, 0, {}), "The survey has no sites; the file will be empty.");
}

TEST(ExportNotice, CountsSitesWithoutAValidRowNumber) {
    Survey survey = surveyWithRows({{0, 0, 0, 0, 1}, {1, 0, 0, 0, 1}, {2, 0, 0, 0, 2}});
    EXPECT_EQ(sitesWithoutRow(survey), 0);
    EXPECT_EQ(exportNotice(survey, 0, {}), "");
    survey.SiteData(kRow, 0) = 0;
    EXPECT_EQ(sitesWithoutRow(survey), 1);
    EXPECT_EQ(exportNotice(survey, 1, {}), "1 site has no valid row number; it will be written with row 0.");
    survey.SiteData(kRow, 1) = 1.5;
    survey.SiteData(kRow, 2) = -1;
    EXPECT_EQ(sitesWithoutRow(survey), 3);
    EXPECT_EQ(exportNotice(survey, 3, {true, 5}),
              "3 sites have no valid row number; they will be written with row 4.");
    EXPECT_EQ(exportNotice(survey, 3, {false, 1}), "") << "none is written";
}

TEST(ExportNotice, TellsThatASearchForRowsStopped) {
    Survey survey = surveyWithRows({{0, 0, 0, 0, 1}, {1, 0, 0, 0, 2}});
    survey.RowIndex = kMaxRows + 1;
    EXPECT_EQ(exportNotice(survey, 0, {}),
              "The search for rows found too many and stopped half-way: the row numbers are of no use.");
}

}  // namespace tessel
