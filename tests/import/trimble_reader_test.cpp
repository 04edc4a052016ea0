// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/trimble_reader.h"

#include "import/error_log.h"
#include "support/made_survey.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

FieldColumns columns(int start, int end) {
    return {start, end, end - start + 1};
}

std::string inWords(const std::vector<FieldPlace>& fields) {
    std::string words;
    for (const FieldPlace& field : fields)
        words += field.name + ' ' + std::to_string(field.first) + '-' + std::to_string(field.last) + ", ";
    return words;
}

// Lines of the form "iiii xxxxxxxx yyyyyyyy 11111111 22222222".
class TrimbleFile : public FolderTest {
  protected:
    TrimbleFile() {
        options.path = folder / "sensor.dat";
        options.errorLogPath = folder / "error_log.dat";
        options.EMCutoff = -10;
        options.MinDistance = 5;
        options.SiteIDField = columns(1, 4);
        options.XField = columns(6, 13);
        options.YField = columns(15, 22);
        options.EM1Field = columns(24, 31);
        options.EM2Field = columns(33, 40);
    }

    ImportResult import(std::string_view bytes) {
        writeFile(options.path, bytes);
        return importTrimbleFile(options);
    }
    std::string log() const { return readFile(options.errorLogPath); }

    // One line of X, Y, EM1 in the columns above.
    static std::string line(const std::string& x, const std::string& y, const std::string& em1,
                            const std::string& em2 = "", const std::string& id = "") {
        const auto right = [](const std::string& text, std::size_t width) {
            return std::string(width - std::min(width, text.size()), ' ') + text;
        };
        return right(id, 4) + " " + right(x, 8) + " " + right(y, 8) + " " + right(em1, 8) + " " +
               right(em2, 8);
    }
    void expectRejected(const std::string& bad, std::string_view reason) {
        import(bad + "\r\n");
        EXPECT_EQ(log(), "Line # 1 " + bad + std::string(reason) + "\r\n");
    }
    // X, Y, EM1 and EM2.
    static std::array<double, 4> valuesOf(const Survey& survey, SiteIndex site) {
        const auto& data = survey.SiteData;
        return {data(kX, site), data(kY, site), data(kEM1, site), data(kEM2, site)};
    }

    TrimbleOptions options;
};

}  // namespace

TEST_F(TrimbleFile, GivesItsSitesInFileOrder) {
    options.SiteIDPresent = options.TwoEMColumns = true;
    const auto result = import(line("1.5", "2.5", "30.25", "40", "7") + "\r\n" +
                               line("-1.5", "1e2", "31", "41.5", "8") + "\r\n");
    EXPECT_EQ(result.rejected, 0);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(sitesIn(result.survey),
              (std::vector<MadeSite>{{1.5, 2.5, 30.25, 40, 1, 7}, {-1.5, 100, 31, 41.5, 1, 8}}));
}

TEST_F(TrimbleFile, KnowsTheLineOfEachSiteThoughOthersAreRejectedOrTooShort) {
    const std::string good = line("1", "2", "3") + "\r\n";
    const Survey survey = import("X\n" + good + line("1", "x", "3") + "\n\n" + good + good).survey;
    ASSERT_EQ(survey.NumSites, 3);
    EXPECT_EQ(linesIn(survey), (std::vector<std::uint32_t>{2, 5, 6}));
}

TEST_F(TrimbleFile, IsDescribedAsItWasReadWithThePlacesOfItsFields) {
    options.SiteIDPresent = options.TwoEMColumns = true;
    const ImportSummary summary = import(line("1", "2", "3", "4", "5") + "\n").summary;
    EXPECT_EQ(summary.file, stateOfInputFile(options.path));
    EXPECT_EQ(summary.file.size, 41);
    EXPECT_EQ(summary.cutoff, -10);
    EXPECT_EQ(inWords(summary.fields), "site number 1-4, X 6-13, Y 15-22, EM1 24-31, EM2 33-40, ");
    options.SiteIDPresent = options.TwoEMColumns = false;
    EXPECT_EQ(inWords(import("").summary.fields), "X 6-13, Y 15-22, EM1 24-31, ");
}

