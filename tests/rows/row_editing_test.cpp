// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_editing.h"

#include "support/made_survey.h"

namespace tessel {

namespace {

Survey fourRows() {
    return surveyWithRows({{0, 0, 10, 20, 1, 101},
                           {1, 0, 11, 21, 1, 102},
                           {1, 9, 12, 22, 2, 103},
                           {0, 9, 13, 23, 3, 104},
                           {0, 8, 14, 24, 3, 105},
                           {7, 8, 15, 25, 4, 106}});
}

std::vector<double> rowsOf(const Survey& survey) {
    return readingsOf(survey, kRow);
}

// What holds after every operation: the counts are those of the row column, and the distances those of the
// sites.
void expectInStep(const Survey& survey) {
    std::array<std::int64_t, kMaxRows + 1> points{};
    for (const double row : rowsOf(survey))
        ++points[static_cast<std::size_t>(row)];
    ASSERT_EQ(survey.NumPoints, points);
    ASSERT_EQ(survey.NumRows, survey.NumSites == 0 ? 0 : static_cast<int>(rowsOf(survey).back()));
    ASSERT_EQ(survey.RowIndex, survey.NumRows);
    ASSERT_EQ(survey.TrueDist.size(), static_cast<std::size_t>(survey.NumSites) + 1);
    ASSERT_EQ(survey.TrueDist.front(), 0);
    ASSERT_EQ(survey.TrueDist.back(), 0);
    double largest = 0;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        const double dx = survey.SiteData(kX, i) - survey.SiteData(kX, i - 1);
        const double dy = survey.SiteData(kY, i) - survey.SiteData(kY, i - 1);
        const double distance = std::sqrt(dx * dx + dy * dy);
        ASSERT_EQ(survey.TrueDist[static_cast<std::size_t>(i)], distance);
        largest = std::max(largest, distance);
    }
    ASSERT_EQ(survey.MaxTrueDist, largest);
}

// Sites with these row numbers in a survey that has counted so many rows.
Survey rowsNumbered(const std::vector<double>& numbers, int rows) {
    std::vector<MadeSite> sites;
    for (const double number : numbers)
        sites.push_back({double(sites.size()), number, 1, 2, number, 0});
    Survey survey = surveyWithRows(sites);
    survey.NumRows = survey.RowIndex = rows;
    return survey;
}

// The rules as they are written, on sites kept one by one.
void joinLiterally(std::vector<MadeSite>& sites, int a, int b) {
    for (MadeSite& site : sites) {
        if (b > a) {
            if (site.row == b) site.row = a;
            if (site.row > b) site.row = site.row - 1;
        } else {
            if (site.row == a) site.row = b;
            if (site.row > a) site.row = site.row - 1;
        }
    }
}

void deleteLiterally(std::vector<MadeSite>& sites, int r) {
    std::size_t removed = 0;
    for (std::size_t i = 0; i < sites.size(); ++i) {
        if (sites[i].row == r) {
            ++removed;
        } else if (sites[i].row > r) {
            sites[i - removed] = sites[i];
            sites[i - removed].row -= 1;
        }
    }
    sites.resize(sites.size() - removed);
}

// What the map does when it is closed; false when the row information is lost.
bool validated(Survey& survey) {
    if (ValidateRowInfo(survey)) return true;
    makeOneRow(survey);
    return false;
}

}  // namespace

TEST(JoiningRows, PutsTheHigherRowIntoTheLowerInEitherOrderAndMovesNoSite) {
    const std::tuple<int, int, std::vector<double>> cases[] = {{2, 3, {1, 1, 2, 2, 2, 3}},
                                                               {3, 2, {1, 1, 2, 2, 2, 3}},
                                                               {4, 3, {1, 1, 2, 3, 3, 3}},
                                                               {1, 2, {1, 1, 1, 2, 2, 3}}};
    for (const auto& [first, second, rows] : cases) {
        Survey survey = fourRows();
        std::vector<MadeSite> expected = sitesIn(survey);
        for (std::size_t i = 0; i < rows.size(); ++i)
            expected[i].row = rows[i];
        Joint_Row(survey, first, second);
        EXPECT_TRUE(sitesIn(survey) == expected) << first << ' ' << second;
        EXPECT_EQ(survey.NumRows, 3);
        expectInStep(survey);
    }
}

TEST(EditingRows, TakesTheNumberOfRowsFromTheLastSite) {
    Survey survey = fourRows();
    survey.NumRows = 77;
    Joint_Row(survey, 1, 2);
    EXPECT_EQ(survey.NumRows, 3);
    survey.NumRows = 77;
    Delete_Row(survey, 1);
    EXPECT_EQ(survey.NumRows, 2);
}

TEST(SplittingARow, DividesItBeforeTheSiteAndMovesLaterRowsUp) {
    Survey survey = fourRows();
    const auto before = sitesIn(survey);
    EXPECT_TRUE(canSplitRow(survey, 4));
    Difference difference = splitRow(survey, 4);
    EXPECT_EQ(rowsOf(survey), (std::vector<double>{1, 1, 2, 3, 4, 5}));
    expectInStep(survey);
    const Survey after = survey;
    Joint_Row(survey, 3, 4);
    EXPECT_TRUE(sitesIn(survey) == before);
    survey = after;
    expectThereAndBack(survey, fourRows(), difference);
}

