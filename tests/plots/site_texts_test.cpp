// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_texts.h"

#include "support/made_survey.h"

namespace tessel {

TEST(SiteTexts, LeadBackToTheData) {
    Survey survey = surveyWithRows({{1, 2, 3, 4, 1, 100}, {436000.125, -5, 30.5, 60, 2, 1005}});
    EXPECT_EQ(rowAndSite(survey, 1), "Row #2, Site # 1005");
    EXPECT_EQ(siteReadings(survey, 1), "EM1 = 30.50, EM2 = 60.00");
    EXPECT_EQ(siteReadings(survey, 1, "; "), "EM1 = 30.50; EM2 = 60.00");
    EXPECT_EQ(sitePlace(survey, 1), "X = 436000.13, Y = -5.00");
    survey.SiteID[1] = 12.5;
    EXPECT_EQ(siteNumber(survey, 1), ", Site # 12.5");
}

TEST(SiteTexts, LeaveOutWhatTheSurveyHasNot) {
    Survey survey = surveyWithRows({{1, 2, 3, 4, 1, 100}});
    survey.SiteIDPresent = survey.TwoEMColumns = false;
    EXPECT_EQ(rowAndSite(survey, 0), "Row #1");
    EXPECT_EQ(siteNumber(survey, 0), "");
    EXPECT_EQ(siteReadings(survey, 0), "EM1 = 3.00");
}

}  // namespace tessel