TEST_F(TrimbleFile, HandsItsParametersToTheSurvey) {
    options.SiteIDPresent = options.NegateEM = options.DivideEMBy10 = true;
    options.DistanceMode = 3;
    const Survey survey = import(line("1", "2", "-3", "", "1")).survey;
    EXPECT_TRUE(survey.SiteIDPresent);
    EXPECT_FALSE(survey.TwoEMColumns);
    SurveyParameters expected = options;
    expected.chooseDistance(3);
    EXPECT_EQ(static_cast<const SurveyParameters&>(survey), expected);
}

TEST_F(TrimbleFile, LogsTheFirstReasonWhyEachLineIsRejected) {
    options.SiteIDPresent = options.TwoEMColumns = true;
    const struct {
        std::string x, y, em1, em2, id;
        const char* reason;
    } cases[] = {{"1", "2", "3", "4", "A1", "non-numeric site ID"},
                 {"1", "2", "3", "x", "1", "non-numeric 2nd EM reading"},
                 {"1", "2", "3", "-10.01", "1", "2nd EM reading below cut-off"},
                 {"1,5", "2", "3", "4", "1", "non-numeric X-coord data"},
                 {"1", "N2", "3", "4", "1", "non-numeric Y-coord data"},
                 {"1", "2", "", "4", "1", "non-numeric 1st EM reading"},
                 {"1", "2", "-11", "4", "1", "1st EM reading below cut-off"},
                 {"x", "x", "x", "x", "x", "non-numeric site ID"},
                 {"x", "x", "x", "x", "1", "non-numeric 2nd EM reading"},
                 {"x", "x", "x", "-11", "1", "2nd EM reading below cut-off"},
                 {"x", "x", "x", "1", "1", "non-numeric X-coord data"},
                 {"1", "x", "x", "1", "1", "non-numeric Y-coord data"},
                 {"1", "1", "x", "1", "1", "non-numeric 1st EM reading"}};
    for (const auto& [x, y, em1, em2, id, reason] : cases)
        expectRejected(line(x, y, em1, em2, id), "  -> " + std::string(reason));
}

TEST_F(TrimbleFile, LooksAtSiteNumberAndSecondReadingOnlyWhenTheyArePresent) {
    const auto result = import(line("1", "2", "3", "x", "x") + "\n");
    EXPECT_EQ(result.survey.NumSites, 1);
    EXPECT_TRUE(result.survey.SiteID.empty());
}

TEST_F(TrimbleFile, SkipsShortLinesSilentlyButCountsThem) {
    const auto result = import("\r\nx\r\n" + line("1", "2", "3") + "\r\n\r\nxx\r\n");
    EXPECT_EQ(result.survey.NumSites, 1);
    EXPECT_EQ(result.rejected, 1);
    EXPECT_EQ(log(), "Line # 5 xx  -> non-numeric X-coord data\r\n");
    EXPECT_EQ(result.summary.linesRead, 5);
}

TEST_F(TrimbleFile, AcceptsReadingsEqualToTheCutOff) {
    options.TwoEMColumns = true;
    const auto result = import(line("1", "2", "-10", "-10") + "\n" + line("1", "2", "-10.0001", "5") + "\n" +
                               line("1", "2", "5", "-10.0001") + "\n");
    EXPECT_EQ(result.survey.NumSites, 1);
    EXPECT_EQ(result.rejected, 2);
}

TEST_F(TrimbleFile, ConvertsReadingsBeforeTheyMeetTheCutOff) {
    options.TwoEMColumns = options.NegateEM = options.DivideEMBy10 = true;
    options.EMCutoff = 25.4;
    const auto result = import(line("1", "2", "-254", "-254") + "\n" + line("1", "2", "-253", "-254") + "\n" +
                               line("1", "2", "-254", "254") + "\n");
    ASSERT_EQ(result.survey.NumSites, 1);
    EXPECT_EQ(result.survey.SiteData(kEM1, 0), 25.4);
    EXPECT_EQ(result.survey.SiteData(kEM2, 0), 25.4);
    EXPECT_EQ(log(), "Line # 2 " + line("1", "2", "-253", "-254") +
                         "  -> 1st EM reading below cut-off\r\n"
                         "Line # 3 " +
                         line("1", "2", "-254", "254") + "  -> 2nd EM reading below cut-off\r\n");
}