TEST(SplittingARow, IsRefusedBeforeARowsFirstSite) {
    for (const SiteIndex first : {0, 2, 3, 5})
        EXPECT_FALSE(canSplitRow(fourRows(), first)) << first;
}

TEST(SplittingARow, IsRefusedWhereThereAreAsManyRowsAsASurveyHolds) {
    std::vector<MadeSite> sites{{0, 0, 1, 2, 1, 1}};
    for (int row = 1; row <= kMaxRows; ++row)
        sites.push_back({row * 1.0, 0, 1, 2, row * 1.0, 0});
    EXPECT_FALSE(canSplitRow(surveyWithRows(sites), 1));
    sites.pop_back();
    Survey survey = surveyWithRows(sites);
    EXPECT_TRUE(canSplitRow(survey, 1));
    splitRow(survey, 1);
    EXPECT_EQ(survey.NumRows, kMaxRows);
    expectInStep(survey);
}

TEST(DeletingARow, MovesLaterSitesUpWithEverythingThatIsTheirs) {
    Survey survey = fourRows();
    Delete_Row(survey, 2);
    EXPECT_TRUE(sitesIn(survey) == (std::vector<MadeSite>{{0, 0, 10, 20, 1, 101},
                                                          {1, 0, 11, 21, 1, 102},
                                                          {0, 9, 13, 23, 2, 104},
                                                          {0, 8, 14, 24, 2, 105},
                                                          {7, 8, 15, 25, 3, 106}}));
    EXPECT_EQ(survey.NumRows, 3);
    expectInStep(survey);
}

TEST(DeletingARow, TheOnlyOneEmptiesTheSurvey) {
    Survey survey = surveyWithRows({{1, 2, 3, 4, 1}, {5, 6, 7, 8, 1}});
    Delete_Row(survey, 1);
    EXPECT_EQ(survey.NumSites, 0);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.RowIndex, 0);
    expectInStep(survey);
}

TEST(DeletingARow, KeepsTheDistancesOfTheMeasureInForce) {
    Survey survey = fourRows();
    survey.chooseDistance(3);
    Calculate_Y_Distance(survey);
    Delete_Row(survey, 2);
    EXPECT_EQ(survey.YDist, (std::vector<double>{0, 0, 9, 1, 0, 0}));
    EXPECT_EQ(survey.MaxYDist, 9);
}

TEST(DeletingARow, WorksWithoutSiteNumbersAndSecondReading) {
    Survey survey = fourRows();
    survey.SiteID.clear();
    survey.SiteIDPresent = survey.TwoEMColumns = false;
    Delete_Row(survey, 1);
    EXPECT_EQ(survey.NumSites, 4);
    EXPECT_EQ(survey.SiteData(kEM1, 0), 12);
    EXPECT_TRUE(survey.SiteID.empty());
}

TEST(EditingRows, AgreesWithTheLiteralRulesOnRandomSurveys) {
    std::mt19937 random(99);
    for (int round = 0; round < 60; ++round) {
        Survey survey = randomRows(random, 2 + round, 6);
        std::vector<MadeSite> expected = sitesIn(survey);
        while (survey.NumRows > 1) {
            std::uniform_int_distribution<int> lower(1, survey.NumRows - 1);
            const int row = lower(random);
            const bool upwards = random() % 2 == 0;
            if (random() % 2 == 0) {
                Joint_Row(survey, upwards ? row : row + 1, upwards ? row + 1 : row);
                joinLiterally(expected, upwards ? row : row + 1, upwards ? row + 1 : row);
            } else {
                Delete_Row(survey, upwards ? row + 1 : row);
                deleteLiterally(expected, upwards ? row + 1 : row);
            }
            ASSERT_TRUE(sitesIn(survey) == expected) << "round " << round;
            ASSERT_NO_FATAL_FAILURE(expectInStep(survey)) << "round " << round;
        }
    }
}

TEST(RecalculatingRows, PutsMeasureAndThresholdInForce) {
    for (const int mode : {1, 2, 3}) {
        Survey survey = fourRows();
        EXPECT_EQ(Recalculate_Rows(survey, mode, 3.5).outcome, RowDetection::kAssigned);
        EXPECT_EQ(survey.DistanceMode, mode);
        EXPECT_EQ(survey.UseTrueDist, mode == 1);
        EXPECT_EQ(survey.UseXDist, mode == 2);
        EXPECT_EQ(survey.UseYDist, mode == 3);
        EXPECT_EQ(survey.MinDistance, 3.5);
        const std::vector<double> expected = mode == 1   ? std::vector<double>{1, 1, 2, 2, 2, 3}
                                             : mode == 2 ? std::vector<double>{1, 1, 1, 1, 1, 2}
                                                         : std::vector<double>{1, 1, 2, 2, 2, 2};
        EXPECT_EQ(rowsOf(survey), expected) << mode;
        EXPECT_EQ(survey.NumPoints[1] + survey.NumPoints[2] + survey.NumPoints[3], 6);
        EXPECT_EQ(survey.NumRows, survey.RowIndex);
    }
}

