// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_deletion.h"

#include "rows/row_detection.h"
#include "rows/row_sites.h"
#include "support/literal_deletion.h"
#include "support/made_survey.h"

#include <gtest/gtest.h>

#include <random>

namespace tessel {

namespace {

Survey threeRows() {
    return madeSurvey({{1, 1, 11, 21, 1},
                       {2, 1, 12, 22, 1},
                       {3, 1, 13, 23, 1},
                       {3, 40, 14, 24, 2},
                       {9, 90, 15, 25, 3},
                       {8, 90, 16, 26, 3}});
}

RowSelection selectionOf(const std::vector<SiteIndex>& points) {
    RowSelection selection;
    for (const SiteIndex point : points)
        selection.append(point);
    return selection;
}

bool deletePoints(Survey& survey, int row, const std::vector<SiteIndex>& points) {
    RowSelection selection = selectionOf(points);
    const bool emptied = deleteSelectedSites(survey, row, selection);
    EXPECT_EQ(selection.SelCount, 0);
    return emptied;
}

using Random = std::mt19937;

int upTo(Random& random, int most) {
    return std::uniform_int_distribution<int>(1, most)(random);
}

// Few different coordinates, so that many sites share one.
Survey randomSurvey(Random& random) {
    std::vector<MadeSite> sites;
    const int rows = upTo(random, 5);
    for (int row = 1; row <= rows; ++row)
        for (int left = upTo(random, 8); left > 0; --left)
            sites.push_back({double(upTo(random, 6)), double(upTo(random, 6)), double(upTo(random, 999)),
                             double(upTo(random, 999)), row});
    Survey survey = madeSurvey(sites);
    survey.SiteIDPresent = upTo(random, 2) == 1;
    survey.TwoEMColumns = upTo(random, 2) == 1;
    survey.chooseDistance(upTo(random, 3));
    Calculate_Chosen_Distance(survey);
    return survey;
}

// Picked as a user does: at random, with points picked again and equal coordinates taken for one.
RowSelection randomSelection(Random& random, const Survey& survey, int row) {
    const RowSites sites = rowSites(survey, row);
    const auto along = columnOf(survey, alongColumn(upTo(random, 2) == 1), sites);
    RowSelection selection;
    for (int picks = upTo(random, 12); picks > 0; --picks)
        selection.toggle(upTo(random, static_cast<int>(sites.count)), along);
    return selection;
}

std::vector<SiteIndex> pointsOf(const RowSelection& selection) {
    return {selection.SelPoints.begin(), selection.SelPoints.begin() + selection.SelCount};
}

}  // namespace

TEST(RowDeletion, TakesExactlyTheSelectedSitesInEitherOrder) {
    for (const auto& order : {std::vector<SiteIndex>{1, 3}, std::vector<SiteIndex>{3, 1}}) {
        Survey survey = threeRows();
        EXPECT_FALSE(deletePoints(survey, 1, order));
        EXPECT_TRUE(madeSitesOf(survey) ==
                    (std::vector<MadeSite>{
                        {2, 1, 12, 22, 1}, {3, 40, 14, 24, 2}, {9, 90, 15, 25, 3}, {8, 90, 16, 26, 3}}));
        EXPECT_EQ(survey.SiteID[0], 1002);
        EXPECT_EQ(survey.NumRows, 3);
        EXPECT_EQ(survey.NumPoints[1], 1);
        EXPECT_EQ(survey.NumPoints[3], 2);
    }
}

TEST(RowDeletion, RenumbersTheRowsBehindARowThatLostItsLastSite) {
    Survey survey = threeRows();
    EXPECT_TRUE(deletePoints(survey, 2, {1}));
    EXPECT_EQ(survey.NumRows, 2);
    EXPECT_EQ(survey.NumPoints[1], 3);
    EXPECT_EQ(survey.NumPoints[2], 2);
    EXPECT_EQ(survey.NumPoints[3], 0);
    EXPECT_EQ(survey.SiteData(kRow, 3), 2);
    EXPECT_EQ(survey.SiteData(kRow, 2), 1);
}

TEST(RowDeletion, CalculatesTheDistancesOfTheMeasureChosen) {
    Survey survey = threeRows();
    survey.chooseDistance(2);
    Calculate_Chosen_Distance(survey);
    const auto trueDistances = survey.TrueDist;
    deletePoints(survey, 1, {2});
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, 2, 0, 6, 1, 0}));
    EXPECT_EQ(survey.MaxXDist, 6);
    EXPECT_EQ(survey.TrueDist, trueDistances);
}

TEST(RowDeletion, CanEmptyTheSurvey) {
    Survey survey = madeSurvey({{1, 1, 1, 1, 1}, {2, 2, 2, 2, 1}});
    EXPECT_TRUE(deletePoints(survey, 1, {2, 1}));
    EXPECT_EQ(survey.NumSites, 0);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.NumPoints[1], 0);
    EXPECT_EQ(survey.MaxTrueDist, 0);
}

TEST(RowDeletion, OfNothingChangesNothing) {
    Survey survey = threeRows();
    EXPECT_FALSE(deletePoints(survey, 1, {}));
    expectSameSurvey(survey, threeRows());
}

TEST(RowDeletion, EndsAsDeletingOneSiteAfterAnotherDoes) {
    Random random(20240607);
    for (int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round) {
        Survey survey = randomSurvey(random);
        Survey expected = survey;
        while (survey.NumSites > 0 && !testing::Test::HasFailure()) {
            const int row = upTo(random, survey.NumRows);
            RowSelection selection = randomSelection(random, survey, row);
            deleteOneByOne(expected, row, pointsOf(selection));
            deleteSelectedSites(survey, row, selection);
            expectSameSurvey(survey, expected);
        }
    }
}

}  // namespace tessel
