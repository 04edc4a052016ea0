// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_editing.h"

#include "support/made_survey.h"
#include "support/plain_survey.h"

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

// What holds after every operation: the counts are those of the row column, and the distances those of the
// sites.
void expectInStep(const Survey& survey) {
    PlainSurvey plain = plainSurveyOf(survey);
    plain.rows = plain.empty() ? 0 : plain.sites.back().row;
    expectAsPlain(survey, plain);
    EXPECT_EQ(survey.RowIndex, survey.NumRows);
}

}  // namespace

TEST(EditingRows, TakesTheNumberOfRowsFromTheLastSiteAndCountsTheSitesOfEach) {
    Survey survey = fourRows();
    survey.NumRows = 77;
    Joint_Row(survey, 1, 2);
    EXPECT_EQ(survey.NumRows, 3);
    survey.NumRows = 77;
    survey.NumPoints.fill(9);
    Delete_Row(survey, 1);
    EXPECT_EQ(survey.NumRows, 2);
}

TEST(SplittingARow, DividesItBeforeTheSiteAndMovesLaterRowsUp) {
    Survey survey = fourRows();
    const auto before = sitesIn(survey);
    EXPECT_TRUE(canSplitRow(survey, 4));
    Difference difference = splitRow(survey, 4);
    EXPECT_EQ(readingsOf(survey, kRow), (std::vector<double>{1, 1, 2, 3, 4, 5}));
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

TEST(DeletingARow, TheOnlyOneEmptiesTheSurvey) {
    Survey survey = surveyWithRows({{1, 2, 3, 4, 1}, {5, 6, 7, 8, 1}});
    Delete_Row(survey, 1);
    EXPECT_EQ(survey.NumSites, 0);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.RowIndex, 0);
    expectInStep(survey);
}

TEST(EditingRows, AgreesWithThePlainRulesOnRandomSurveys) {
    std::mt19937 random(99);
    for (int round = 0; round < 60; ++round) {
        Survey survey = randomRows(random, 2 + round, 6);
        PlainSurvey expected = plainSurveyOf(survey);
        while (survey.NumRows > 1) {
            std::uniform_int_distribution<int> lower(1, survey.NumRows - 1);
            const int row = lower(random);
            const bool upwards = random() % 2 == 0;
            if (random() % 2 == 0) {
                Joint_Row(survey, upwards ? row : row + 1, upwards ? row + 1 : row);
                joinPlainRows(expected, upwards ? row : row + 1, upwards ? row + 1 : row);
            } else {
                Delete_Row(survey, upwards ? row + 1 : row);
                deletePlainRow(expected, upwards ? row + 1 : row);
            }
            SCOPED_TRACE(round);
            expectAsPlain(survey, expected);
            EXPECT_EQ(survey.RowIndex, expected.rowIndex);
        }
    }
}

TEST(RecalculatingRows, PutsMeasureAndThresholdInForce) {
    const std::pair<int, std::vector<double>> cases[] = {
        {1, {1, 1, 2, 2, 2, 3}}, {2, {1, 1, 1, 1, 1, 2}}, {3, {1, 1, 2, 2, 2, 2}}};
    for (const auto& [mode, rows] : cases) {
        Survey survey = fourRows();
        EXPECT_EQ(Recalculate_Rows(survey, mode, 3.5).outcome, RowDetection::kAssigned);
        EXPECT_EQ(survey.DistanceMode, mode);
        EXPECT_EQ(survey.UseTrueDist, mode == 1);
        EXPECT_EQ(survey.UseXDist, mode == 2);
        EXPECT_EQ(survey.UseYDist, mode == 3);
        EXPECT_EQ(survey.MinDistance, 3.5);
        EXPECT_EQ(readingsOf(survey, kRow), rows) << mode;
        EXPECT_EQ(survey.NumPoints[1] + survey.NumPoints[2] + survey.NumPoints[3], 6);
        EXPECT_EQ(survey.NumRows, survey.RowIndex);
    }
}

TEST(RecalculatingRows, AcceptsAThresholdOfZeroAndASiteThatIsNoPlaceOnEarth) {
    Survey survey = fourRows();
    EXPECT_EQ(Recalculate_Rows(survey, 1, 0).outcome, RowDetection::kAssigned);
    EXPECT_EQ(readingsOf(survey, kRow), (std::vector<double>{1, 1, 2, 3, 4, 5}));
    survey = surveyWithRows({{0, 0}, {1, 0}, {1e300, 0}, {2, 0}, {3, 0}});
    EXPECT_EQ(Recalculate_Rows(survey, 1, 7).outcome, RowDetection::kAssigned);
    EXPECT_EQ(readingsOf(survey, kRow), (std::vector<double>{1, 1, 2, 3, 3}));
}

TEST(RowInformation, HoldsWhileNumbersRunUpToTheLastRow) {
    for (const auto& rows : {std::vector<double>{1}, {1, 1, 1}, {1, 2, 3}, {1, 1, 2, 2, 2, 3}}) {
        Survey survey = surveyOfRowNumbers(rows, static_cast<int>(rows.back()));
        const auto before = sitesIn(survey);
        EXPECT_TRUE(ValidateRowInfo(survey));
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
        Survey survey = surveyOfRowNumbers(rows, numRows);
        EXPECT_FALSE(ValidateRowInfo(survey));
        makeOneRow(survey);
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
    Survey survey = surveyOfRowNumbers({1.2, 0.9, 2.4, 1.6}, 2);
    EXPECT_TRUE(ValidateRowInfo(survey));
    EXPECT_EQ(survey.SiteData(kRow, 0), 1.2);
}

TEST(RowInformation, IsNoneWithoutSites) {
    Survey survey = surveyOfRowNumbers({1, 2}, 2);
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
