// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/table_file.h"

#include "base/run_time_error.h"
#include "import/generic_reader.h"
#include "rows/site_removal.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

using Column = TableColumn;

constexpr auto kAll = {Column::kSite, Column::kX,   Column::kY,   Column::kEM1,
                       Column::kEM2,  Column::kRow, Column::kLine};

class TableFile : public FolderTest {
  protected:
    void take(Survey survey) { importSurvey(journal, std::move(survey)); }
    std::string written() {
        writeTable(journal, path, format);
        return readFile(path);
    }

    Journal journal{std::size_t{1} << 30};
    TableFormat format{kAll, ',', false, "m"};
};

Survey twoRows() {
    return madeSurvey({{0.5, -1, 20, 40, 1}, {1e-7, 2e17, 21, 41.25, 1}, {500000, 30, 22, 42, 2}});
}

// Any number that a reading can be, also the smallest and the largest.
std::vector<double> anyNumbers(std::size_t count) {
    std::vector<double> numbers = {0,
                                   0.1,
                                   1.0 / 3,
                                   1e-5,
                                   -0.0,
                                   9.999999999999999e-6,
                                   1e17,
                                   5e-324,
                                   500000,
                                   std::numeric_limits<double>::max(),
                                   2.2250738585072014e-308,
                                   -123456.789};
    std::mt19937_64 random(7);
    while (numbers.size() < count) {
        const double number = std::bit_cast<double>(random());
        if (std::isfinite(number)) numbers.push_back(number);
    }
    return numbers;
}

}  // namespace

TEST_F(TableFile, HasAHeaderWithUnitsAndALineForEachSite) {
    take(twoRows());
    EXPECT_EQ(written(),
              "Site,\"X (m)\",\"Y (m)\",\"EM1 (mS/m)\",\"EM2 (mS/m)\",Row,Line\r\n"
              "1001,0.5,-1,20,40,1,1\r\n"
              "1002,1e-07,2e+17,21,41.25,1,3\r\n"
              "1003,500000,30,22,42,2,5\r\n");
}

TEST_F(TableFile, HasTheColumnsAndTheSeparatorThatWereChosen) {
    take(twoRows());
    format = {{Column::kY, Column::kEM1}, ';', false, "degrees"};
    EXPECT_EQ(written(), "\"Y (degrees)\";\"EM1 (mS/m)\"\r\n-1;20\r\n2e+17;21\r\n30;22\r\n");
    EXPECT_EQ(tableColumns(format), "Y (degrees), EM1 (mS/m)");
}

TEST_F(TableFile, HasNothingThatTheSurveyHasNot) {
    Survey survey = twoRows();
    survey.SiteIDPresent = survey.TwoEMColumns = false;
    survey.SiteID.clear();
    survey.SourceLine.clear();
    for (const Column column : kAll)
        EXPECT_EQ(hasColumn(survey, column),
                  column != Column::kSite && column != Column::kEM2 && column != Column::kLine);
    take(std::move(survey));
    format.columns = {Column::kSite, Column::kX, Column::kEM2, Column::kLine};
    EXPECT_TRUE(written().ends_with("\r\n,0.5,,\r\n,1e-07,,\r\n,500000,,\r\n"));
}

TEST_F(TableFile, LeavesALineEmptyWhoseNumberIsNotKnown) {
    Survey survey = twoRows();
    survey.SourceLine[1] = 0;
    take(std::move(survey));
    format.columns = {Column::kLine};
    EXPECT_EQ(written(), "Line\r\n1\r\n\r\n5\r\n");
}

TEST_F(TableFile, IsReadBackToTheBitByTheGenericImport) {
    const std::vector<double> numbers = anyNumbers(2000);
    std::vector<MadeSite> sites;
    for (std::size_t i = 3; i < numbers.size(); ++i)
        sites.push_back({numbers[i], numbers[i - 1], std::abs(numbers[i - 2]), std::abs(numbers[i - 3]),
                         static_cast<double>(i / 40 + 1), std::abs(numbers[i - 1])});
    const Survey survey = surveyWithRows(sites);
    take(survey);
    format.columns = {Column::kSite, Column::kX, Column::kY, Column::kEM1, Column::kEM2, Column::kRow};
    written();
    GenericOptions options{path, folder / "log", 0, kGenericLayouts[3]};
    const ImportResult back = importGenericFile(options, {});
    EXPECT_EQ(back.rejected, 1) << "the header";
    EXPECT_EQ(back.summary.linesNotFitting, 0);
    ASSERT_EQ(back.survey.NumSites, survey.NumSites);
    const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        for (int column = 0; column < kSiteColumns; ++column)
            ASSERT_EQ(bits(back.survey.SiteData(column, i)), bits(survey.SiteData(column, i)))
                << column << " of " << i;
        const auto site = static_cast<std::size_t>(i);
        ASSERT_EQ(bits(back.survey.SiteID[site]), bits(survey.SiteID[site]));
    }
}

