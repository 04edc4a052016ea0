// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/transect_file.h"

#include "import/generic_reader.h"
#include "support/file_size_limit.h"
#include "support/made_survey.h"
#include "support/nameless_files.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

#include <sys/wait.h>

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

// Exports to a path where that must fail; gives the description of the error.
std::string failure(const Survey& survey, const std::string& path) {
    return descriptionOf([&] { writeTransectFile(survey, path, {}); });
}

Survey manySites(int sites) {
    std::vector<MadeSite> made;
    for (int i = 0; i < sites; ++i)
        made.push_back({i * 0.25, i * 0.5, 10.0 + i % 7, 20, 1, 1.0 * i});
    return surveyWithRows(made);
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

TEST(TransectFile, HoldsSiteNumbersTwoReadingsAndRows) {
    EXPECT_EQ(exported(twoSites()),
              " 7             436000.12     4100250.5     45.25         101           1 \r\n"
              " 8            -.5           -12            0             .001          2 \r\n");
}

TEST(TransectFile, HoldsSiteNumbersAndTwoReadingsWithoutRows) {
    EXPECT_EQ(exported(twoSites(), {false, 1}),
              " 7             436000.12     4100250.5     45.25         101 \r\n"
              " 8            -.5           -12            0             .001 \r\n");
}

TEST(TransectFile, HoldsSiteNumbersAndOneReading) {
    Survey survey = twoSites();
    survey.TwoEMColumns = false;
    EXPECT_EQ(exported(survey),
              " 7             436000.12     4100250.5     45.25         1 \r\n"
              " 8            -.5           -12            0             2 \r\n");
    EXPECT_EQ(exported(survey, {false, 1}),
              " 7             436000.12     4100250.5     45.25 \r\n"
              " 8            -.5           -12            0 \r\n");
}

TEST(TransectFile, HoldsTwoReadingsWithoutSiteNumbers) {
    Survey survey = twoSites();
    survey.SiteIDPresent = false;
    survey.SiteID.clear();
    EXPECT_EQ(exported(survey),
              " 436000.12     4100250.5     45.25         101           1 \r\n"
              "-.5           -12            0             .001          2 \r\n");
    EXPECT_EQ(exported(survey, {false, 1}),
              " 436000.12     4100250.5     45.25         101 \r\n"
              "-.5           -12            0             .001 \r\n");
}

TEST(TransectFile, HoldsOneReadingWithoutSiteNumbers) {
    Survey survey = twoSites();
    survey.SiteIDPresent = survey.TwoEMColumns = false;
    EXPECT_EQ(exported(survey),
              " 436000.12     4100250.5     45.25         1 \r\n"
              "-.5           -12            0             2 \r\n");
    EXPECT_EQ(exported(survey, {false, 1}),
              " 436000.12     4100250.5     45.25 \r\n"
              "-.5           -12            0 \r\n");
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

TEST(TransectFile, ReplacesAnExistingFile) {
    const TemporaryFolder folder;
    writeFile(folder / "transect.txt", std::string(100000, 'x'));
    writeTransectFile(Survey{}, folder / "transect.txt", {});
    EXPECT_EQ(readFile(folder / "transect.txt"), "");
    EXPECT_EQ(filesIn(folder), 1u);
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

namespace {

// Where a file of old text stands.
class TransectFileFailure : public FolderTest {
  protected:
    TransectFileFailure() { writeFile(path, "old"); }
    void expectOldFileAlone() const {
        EXPECT_EQ(readFile(path), "old");
        EXPECT_EQ(filesIn(folder), 1U);
    }
};

}  // namespace

TEST_F(TransectFileFailure, WhenTheDiskIsFullOrANumberIsNotFiniteLeavesTheOldFile) {
    const Survey many = manySites(20000);
    {
        const FileSizeLimit limit(300'000);
        EXPECT_EQ(failure(many, path), path + " cannot be written: File too large");
    }
    expectOldFileAlone();
    Survey survey = twoSites();
    survey.SiteData(kEM1, 1) = std::numeric_limits<double>::infinity();
    EXPECT_EQ(failure(survey, path), "Overflow");
    expectOldFileAlone();
}

namespace {

// What a hundred programs that were killed at random moments of an export have left behind.
struct Killed {
    int old = 0, replaced = 0;  // target files as they were, and new ones
    int broken = 0;             // target files that are neither
    int half = 0, whole = 0;    // files beside the target, by their contents
};

Killed killExports(const std::function<bool()>& before) {
    const TemporaryFolder folder;
    const std::string path = folder / "transect.txt";
    const Survey survey = manySites(4000);
    const auto start = std::chrono::steady_clock::now();
    const std::string complete = exported(survey);
    const auto whole =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    std::mt19937 random(4);
    std::uniform_int_distribution<useconds_t> moment(0, static_cast<useconds_t>(whole.count()));
    Killed killed;
    for (int round = 0; round < 100; ++round) {
        writeFile(path, "old");
        const pid_t child = ::fork();
        if (child == 0) {
            if (before()) writeTransectFile(survey, path, {});
            ::pause();
        }
        ::usleep(moment(random));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
            const std::string left = readFile(file.path());
            if (file.path() == path)
                ++(left == "old" ? killed.old : left == complete ? killed.replaced : killed.broken);
            else
                ++(left == complete ? killed.whole : killed.half);
            std::filesystem::remove(file);
        }
    }
    return killed;
}

}  // namespace

TEST_F(TransectFileFailure, AKilledProgramLeavesTheOldFileOrTheNewOneWhole) {
    for (const bool simpleFileSystem : {false, true}) {
        const Killed killed = killExports([&] { return !simpleFileSystem || forbidNamelessFiles(); });
        EXPECT_EQ(killed.broken, 0);
        EXPECT_EQ(killed.old + killed.replaced, 100);
        if (simpleFileSystem || !hasNamelessFiles(std::filesystem::temp_directory_path())) continue;
        EXPECT_EQ(killed.half, 0);
        EXPECT_LE(killed.whole,
                  10);  // in the instant in which it has its first name and not yet the target's
    }
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
