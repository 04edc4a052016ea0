// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_detection.h"

#include "support/made_survey.h"
#include "support/plain_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

// The row of each site after a search by gaps longer than this.
std::vector<double> rowsByGaps(const std::vector<double>& gaps, double minDistance) {
    Survey survey = surveyAlongX(gaps, minDistance);
    EXPECT_EQ(Assign_Row(survey), RowDetection::kAssigned);
    if (minDistance >= 0) {
        EXPECT_EQ(survey.NumRows, readingsOf(survey, kRow).back());
    }
    EXPECT_EQ(survey.RowIndex, survey.NumRows);
    return readingsOf(survey, kRow);
}

// Pairs of sites with a long gap behind each pair: `rows` rows.
Survey surveyOfPairs(int rows) {
    std::vector<double> gaps(static_cast<std::size_t>(2 * rows - 1), 1);
    for (std::size_t i = 1; i < gaps.size(); i += 2)
        gaps[i] = 100;
    return surveyAlongX(gaps, 10);
}

// Rows of three sites with gaps of 1 m everywhere, numbered as a file may number them.
Survey surveyOfRowsOfAFile(int rows) {
    Survey survey = surveyAlongX(std::vector<double>(static_cast<std::size_t>(3 * rows - 1), 1), 10);
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        survey.SiteData(kRow, i) = static_cast<double>(i / 3 + 1);
    survey.NumRows = survey.RowIndex = rows;
    return survey;
}

void expectSameAsPlain(Survey survey) {
    PlainSurvey expected = plainSurveyOf(survey);
    const bool areFound = findPlainRows(expected);
    Calculate_Chosen_Distance(survey);
    EXPECT_EQ(Assign_Row(survey) == RowDetection::kAssigned, areFound);
    EXPECT_EQ(survey.RowIndex, expected.rowIndex);
    EXPECT_EQ(survey.NumRows, expected.rows);
    EXPECT_TRUE(plainSurveyOf(survey).sites == expected.sites);
    if (!areFound) return;
    Calculate_NumPoints(survey);
    expectAsPlain(survey, expected);
}

}  // namespace

TEST(Distances, AreMeasuredFromTheSiteBeforeAndZeroAtBothEnds) {
    Survey survey = surveyWithRows({{0, 0}, {3, 4}, {3, 1}, {-1, 1}});
    Calculate_Distance(survey);
    Calculate_X_Distance(survey);
    Calculate_Y_Distance(survey);
    EXPECT_EQ(survey.TrueDist, (std::vector<double>{0, 5, 3, 4, 0}));
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, 3, 0, 4, 0}));
    EXPECT_EQ(survey.YDist, (std::vector<double>{0, 4, 3, 0, 0}));
    EXPECT_EQ(survey.MaxTrueDist, 5);
    EXPECT_EQ(survey.MaxXDist, 4);
    EXPECT_EQ(survey.MaxYDist, 4);
}

TEST(Distances, OfOneSiteOrNoneAreNoneAndALongerSurveyIsForgotten) {
    Survey one = surveyWithRows({{5, 5}}), none;
    Calculate_Distance(one);
    EXPECT_EQ(one.TrueDist, (std::vector<double>{0, 0}));
    EXPECT_EQ(one.MaxTrueDist, 0);
    Calculate_Distance(none);
    EXPECT_EQ(none.TrueDist, (std::vector<double>{0}));
    Survey survey = surveyAlongX({1, 50, 1, 1}, 10);
    survey.NumSites = 3;
    survey.SiteData(kX, 2) = 2;
    Calculate_Distance(survey);
    EXPECT_EQ(survey.TrueDist, (std::vector<double>{0, 1, 1, 0}));
    EXPECT_EQ(survey.MaxTrueDist, 1);
}

TEST(Distances, WhoseSquaresAreTooLargeAreRight) {
    Survey survey = surveyWithRows({{0, 0}, {3e200, 4e200}, {1e200, 1e200}, {1e200, 1e200}, {3, 5}});
    survey.SiteData(kX, 4) = survey.SiteData(kX, 3);
    Calculate_Distance(survey);
    ASSERT_EQ(survey.TrueDist.size(), 6u);
    EXPECT_DOUBLE_EQ(survey.TrueDist[1], 5e200);
    EXPECT_DOUBLE_EQ(survey.TrueDist[2], std::sqrt(13) * 1e200);
    EXPECT_EQ(survey.TrueDist[3], 0);
    EXPECT_DOUBLE_EQ(survey.TrueDist[4], 1e200);
    EXPECT_EQ(survey.TrueDist[5], 0);
    EXPECT_EQ(survey.MaxTrueDist, survey.TrueDist[1]);
    Calculate_X_Distance(survey);
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, 3e200, 2e200, 0, 0, 0}));
}

