// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_sites.h"

#include "base/run_time_error.h"
#include "support/made_survey.h"

#include <gtest/gtest.h>

namespace tessel {

namespace {

Survey threeRows() {
    return madeSurvey(
        {{1, 10, 0, 0, 1}, {2, 20, 0, 0, 1}, {3, 30, 0, 0, 2}, {4, 40, 0, 0, 3}, {5, 50, 0, 0, 3}});
}

}  // namespace

TEST(RowSites, FollowTheSitesOfAllEarlierRows) {
    const Survey survey = threeRows();
    EXPECT_EQ(rowSites(survey, 1).first, 0);
    EXPECT_EQ(rowSites(survey, 1).count(), 2);
    EXPECT_EQ(rowSites(survey, 2).first, 2);
    EXPECT_EQ(rowSites(survey, 2).count(), 1);
    EXPECT_EQ(rowSites(survey, 3).first, 3);
    EXPECT_EQ(rowSites(survey, 3).count(), 2);
}

TEST(RowSites, BehindTheLastRowAreNone) {
    EXPECT_EQ(rowSites(threeRows(), 4).first, 5);
    EXPECT_EQ(rowSites(threeRows(), 4).count(), 0);
}

TEST(RowSites, OutsideTheNumbersOfRowsAreASubscriptOutOfRange) {
    for (const int row : {0, -1, 251}) {
        try {
            rowSites(threeRows(), row);
            ADD_FAILURE() << "row " << row << " was accepted";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), RunTimeError::kSubscript);
        }
    }
}

TEST(RowSites, OpenAWindowOnAColumn) {
    const Survey survey = threeRows();
    const auto y = columnOf(survey, kY, rowSites(survey, 3));
    EXPECT_EQ(std::vector(y.begin(), y.end()), (std::vector<double>{40, 50}));
}

TEST(RowSites, RunAlongXOrAlongY) {
    EXPECT_EQ(alongColumn(true), kX);
    EXPECT_EQ(acrossColumn(true), kY);
    EXPECT_EQ(alongColumn(false), kY);
    EXPECT_EQ(acrossColumn(false), kX);
}

TEST(RowSites, AreWalkedAlongInTheirOrder) {
    const std::vector<double> eastwards{10, 12, 11, 20};
    EXPECT_EQ(pointBeside(0, 1, eastwards), 1);
    EXPECT_EQ(pointBeside(0, -1, eastwards), 4);
    EXPECT_EQ(pointBeside(2, 1, eastwards), 3);
    EXPECT_EQ(pointBeside(2, -1, eastwards), 1);
    EXPECT_EQ(pointBeside(4, 1, eastwards), 4);
    EXPECT_EQ(pointBeside(1, -1, eastwards), 1);
    EXPECT_EQ(pointBeside(0, 1, {}), 0);
}

TEST(RowSites, AreWalkedAlongFromTheRightInARowDrivenWestwards) {
    const std::vector<double> westwards{20, 15, 10};
    EXPECT_EQ(pointBeside(0, 1, westwards), 3);
    EXPECT_EQ(pointBeside(3, 1, westwards), 2);
    EXPECT_EQ(pointBeside(1, 1, westwards), 1);
    EXPECT_EQ(pointBeside(1, -1, westwards), 2);
}

}  // namespace tessel