TEST_F(TrimbleFile, ConvertsReadingsInTheOneWayOrTheOtherAndGivesAZeroNoSign) {
    options.TwoEMColumns = true;
    options.EMCutoff = -1000;
    const std::tuple<bool, bool, double, double> cases[] = {
        {false, false, 254, -7}, {true, false, -254, 7}, {false, true, 25.4, -0.7}};
    for (const auto& [negate, divide, em1, em2] : cases) {
        options.NegateEM = negate;
        options.DivideEMBy10 = divide;
        EXPECT_EQ(valuesOf(import(line("1", "2", "254", "-7")).survey, 0), (std::array{1.0, 2.0, em1, em2}));
    }
    options.NegateEM = true;
    const Survey zeros = import(line("1", "2", "0", "0")).survey;
    EXPECT_FALSE(std::signbit(zeros.SiteData(kEM1, 0)) || std::signbit(zeros.SiteData(kEM2, 0)));
}

TEST_F(TrimbleFile, LeavesTheValuesOfARejectedLineInTheSlotForTheNextSite) {
    options.SiteIDPresent = options.TwoEMColumns = true;
    const std::string rejected = line("11", "12", "x", "14", "15") + "\n";
    writeFile(options.path, line("1", "2", "3", "4", "5") + "\n" + rejected);
    Survey survey;
    ErrorLog errorLog(options.errorLogPath);
    ImportSummary summary;
    EXPECT_EQ(readTrimbleFile(options, survey, errorLog, summary), 1);
    ASSERT_EQ(survey.NumSites, 1);
    EXPECT_EQ(survey.SiteID[1], 15);
    EXPECT_EQ(valuesOf(survey, 1), (std::array{11.0, 12.0, survey.SiteData(kEM1, 1), 14.0}));

    const auto result = import(rejected + line("21", "22", "23", "24", "25") + "\n");
    EXPECT_EQ(sitesIn(result.survey), (std::vector<MadeSite>{{21, 22, 23, 24, 1, 25}}));
}

TEST_F(TrimbleFile, GrowsTheTableByAHundredTenSitesBeforeItIsFull) {
    options.SiteIDPresent = true;
    std::string bytes;
    SiteIndex sites = 0;
    const auto capacityWith = [&](SiteIndex wanted) {
        for (; sites < wanted; ++sites)
            bytes += line("1", "2", std::to_string(sites), "", std::to_string(sites)) + "\n";
        const Survey survey = import(bytes).survey;
        EXPECT_EQ(survey.NumSites, wanted);
        EXPECT_EQ(survey.SiteID.size(), static_cast<std::size_t>(survey.SiteData.capacity()));
        EXPECT_EQ(survey.SourceLine.size(), survey.SiteID.size());
        EXPECT_EQ(survey.SourceLine.at(static_cast<std::size_t>(wanted - 1)), wanted);
        EXPECT_EQ(survey.SiteData(kEM1, wanted - 1), static_cast<double>(wanted - 1));
        EXPECT_EQ(survey.SiteID.at(static_cast<std::size_t>(wanted - 1)), static_cast<double>(wanted - 1));
        return survey.SiteData.capacity();
    };
    for (const auto& [wanted, capacity] :
         {std::pair(1, 100), {90, 100}, {91, 200}, {102, 200}, {190, 200}, {191, 300}})
        EXPECT_EQ(capacityWith(wanted), capacity) << wanted;
}

TEST_F(TrimbleFile, CutsFieldsAtTheEndOfTheLine) {
    const std::string cut = line("1", "2", "").substr(0, 23);
    const auto result = import(cut + "3\n" + cut + "\n" + cut.substr(0, 14) + "\n" + cut.substr(0, 4) + "\n");
    EXPECT_EQ(result.survey.NumSites, 1);
    EXPECT_EQ(result.survey.SiteData(kEM1, 0), 3);
    EXPECT_EQ(log(), "Line # 2 " + cut + "  -> non-numeric 1st EM reading\r\nLine # 3 " + cut.substr(0, 14) +
                         "  -> non-numeric Y-coord data\r\nLine # 4 " + cut.substr(0, 4) +
                         "  -> non-numeric X-coord data\r\n");
}

TEST_F(TrimbleFile, TakesFieldsBehindEveryLineAndSenselessOnesAsEmpty) {
    options.EM1Field = columns(2147483647, 2147483647);
    expectRejected(line("1", "2", "3"), reject_reason::kEM1);
    options.EM1Field = columns(24, 2147483647);
    EXPECT_EQ(import(line("1", "2", "3")).survey.SiteData(kEM1, 0), 3);
    for (const FieldColumns senseless : {FieldColumns{0, 0, 0}, FieldColumns{-5, -1, 5}}) {
        options.XField = senseless;
        expectRejected(line("1", "2", "3"), reject_reason::kX);
    }
}