TEST(Distances, BeyondAllDoublesAreTheLargestDouble) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    Survey survey = surveyWithRows({{-1.7e308, 1.7e308}, {1.7e308, -1.7e308}, {1.7e308, 0}});
    Calculate_Distance(survey);
    EXPECT_EQ(survey.TrueDist, (std::vector<double>{0, kLargest, 1.7e308, 0}));
    EXPECT_EQ(survey.MaxTrueDist, kLargest);
    Calculate_X_Distance(survey);
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, kLargest, 0, 0}));
    Calculate_Y_Distance(survey);
    EXPECT_EQ(survey.YDist, (std::vector<double>{0, kLargest, 1.7e308, 0}));
}

// However many sites are worked on at a time, only the distances to the site far away are other ones.
TEST(Distances, OfOtherSitesStayAsTheyAreBesideOneFarAway) {
    Survey survey = surveyAlongX(std::vector<double>(5000, 0.1), 1);
    Calculate_Distance(survey);
    const std::vector<double> before = survey.TrueDist;
    for (const std::size_t far : {1u, 1023u, 1024u, 1025u, 3000u, 4999u}) {
        Survey moved = survey;
        moved.SiteData(kY, static_cast<SiteIndex>(far)) = 1e200;
        Calculate_Distance(moved);
        std::vector<double> expected = before;
        expected[far] = expected[far + 1] = 1e200;
        ASSERT_EQ(moved.TrueDist, expected) << far;
        ASSERT_EQ(moved.MaxTrueDist, 1e200);
    }
}

TEST(RowDetection, BeginsARowAtASiteThatIsNoPlaceOnEarth) {
    Survey survey = surveyWithRows({{0, 0}, {1, 0}, {2, 0}, {1e200, 0}, {1e200, 0}, {5, 0}, {6, 0}});
    survey.MinDistance = 10;
    Calculate_Distance(survey);
    EXPECT_EQ(Assign_Row(survey), RowDetection::kAssigned);
    EXPECT_EQ(readingsOf(survey, kRow), (std::vector<double>{1, 1, 1, 2, 2, 3, 3}));
}

TEST(Distances, OfTheChosenMeasureAreTestedInOrder) {
    Survey survey = surveyWithRows({{0, 0}, {3, 4}});
    survey.TrueDist.clear();
    survey.UseTrueDist = survey.UseXDist = survey.UseYDist = true;
    Calculate_Chosen_Distance(survey);
    EXPECT_EQ(survey.TrueDist.size(), 3u);
    EXPECT_TRUE(survey.XDist.empty());
    survey.UseTrueDist = false;
    Calculate_Chosen_Distance(survey);
    EXPECT_EQ(survey.XDist.size(), 3u);
    EXPECT_TRUE(survey.YDist.empty());
    survey.UseXDist = false;
    Calculate_Chosen_Distance(survey);
    EXPECT_EQ(survey.YDist.size(), 3u);
}

TEST(RowDetection, NumbersRowsFromTheGapsBetweenSites) {
    const std::tuple<const char*, std::vector<double>, double, std::vector<double>> cases[] = {
        {"two gaps", {1, 1, 20, 1, 30, 1}, 10, {1, 1, 1, 2, 2, 3, 3}},
        {"one site", {}, 10, {1}},
        {"a gap equal to the minimum", {1, 10, 1}, 10, {1, 1, 1, 1}},
        {"a gap just greater", {1, 10, 1}, std::nextafter(10.0, 0.0), {1, 1, 2, 2}},
        {"a gap behind the first site", {1000, 1, 1}, 10, {1, 1, 1, 1}},
        {"the same with another", {1000, 1000}, 10, {1, 1, 2}},
        {"the last site opens no row, not for 0 either", {1, 1}, -1, {1, 1, 2}},
        {"a minimum of 0", {1, 1}, 0, {1, 1, 2}}};
    for (const auto& [what, gaps, minDistance, rows] : cases)
        EXPECT_EQ(rowsByGaps(gaps, minDistance), rows) << what;
}

TEST(RowDetection, WithNoMeasureChosenLeavesTheRowColumnAndCountsOneRow) {
    Survey survey = surveyAlongX({1, 100}, 10);
    survey.UseTrueDist = survey.UseXDist = survey.UseYDist = false;
    survey.NumRows = 7;
    for (SiteIndex i = 0; i < 3; ++i)
        survey.SiteData(kRow, i) = 42;
    EXPECT_EQ(Assign_Row(survey), RowDetection::kAssigned);
    EXPECT_EQ(readingsOf(survey, kRow), (std::vector<double>{42, 42, 42}));
    EXPECT_EQ(survey.NumRows, 1);
    EXPECT_EQ(survey.RowIndex, 1);
}

