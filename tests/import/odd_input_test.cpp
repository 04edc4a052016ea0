// SPDX-License-Identifier: GPL-3.0-or-later
// Files as they come out of loggers, off broken cards and out of the wrong program: each is read, or refused
// with a reason, and what has been read can be exported and read again.
#include "base/numbers.h"
#include "export/transect_file.h"
#include "import/generic_reader.h"
#include "import/trimble_reader.h"
#include "rows/row_detection.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

const std::string kFolder = std::string(TESSEL_SOURCE_DIR) + "/tests/import/data/odd_input/";

FieldColumns columns(int start, int end) {
    return {start, end, end - start + 1};
}

// Lines of the form "iiii xxxxxxxx yyyyyyyy 11111111".
class OddInput : public FolderTest {
  protected:
    OddInput() {
        options.errorLogPath = folder / "error_log.dat";
        options.EMCutoff = -10;
        options.MinDistance = 50;
        options.SiteIDPresent = true;
        options.SiteIDField = columns(1, 4);
        options.XField = columns(6, 13);
        options.YField = columns(15, 22);
        options.EM1Field = columns(24, 31);
    }

    ImportResult import(const std::string& file) {
        options.path = file;
        ImportResult result = importTrimbleFile(options);
        if (result.rows == ImportedRows::kUsable) {
            Calculate_NumPoints(result.survey);
            expectReadAgain(result.survey);
        }
        return result;
    }
    ImportResult importNamed(const std::string& name) { return import(kFolder + name); }

    // Sites and rejected lines of a file; the log names each rejected one.
    void expectRead(const std::string& name, SiteIndex sites, std::int64_t errors) {
        SCOPED_TRACE(name);
        const ImportResult result = importNamed(name);
        EXPECT_EQ(result.survey.NumSites, sites);
        EXPECT_EQ(result.rejected, errors);
        EXPECT_EQ(linesOfLog(), errors);
    }

    std::int64_t linesOfLog() const {
        std::int64_t lines = 0;
        const std::string log = readFile(options.errorLogPath);
        for (auto at = log.find("Line # "); at != std::string::npos; at = log.find("\r\nLine # ", at + 1))
            ++lines;
        return lines;
    }

    // The transect file gives the same sites to who reads it.
    void expectReadAgain(const Survey& survey) {
        if (survey.NumSites == 0) return;
        writeTransectFile(survey, folder / "transect.txt", {});
        GenericOptions again;
        again.path = folder / "transect.txt";
        again.errorLogPath = folder / "second_log.dat";
        again.cutoff = options.EMCutoff;
        again.layout = kGenericLayouts[survey.TwoEMColumns ? 3 : 2];
        const ImportResult result = importGenericFile(again, Survey{});
        ASSERT_EQ(result.survey.NumSites, survey.NumSites);
        for (const int column : {kX, kY, kEM1})
            for (SiteIndex site = 0; site < survey.NumSites; ++site)
                EXPECT_NEAR(result.survey.SiteData(column, site), survey.SiteData(column, site),
                            std::abs(survey.SiteData(column, site)) * 1e-14);
    }

    TrimbleOptions options;
};

}  // namespace

TEST_F(OddInput, OfEveryKindOfLineEndIsRead) {
    expectRead("empty.dat", 0, 0);
    expectRead("one_line_without_end.dat", 1, 0);
    expectRead("carriage_returns_alone.dat", 4, 0);
    expectRead("line_feeds_alone.dat", 4, 0);
    expectRead("mixed_line_ends.dat", 4, 0);
    expectRead("byte_order_mark.dat", 4, 0);
}

TEST_F(OddInput, OfOtherBytesThanTextLosesOnlyTheLinesConcerned) {
    expectRead("latin1_and_utf8_text.dat", 2, 1);
    expectRead("nul_bytes.dat", 2, 1);
    const ImportResult binary = importNamed("binary_logger_file.dat");
    EXPECT_EQ(binary.survey.NumSites, 0);
    EXPECT_EQ(binary.rejected, linesOfLog());
    EXPECT_GT(binary.rejected, 0);
}

TEST_F(OddInput, WithShortLinesReadsWhatIsLeftOfAField) {
    expectRead("fields_cut_by_line_end.dat", 1, 3);  // 24 to 31 hold a number only in whole lines
    expectRead("fields_behind_line_end.dat", 1, 2);
}

TEST_F(OddInput, OfEveryFormOfNumberKeepsTheNumericOnes) {
    const ImportResult result = importNamed("number_forms.dat");
    const std::array<double, 6> readings = {0, .5, 5, 5, 100000, 0};
    ASSERT_EQ(result.survey.NumSites, 6);
    for (SiteIndex site = 0; site < 6; ++site)
        EXPECT_EQ(result.survey.SiteData(kEM1, site), readings[static_cast<std::size_t>(site)]) << site;
    EXPECT_EQ(result.rejected, 6);
}

TEST_F(OddInput, OfFourHundredDigitsIsExactOrNotNumeric) {
    options.TwoEMColumns = true;
    options.EM2Field = columns(33, 432);
    const ImportResult result = importNamed("numbers_of_400_digits.dat");
    ASSERT_EQ(result.survey.NumSites, 2);
    EXPECT_EQ(result.survey.SiteData(kEM2, 0), 12.5);
    EXPECT_EQ(result.survey.SiteData(kEM2, 1), 1.0 / 3);
    EXPECT_EQ(result.rejected, 1);
}

TEST_F(OddInput, HasItsRows) {
    const std::tuple<const char*, SiteIndex, int, SiteIndex> cases[] = {
        {"all_at_one_place.dat", 30, 1, 30},
        {"missing_fixes_at_zero.dat", 11, 5, -1},  // each missing fix parts the row, and is one
        {"negative_coordinates_only.dat", 5, 1, 5},
        {"rows_of_one_site.dat", 20, 19, 2}};  // the first gap parts no rows
    for (const auto& [name, sites, rows, inFirstRow] : cases) {
        const Survey survey = importNamed(name).survey;
        EXPECT_EQ(survey.NumSites, sites) << name;
        EXPECT_EQ(survey.NumRows, rows) << name;
        if (inFirstRow > 0) {
            EXPECT_EQ(survey.NumPoints[1], inFirstRow) << name;
        }
    }
    EXPECT_EQ(importNamed("all_at_one_place.dat").survey.MaxTrueDist, 0);
    EXPECT_EQ(importNamed("negative_coordinates_only.dat").survey.SiteData(kX, 4), -105);
    const auto points = importNamed("rows_of_one_site.dat").survey.NumPoints;
    EXPECT_TRUE(std::all_of(points.begin() + 2, points.begin() + 20, [](SiteIndex n) { return n == 1; }));
}

TEST_F(OddInput, MayHaveAnyNameThatTheSystemAllows) {
    for (const std::string& name : std::initializer_list<std::string>{
             "two  blanks .dat", "\"quoted\" 'twice'.dat", "Gr\xC3\xBC\xC3\x9F\x65.dat", "100%n %s %1.dat",
             "not UTF-8 \xFC\xDF.dat", "; rm -rf $HOME `ls` | cat.dat", "-rf", "line\nfeed.dat",
             std::string(200, 'x')}) {
        writeFile(folder / name, "   1 10000000 20000000       12\r\n   2 10000001 20000000       12\r\n");
        const Survey survey = import(folder / name).survey;
        EXPECT_EQ(survey.NumSites, 2) << name;
        writeTransectFile(survey, folder / ("out " + name), {});
        EXPECT_FALSE(readFile(folder / ("out " + name)).empty()) << name;
    }
}

}  // namespace tessel