TEST_F(TrimbleFile, CountsColumnsInBytesAndReadsAFieldOfOne) {
    options.XField = columns(4, 6);
    options.YField = columns(8, 8);
    options.EM1Field = columns(10, 11);
    // Two bytes of UTF-8 and one of Latin-1.
    const Survey survey = import("ü\xFC\x31.5 2 33\n").survey;
    ASSERT_EQ(survey.NumSites, 1);
    EXPECT_EQ(valuesOf(survey, 0), (std::array{1.5, 2.0, 33.0, survey.SiteData(kEM2, 0)}));
}

TEST_F(TrimbleFile, ThatIsWhollyInvalidGivesNoSite) {
    const auto result = import("header line one\r\nheader line two\r\n");
    EXPECT_EQ(result.survey.NumSites, 0);
    EXPECT_EQ(result.survey.NumRows, 0);
    EXPECT_EQ(result.rejected, 2);
}

TEST_F(TrimbleFile, KeepsTheBytesOfRejectedLinesInTheLog) {
    const std::string odd("\0\x01 ü \xFC\x1B\x85 -> \t", 14);
    import(odd + "\r\n");
    EXPECT_EQ(log(), "Line # 1 " + odd + "  -> non-numeric X-coord data\r\n");
}

TEST_F(TrimbleFile, ReadsALineOfManyMegabytes) {
    const auto result = import(line("1", "2", "3") + std::string(10'000'000, 'x') + "\n" +
                               std::string(10'000'000, 'y') + "\n" + line("4", "5", "6"));
    EXPECT_EQ(result.survey.NumSites, 2);
    EXPECT_EQ(log(), "Line # 2 " + std::string(10'000'000, 'y') + "  -> non-numeric X-coord data\r\n");
}

TEST_F(TrimbleFile, FindsRowsByTheDistanceChosen) {
    const std::string bytes = line("0", "0", "1") + "\n" + line("1", "0", "1") + "\n" + line("1", "5", "1") +
                              "\n" + line("1", "10.1", "1") + "\n";
    const auto result = import(bytes);
    EXPECT_EQ(result.rows, ImportedRows::kUsable);
    EXPECT_EQ(result.survey.NumRows, 2);
    EXPECT_EQ(result.survey.SiteData(kRow, 2), 1);
    EXPECT_EQ(result.survey.SiteData(kRow, 3), 2);
    EXPECT_DOUBLE_EQ(result.survey.MaxTrueDist, 5.1);
    EXPECT_EQ(result.survey.TrueDist.size(), 5U);
    options.DistanceMode = 2;
    EXPECT_EQ(import(bytes).survey.NumRows, 1);
    options.DistanceMode = 3;
    EXPECT_EQ(import(bytes).survey.NumRows, 2);
}

TEST_F(TrimbleFile, OfMoreThan250RowsKeepsItsSites) {
    std::string bytes;
    for (int i = 0; i < 252; ++i)
        bytes += line(std::to_string(i * 10), "0", "1") + "\n";
    const auto result = import(bytes);
    EXPECT_EQ(result.rows, ImportedRows::kTooManyRows);
    EXPECT_EQ(result.survey.NumSites, 252);
    EXPECT_EQ(result.survey.NumRows, 0);
    // The gap behind the first site opens no row: 251 sites make 250 rows.
    const auto fits = import(bytes.substr(0, bytes.rfind(line("2510", "0", "1"))));
    EXPECT_EQ(fits.rows, ImportedRows::kUsable);
    EXPECT_EQ(fits.survey.NumRows, 250);
}

TEST_F(TrimbleFile, WithSitesThatAreNoPlaceOnEarthBeginsARowAtEach) {
    const std::string site = line("0", "0", "1") + "\n";
    const auto result = import(site + site + line("1e200", "0", "1") + "\nbad\n" +
                               line("-1e200", "1e300", "1") + "\n" + site + site);
    EXPECT_EQ(result.survey.NumSites, 6);
    EXPECT_EQ(result.rejected, 1);
    EXPECT_EQ(result.survey.NumRows, 4);
}