TEST_F(TableFile, ListsRemovedSitesWithWhatTookThemOut) {
    take(twoRows());
    deleteRow(journal, 1);
    format.withRemoved = true;
    EXPECT_EQ(removedSites(journal), 2);
    const std::string words = ",\"Deleted row 1 with its 2 sites\"\r\n";
    EXPECT_EQ(written(),
              "Site,\"X (m)\",\"Y (m)\",\"EM1 (mS/m)\",\"EM2 (mS/m)\",Row,Line,Removed\r\n"
              "1003,500000,30,22,42,1,5,\r\n"
              "1001,0.5,-1,20,40,1,1" +
                  words + "1002,1e-07,2e+17,21,41.25,1,3" + words);
    EXPECT_TRUE(tableColumns(format).ends_with("Line, Removed"));
    journal.goTo(1);
    EXPECT_EQ(removedSites(journal), 0);
    EXPECT_TRUE(written().ends_with("1003,500000,30,22,42,2,5,\r\n"));
}

TEST_F(TableFile, ListsOnlyWhatWasRemovedSinceTheImport) {
    take(twoRows());
    deleteRow(journal, 1);
    take(twoRows());
    EXPECT_EQ(removedSites(journal), 0);
    deleteRow(journal, 2);
    EXPECT_EQ(removedSites(journal), 1);
}

TEST_F(TableFile, LeavesPositionsEmptyThatWereRemovedBeforeAConversion) {
    take(twoRows());
    deleteRow(journal, 2);
    journal.perform({ActKind::kConvert, "", "Converted", {}},
                    [](Survey& survey) { return Difference(survey); });
    format = {{Column::kX, Column::kEM1}, ',', true, "m"};
    EXPECT_TRUE(written().ends_with(",22,\"Deleted row 2 with its 1 site\"\r\n"));
}

TEST_F(TableFile, HasLongitudesAndLatitudesWhereTheCoordinateSystemIsKnown) {
    Survey survey = madeSurvey({{500000, 0, 20, 40, 1}, {0, 0, 21, 41, 1}, {1e30, 1e30, 22, 42, 1}});
    format.columns = {Column::kLongitude, Column::kLatitude, Column::kEM1};
    EXPECT_FALSE(hasColumn(survey, Column::kLongitude) || hasColumn(survey, Column::kLatitude));
    survey.PositionsCRS = 32633;
    EXPECT_TRUE(hasColumn(survey, Column::kLongitude) && hasColumn(survey, Column::kLatitude));
    take(std::move(survey));
    const std::string text = written();
    double longitude = 0, latitude = 1;
    ASSERT_EQ(std::sscanf(text.c_str(),
                          "\"Longitude (degrees)\",\"Latitude (degrees)\",\"EM1 (mS/m)\"\r\n%lf,%lf,20\r\n",
                          &longitude, &latitude),
              2)
        << text;
    EXPECT_NEAR(longitude, 15, 1e-12);
    EXPECT_NEAR(latitude, 0, 1e-12);
    EXPECT_NE(text.find("\r\n,,21\r\n"), std::string::npos) << "a missing fix: " << text;
    EXPECT_TRUE(text.ends_with("\r\n,,22\r\n")) << "no position: " << text;
}

TEST_F(TableFile, QuotesAnActWhoseWordsHoldQuotesAndSeparators) {
    take(twoRows());
    journal.perform({ActKind::kDeletePicked, "", "Say \"a;b\",\nc", {}}, [](Survey& survey) {
        return std::move(removeSites(survey, {{0, 1}}, EmptiedRows::kCloseUp).difference);
    });
    format = {{Column::kEM1}, ';', true, "m"};
    EXPECT_TRUE(written().ends_with("20;\"Say \"\"a;b\"\",\nc\"\r\n"));
}

TEST_F(TableFile, TellsWhatAUserShouldKnow) {
    take(twoRows());
    EXPECT_EQ(tableNotice(journal, format), "");
    EXPECT_EQ(tableNotice(journal, {}), "Choose at least one column.");
    Survey many = twoRows();
    many.RowIndex = kMaxRows + 1;
    take(std::move(many));
    EXPECT_EQ(tableNotice(journal, format),
              "The search for rows found too many and stopped half-way: the row numbers are of no use.");
    EXPECT_EQ(tableNotice(journal, {{Column::kX}, ',', false, "m"}), "");
}

TEST_F(TableFile, TellsThatTheFirstActsAreForgotten) {
    const Journal small = journalOf(twoRows(), 1);
    EXPECT_EQ(tableNotice(small, format), "");
    format.withRemoved = true;
    EXPECT_EQ(tableNotice(small, format),
              "What was done first is no longer known: sites that were taken out then are missing.");
}

TEST_F(TableFile, OfANumberThatIsNotFiniteLeavesTheOldOne) {
    writeFile(path, "old");
    Survey survey = twoRows();
    survey.SiteData(kEM1, 1) = std::numeric_limits<double>::infinity();
    take(std::move(survey));
    EXPECT_THROW(written(), RunTimeError);
    expectOldFileAlone();
}

}  // namespace tessel
