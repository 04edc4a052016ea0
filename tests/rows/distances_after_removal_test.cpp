// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_detection.h"
#include "rows/site_removal.h"
#include "support/made_survey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tessel {

namespace {

using Random = std::mt19937;

// Coarse coordinates, so that distances repeat and the largest occurs more than once.
Survey coarseSurvey(Random& random, int measure) {
    std::uniform_int_distribution<int> coordinate(-5, 5);
    std::vector<MadeSite> sites(1 + random() % 12);
    for (MadeSite& site : sites)
        site = {double(coordinate(random)), double(coordinate(random)), double(coordinate(random)), 0, 1};
    Survey survey = madeSurvey(sites);
    survey.chooseDistance(measure);
    Calculate_Chosen_Distance(survey);
    return survey;
}

std::vector<SiteIndex> someSites(Random& random, SiteIndex count) {
    std::vector<SiteIndex> chosen;
    for (SiteIndex i = 0; i < count; ++i)
        if (random() % 3 == 0) chosen.push_back(i);
    return chosen;
}

TEST(DistancesAfterRemoval, AreThoseThatACalculationOfAllGives) {
    Random random(11);
    for (int run = 0; run < 6000; ++run) {
        Survey survey = coarseSurvey(random, 1 + run % 3);
        const std::vector<SiteIndex> removed = someSites(random, survey.NumSites);
        removeSitesAt(survey, removed);
        Survey expected = survey;
        Calculate_Chosen_Distance(expected);
        Distances_After_Removal(survey, removed);
        expectSameSurvey(survey, expected);
        if (testing::Test::HasFailure()) FAIL() << "run " << run;
    }
}

TEST(DistancesAfterRemoval, AreCalculatedWhereThereWereNone) {
    Survey survey = madeSurvey({{0, 0}, {3, 4}, {6, 8}});
    survey.TrueDist.clear();
    removeSitesAt(survey, std::vector<SiteIndex>{1});
    Distances_After_Removal(survey, std::vector<SiteIndex>{1});
    EXPECT_EQ(survey.TrueDist, (std::vector<double>{0, 10, 0}));
    EXPECT_EQ(survey.MaxTrueDist, 10);
}

TEST(DistancesAfterRemoval, AcrossAGapTooLongForADoubleAreTheLargestDouble) {
    Survey survey = madeSurvey({{0, 0}, {0, 0}, {0, 0}});
    survey.chooseDistance(2);
    survey.SiteData(kX, 0) = -1e308;
    survey.SiteData(kX, 2) = 1e308;
    Calculate_X_Distance(survey);
    removeSitesAt(survey, std::vector<SiteIndex>{1});
    Distances_After_Removal(survey, std::vector<SiteIndex>{1});
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, std::numeric_limits<double>::max(), 0}));
    EXPECT_EQ(survey.MaxXDist, std::numeric_limits<double>::max());
}

TEST(SitesRemovedByIndex, AreThoseRemovedByMarks) {
    Random random(12);
    for (int run = 0; run < 2000; ++run) {
        Survey byIndex = coarseSurvey(random, 1);
        Survey byMark = byIndex;
        const std::vector<SiteIndex> removed = someSites(random, byIndex.NumSites);
        std::vector<std::uint8_t> marks(static_cast<std::size_t>(byIndex.NumSites), 0);
        for (const SiteIndex site : removed)
            marks[static_cast<std::size_t>(site)] = 1;
        EXPECT_EQ(removeSitesAt(byIndex, removed), removeSites(byMark, marks));
        EXPECT_EQ(byIndex.SiteID, byMark.SiteID);
        for (int column = 0; column < kSiteColumns; ++column)
            EXPECT_TRUE(std::equal(byIndex.SiteData.column(column),
                                   byIndex.SiteData.column(column) + byIndex.SiteData.capacity(),
                                   byMark.SiteData.column(column)));
        ASSERT_EQ(byIndex.NumSites, byMark.NumSites);
    }
}

}  // namespace

}  // namespace tessel