TEST_F(TrimbleFile, TellsHowManyLinesAnEdgeOfAFieldCuts) {
    const std::string good = line("100", "200", "30");
    const auto result =
        import("a header line 12345678901234567890123456789\n" + good + "\n" +
               line("123456789", "200", "30") + "\n" + good + "\n" + line("100", "123456789", "30") + "\n");
    EXPECT_EQ(result.survey.NumSites, 4);
    EXPECT_EQ(result.summary.linesCut, 2);
    EXPECT_EQ(result.summary.firstLineCut, 3);
    EXPECT_EQ(import(good + "\n" + good + "\n").summary.linesCut, 0);
    EXPECT_EQ(import(good + "\n").summary.firstLineCut, 0);
}

TEST_F(TrimbleFile, TakesADigitOnBothSidesOfAnEdgeForACut) {
    // "1234|5" and "5|678": begin and end of each field, one line for each.
    options.XField = columns(3, 4);
    options.YField = columns(6, 7);
    options.EM1Field = columns(9, 10);
    const std::tuple<const char*, int, const char*> cases[] = {
        {"  12 34 56  \n", 0, "none"},
        {"9912 34 56  \n", 1, "before X"},
        {"  12934 56  \n", 1, "between X and Y"},
        {"  12 34956  \n", 1, "between Y and EM1"},
        {"  12 34 569 \n", 1, "behind EM1"},
        {"-.1. 34 56-9\n", 0, "signs and points are no digits"},
        {"  12 34 56\n", 0, "nor is the line's end"},
        {"  12 34 5\n", 0, "a shorter line"},
        {"  12 34 5\n  12934 5\n9912934956\n", 2, "two lines"}};
    for (const auto& [bytes, lines, what] : cases)
        EXPECT_EQ(import(bytes).summary.linesCut, lines) << what;
}

TEST_F(TrimbleFile, LooksForCutsAtTheFieldsInUseAndInReadingsBelowTheCutOffToo) {
    const std::string good = line("1", "2", "3", "4", "1234");
    const std::string cutSiteID = "12345" + good.substr(5) + "\n";
    const std::string cutEM2 = good + "9\n";
    options.SiteIDPresent = options.TwoEMColumns = true;
    EXPECT_EQ(import(cutSiteID).summary.linesCut, 1);
    EXPECT_EQ(import(cutEM2).summary.linesCut, 1);
    options.SiteIDPresent = options.TwoEMColumns = false;
    EXPECT_EQ(import(cutSiteID).summary.linesCut, 0);
    EXPECT_EQ(import(cutEM2).summary.linesCut, 0);
    options.EMCutoff = 5000;
    const auto result = import(good.substr(0, 22) + "9" + good.substr(23) + "\n");
    EXPECT_EQ(result.rejected, 1);
    EXPECT_EQ(result.summary.linesCut, 1);
}

TEST_F(TrimbleFile, ThatCannotBeReadIsAnErrorAndKeepsTheLog) {
    writeFile(options.errorLogPath, "old");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::string& file : {folder / "missing.dat", folder.path(), folder / "pipe"}) {
        options.path = file;
        EXPECT_EQ(descriptionOf([&] { importTrimbleFile(options); }).find(file), 0U) << file;
        EXPECT_EQ(log(), "old");
    }
}

TEST_F(TrimbleFile, MayBeTheErrorLogItself) {
    import("first bad line\r\nsecond bad line\r\n");
    options.path = options.errorLogPath;
    const auto result = importTrimbleFile(options);
    EXPECT_EQ(result.rejected, 2);
    EXPECT_EQ(
        log(),
        "Line # 1 Line # 1 first bad line  -> non-numeric X-coord data  -> non-numeric X-coord data\r\n"
        "Line # 2 Line # 2 second bad line  -> non-numeric X-coord data  -> non-numeric X-coord data\r\n");
}

TEST_F(TrimbleFile, OfThreeMillionSitesIsRead) {
    std::string bytes;
    const std::string site = line("1", "2", "3").substr(0, 31) + "\n";
    bytes.reserve(3'000'000 * site.size());
    for (int i = 0; i < 3'000'000; ++i)
        bytes += site;
    const auto result = import(bytes);
    EXPECT_EQ(result.survey.NumSites, 3'000'000);
    EXPECT_EQ(result.survey.NumRows, 1);
    EXPECT_EQ(result.survey.SiteData(kEM1, 2'999'999), 3);
}

}  // namespace tessel
