// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_sites.h"

#include "support/made_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

Survey threeRows() {
    return madeSurvey(
        {{1, 10, 0, 0, 1}, {2, 20, 0, 0, 1}, {3, 30, 0, 0, 2}, {4, 40, 0, 0, 3}, {5, 50, 0, 0, 3}});
}

}  // namespace

TEST(RowSites, FollowTheSitesOfAllEarlierRows) {
    const Survey survey = threeRows();
    for (const auto& [row, first, count] : {std::tuple(1, 0, 2), {2, 2, 1}, {3, 3, 2}, {4, 5, 0}}) {
        EXPECT_EQ(rowSites(survey, row).first, first) << row;
        EXPECT_EQ(rowSites(survey, row).count(), count) << row;
    }
    for (const int row : {0, -1, 251})
        EXPECT_EQ(errorNumberOf([&] { rowSites(survey, row); }), RunTimeError::kSubscript) << row;
}

TEST(RowSites, NeverReachBeyondTheSitesWhateverTheCounts) {
    Survey survey = madeSurvey({{0, 0, 1, 1, 1}, {1, 0, 2, 2, 1}, {2, 0, 3, 3, 2}});
    survey.NumPoints[1] = 7;
    survey.NumPoints[2] = -9;
    EXPECT_EQ(rowSites(survey, 1), (IndexRange{0, 3}));
    EXPECT_EQ(rowSites(survey, 2), (IndexRange{3, 3}));
    EXPECT_EQ(rowSites(survey, 3), (IndexRange{0, 0}));
}

TEST(RowSites, AreWalkedAlongInTheirOrderAndFromTheRightInARowDrivenWestwards) {
    const std::vector<double> eastwards{10, 12, 11, 20}, westwards{20, 15, 10};
    const std::tuple<std::vector<double>, SiteIndex, int, SiteIndex> cases[] = {
        {eastwards, 0, 1, 1}, {eastwards, 0, -1, 4}, {eastwards, 2, 1, 3}, {eastwards, 2, -1, 1},
        {eastwards, 4, 1, 4}, {eastwards, 1, -1, 1}, {{}, 0, 1, 0},        {westwards, 0, 1, 3},
        {westwards, 3, 1, 2}, {westwards, 1, 1, 1},  {westwards, 1, -1, 2}};
    for (const auto& [along, from, step, to] : cases)
        EXPECT_EQ(pointBeside(from, step, along), to) << from << ' ' << step;
}

}  // namespace tessel
