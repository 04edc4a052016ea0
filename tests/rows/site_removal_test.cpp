// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/site_removal.h"

#include "support/made_survey.h"

#include <gtest/gtest.h>

#include <random>

namespace tessel {

namespace {

Survey numberedSites(SiteIndex count) {
    std::vector<MadeSite> sites;
    for (SiteIndex i = 0; i < count; ++i)
        sites.push_back({double(i), double(i) + 0.25, double(i) + 0.5, double(i) + 0.75, 1});
    return madeSurvey(sites);
}

void expectRemoved(SiteIndex count, const std::vector<std::uint8_t>& marks) {
    Survey survey = numberedSites(count);
    const std::vector<MadeSite> before = madeSitesOf(survey);
    std::vector<MadeSite> expected;
    std::vector<double> expectedIds;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (marks[i] != 0) continue;
        expected.push_back(before[i]);
        expectedIds.push_back(survey.SiteID[i]);
    }
    EXPECT_EQ(removeSites(survey, marks), count - static_cast<SiteIndex>(expected.size()));
    ASSERT_TRUE(madeSitesOf(survey) == expected) << "of " << count << " sites";
    survey.SiteID.resize(expected.size());
    ASSERT_EQ(survey.SiteID, expectedIds);
}

}  // namespace

TEST(SiteRemoval, KeepsTheOthersInOrderHoweverManyAreMarked) {
    std::mt19937 random(7);
    for (const double share : {0.0, 0.003, 0.02, 0.5, 0.98, 1.0}) {
        std::bernoulli_distribution marked(share);
        for (const SiteIndex count : {1, 63, 64, 65, 128, 129, 1000}) {
            std::vector<std::uint8_t> marks(static_cast<std::size_t>(count));
            for (auto& mark : marks)
                mark = marked(random) ? 200 : 0;
            expectRemoved(count, marks);
        }
    }
}

TEST(SiteRemoval, ClearsTheEntriesThatBecomeFree) {
    Survey survey = numberedSites(200);
    std::vector<std::uint8_t> marks(200, 0);
    marks[3] = 1;
    removeSites(survey, marks);
    EXPECT_EQ(survey.SiteData(kX, 198), 199);
    EXPECT_EQ(survey.SiteData(kX, 199), 0);
    EXPECT_EQ(survey.SiteID[199], 0);
}

}  // namespace tessel
