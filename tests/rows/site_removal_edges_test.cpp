// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/site_removal.h"
#include "support/row_surveys.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(RemovingSites, WithoutSiteNumbersTouchesNone) {
    Survey survey = surveyWithRows({{1, 2, 3, 4, 1}, {5, 6, 7, 8, 1}, {9, 10, 11, 12, 2}});
    survey.SiteIDPresent = false;
    survey.SiteID.clear();
    EXPECT_EQ(removeSites(survey, std::vector<std::uint8_t>{1, 0, 0}), 1);
    EXPECT_EQ(survey.NumSites, 2);
    EXPECT_EQ(survey.SiteData(kX, 0), 5);
    EXPECT_EQ(survey.SiteData(kRow, 1), 2);
    EXPECT_TRUE(survey.SiteID.empty());
}

TEST(RemovingSites, FromAnEmptySurveyRemovesNone) {
    Survey survey;
    EXPECT_EQ(removeSites(survey, {}), 0);
    EXPECT_EQ(survey.NumSites, 0);
}

TEST(RemovingSites, LeavesRowsCountsAndDistancesToTheCaller) {
    Survey survey = surveyWithRows({{1, 0, 0, 0, 1}, {5, 0, 0, 0, 2}, {9, 0, 0, 0, 3}});
    const auto distances = survey.TrueDist;
    removeSites(survey, std::vector<std::uint8_t>{0, 1, 0});
    EXPECT_EQ(survey.NumRows, 3);
    EXPECT_EQ(survey.NumPoints[2], 1);
    EXPECT_EQ(survey.TrueDist, distances);
    EXPECT_EQ(survey.SiteData(kRow, 1), 3);
}

}  // namespace tessel