TEST(RecalculatingRows, AcceptsAThresholdOfZeroAndASiteThatIsNoPlaceOnEarth) {
    Survey survey = fourRows();
    EXPECT_EQ(Recalculate_Rows(survey, 1, 0).outcome, RowDetection::kAssigned);
    EXPECT_EQ(rowsOf(survey), (std::vector<double>{1, 1, 2, 3, 4, 5}));
    survey = surveyWithRows({{0, 0}, {1, 0}, {1e300, 0}, {2, 0}, {3, 0}});
    EXPECT_EQ(Recalculate_Rows(survey, 1, 7).outcome, RowDetection::kAssigned);
    EXPECT_EQ(rowsOf(survey), (std::vector<double>{1, 1, 2, 3, 3}));
}

TEST(RecalculatingRows, SaysWhenThereAreTooMany) {
    Survey survey = surveyAlongX(std::vector<double>(400, 5), 100);
    survey.NumRows = 1;
    EXPECT_EQ(Recalculate_Rows(survey, 1, 1).outcome, RowDetection::kTooManyRows);
    EXPECT_EQ(survey.RowIndex, 251);
    EXPECT_EQ(survey.NumRows, 1);
    EXPECT_EQ(survey.MinDistance, 1);
}

TEST(RowInformation, HoldsWhileNumbersRunUpToTheLastRow) {
    for (const auto& rows : {std::vector<double>{1}, {1, 1, 1}, {1, 2, 3}, {1, 1, 2, 2, 2, 3}}) {
        Survey survey = rowsNumbered(rows, static_cast<int>(rows.back()));
        const auto before = sitesIn(survey);
        EXPECT_TRUE(validated(survey));
        EXPECT_TRUE(sitesIn(survey) == before);
        EXPECT_EQ(survey.NumRows, rows.back());
    }
}

TEST(RowInformation, IsLostWhenARowIsGoneOrNumbersFallBack) {
    const std::vector<std::pair<std::vector<double>, int>> lost = {{{2, 2, 3}, 3},  // the first row is gone
                                                                   {{1, 1, 2}, 3},  // the last
                                                                   {{1, 1, 3}, 3},  // one between
                                                                   {{1, 2, 1, 2}, 2},  // falls back
                                                                   {{1, 2, 3, 2}, 2}, {{1, 3, 2}, 2}};
    for (const auto& [rows, numRows] : lost) {
        Survey survey = rowsNumbered(rows, numRows);
        EXPECT_FALSE(validated(survey));
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            EXPECT_EQ(survey.SiteData(kRow, i), 1);
        EXPECT_EQ(survey.NumRows, 1);
        EXPECT_EQ(survey.RowIndex, 1);
        EXPECT_EQ(survey.NumPoints[1], survey.NumSites);
        EXPECT_EQ(survey.NumPoints[2], 0);
        EXPECT_TRUE(rowsAreUsable(survey));
    }
}

TEST(RowInformation, ReadsRowNumbersRounded) {
    Survey survey = rowsNumbered({1.2, 0.9, 2.4, 1.6}, 2);
    EXPECT_TRUE(validated(survey));
    EXPECT_EQ(survey.SiteData(kRow, 0), 1.2);
}

TEST(RowInformation, IsNoneWithoutSites) {
    Survey survey = rowsNumbered({1, 2}, 2);
    survey.NumPoints[1] = 1;
    forgetRows(survey);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.RowIndex, 0);
    EXPECT_EQ(survey.NumPoints[1], 0);
    EXPECT_FALSE(rowsAreUsable(survey));
}

// What the help document on rows says about a survey without gaps.
TEST(RecalculatingRows, FindsThoseOfALoggerThatNeverStoppedOnceItsTurnsAreGone) {
    constexpr int kPasses = 6, kLength = 30, kApart = 5;
    std::vector<MadeSite> sites;
    for (int pass = 0; pass < kPasses; ++pass) {
        for (int step = 0; step < kLength; ++step)
            sites.push_back({pass * 1.0 * kApart, pass % 2 == 0 ? step : kLength - 1.0 - step, 20, 30});
        const double end = pass % 2 == 0 ? kLength : -1;
        for (int turn = 0; turn <= kApart && pass + 1 < kPasses; ++turn)
            sites.push_back({pass * 1.0 * kApart + turn, end, 20, 30});
    }
    Survey survey = surveyWithRows(sites);
    Recalculate_Rows(survey, 1, kApart / 2.0);
    EXPECT_EQ(survey.NumRows, 1) << "no step is longer than another";

    std::vector<MadeSite> between;
    std::copy_if(sites.begin(), sites.end(), std::back_inserter(between),
                 [](const MadeSite& site) { return site.y >= 0 && site.y < kLength; });
    survey = surveyWithRows(between);
    Recalculate_Rows(survey, 1, kApart / 2.0);
    EXPECT_EQ(survey.NumRows, kPasses);
}

}  // namespace tessel