TEST(RowDetection, Takes250RowsAndRefusesOneMoreAndLeavesLaterSitesAlone) {
    Survey survey = surveyOfPairs(250);
    EXPECT_EQ(Assign_Row(survey), RowDetection::kAssigned);
    EXPECT_EQ(survey.NumRows, 250);
    EXPECT_EQ(survey.RowIndex, 250);
    EXPECT_EQ(readingsOf(survey, kRow).back(), 250);
    EXPECT_TRUE(rowsAreUsable(survey));
    survey = surveyOfPairs(260);
    survey.NumRows = 3;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        survey.SiteData(kRow, i) = -1;
    EXPECT_EQ(Assign_Row(survey), RowDetection::kTooManyRows);
    EXPECT_EQ(survey.NumRows, 3);
    EXPECT_EQ(survey.RowIndex, 251);
    EXPECT_EQ(survey.SiteData(kRow, 499), 250);
    EXPECT_EQ(survey.SiteData(kRow, 500), -1);
    EXPECT_FALSE(rowsAreUsable(survey));
    survey.MinDistance = 1000;
    EXPECT_EQ(Assign_Row(survey), RowDetection::kAssigned);
    EXPECT_TRUE(rowsAreUsable(survey));
}

// Where the row counter stops at 251 it agrees with a row count of 251.
TEST(RowDetection, ThatIsRefusedLeavesNoUsableRowsOfAFileWith251) {
    EXPECT_FALSE(rowsAreUsable(Survey{}));
    EXPECT_TRUE(rowsAreUsable(surveyOfRowsOfAFile(300))) << "as the file has them, beyond the limit";
    Survey survey = surveyOfRowsOfAFile(251);
    EXPECT_TRUE(rowsAreUsable(survey));
    survey.MinDistance = 0.5;
    EXPECT_EQ(Assign_Row(survey), RowDetection::kTooManyRows);
    EXPECT_FALSE(rowsAreUsable(survey));
    survey.MinDistance = 1000;
    Assign_Row(survey);
    EXPECT_TRUE(rowsAreUsable(survey));
}

TEST(RowDetection, AgreesWithThePlainRulesOnRandomSurveys) {
    std::mt19937 random(31);
    for (int round = 0; round < 400; ++round) {
        Survey survey = randomRows(random, 1 + round % 60, 9);
        survey.NumRows = 5;
        survey.MinDistance = (round % 41) * 0.25;
        survey.chooseDistance(1 + round % 3);
        SCOPED_TRACE(round);
        expectSameAsPlain(survey);
    }
}

TEST(RowCounting, CountsTheSitesOfEachRunWhateverNumbersTheyCarry) {
    for (const auto& rows : {std::array{1, 1, 2, 3}, {4, 4, 9, 4}}) {
        Survey survey = surveyWithRows({{}, {}, {}, {}});
        for (SiteIndex i = 0; i < 4; ++i)
            survey.SiteData(kRow, i) = rows[static_cast<std::size_t>(i)];
        survey.NumPoints.fill(77);
        survey.RowIndex = 0;
        Calculate_NumPoints(survey);
        EXPECT_EQ((std::vector(survey.NumPoints.begin() + 1, survey.NumPoints.begin() + 4)),
                  (std::vector<std::int64_t>{2, 1, 1}));
        EXPECT_EQ(survey.RowIndex, 3);
    }
}

TEST(RowCounting, Of251RowsIsARangeErrorThatChangesNothing) {
    std::vector<MadeSite> sites;
    for (int row = 1; row <= 250; ++row)
        sites.push_back({0, 0, 0, 0, static_cast<double>(row)});
    Survey survey = surveyWithRows(sites);
    EXPECT_EQ(survey.NumPoints[250], 1);
    survey.SiteData(kRow, survey.NumSites++) = 251;
    survey.RowIndex = 12;
    const auto before = survey.NumPoints;
    const auto count = [&] { Calculate_NumPoints(survey); };
    EXPECT_EQ(errorNumberOf(count), RunTimeError::kSubscript);
    EXPECT_TRUE(descriptionOf(count).starts_with("Subscript out of range\nNo more than 250 rows can"));
    EXPECT_EQ(survey.RowIndex, 12);
    EXPECT_EQ(survey.NumPoints, before);
}

TEST(Extents, StartTheLargestFromZeroAndTheSmallestFromTheFirstSite) {
    const std::pair<Survey, std::array<double, 4>> cases[] = {
        {surveyWithRows({{-5, -7}, {-9, -2}, {-1, -3}}), {0, 0, -9, -7}},
        {surveyWithRows({{5, 7}, {9, 2}, {6, 3}}), {9, 7, 5, 2}}};
    for (auto [survey, extents] : cases) {
        Calculate_Max(survey);
        Calculate_Min(survey);
        EXPECT_EQ((std::array{survey.MaxX, survey.MaxY, survey.MinX, survey.MinY}), extents);
    }
}

TEST(Extents, FindTheLargestWhereverItStands) {
    std::mt19937 random(5);
    for (const int sites : {1, 7, 8, 9, 40, 3000}) {
        std::vector<MadeSite> made(static_cast<std::size_t>(sites), MadeSite{1, 2});
        const auto at = random() % made.size();
        made[at] = {50, 60};
        Survey survey = surveyWithRows(made);
        Calculate_Max(survey);
        EXPECT_EQ(survey.MaxX, 50) << sites;
        EXPECT_EQ(survey.MaxY, 60) << sites;
    }
}

}  // namespace tessel
