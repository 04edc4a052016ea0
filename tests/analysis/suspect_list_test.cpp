// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/suspect_list.h"

#include "support/made_survey.h"

namespace tessel {

namespace {

Survey fourSites() {
    return madeSurvey({{3, 10, 20, 40, 1}, {1, 20, 50, 10, 1}, {2, 30, 20, 30, 2}, {4, 40, 30, 20, 2}});
}

Suspects flagged(const std::vector<std::uint8_t>& flags) {
    Suspects suspects;
    suspects.flags = flags;
    suspects.sites = std::count_if(flags.begin(), flags.end(), [](std::uint8_t f) { return f != 0; });
    return suspects;
}

}  // namespace

TEST(SuspectList, NamesTheRulesOfASite) {
    EXPECT_EQ(ruleNames(0), "");
    EXPECT_EQ(ruleNames(1 << kSpike), "spike");
    EXPECT_EQ(ruleNames(1 << kOutsideLimits | 1 << kReadingsApart), "outside limits, readings apart");
    EXPECT_EQ(ruleNames(255),
              "outside limits, spike, unlike around, jump, repeated place, far away, stuck, readings apart");
}

TEST(SuspectList, HoldsTheFlaggedSites) {
    EXPECT_EQ(flaggedSites(flagged({0, 1, 0, 4})), (std::vector<SiteIndex>{1, 3}));
    EXPECT_TRUE(flaggedSites({}).empty());
}

TEST(SuspectList, IsOrderedByWhatAUserChooses) {
    Survey survey = fourSites();
    survey.SiteIDPresent = true;
    survey.SiteID = {7, 5, 6, 8};
    const Suspects suspects = flagged({1, 2, 3, 2});
    const auto ordered = [&](SuspectOrder order, bool rising) {
        std::vector<SiteIndex> sites{3, 1, 0, 2};
        sortSuspects(sites, survey, suspects, order, rising);
        return sites;
    };
    using Sites = std::vector<SiteIndex>;
    EXPECT_EQ(ordered(SuspectOrder::kSite, true), (Sites{1, 2, 0, 3}));
    EXPECT_EQ(ordered(SuspectOrder::kSite, false), (Sites{3, 0, 2, 1}));
    EXPECT_EQ(ordered(SuspectOrder::kRow, false), (Sites{2, 3, 0, 1})) << "equal ones as in the survey";
    EXPECT_EQ(ordered(SuspectOrder::kX, true), (Sites{1, 2, 0, 3}));
    EXPECT_EQ(ordered(SuspectOrder::kY, false), (Sites{3, 2, 1, 0}));
    EXPECT_EQ(ordered(SuspectOrder::kEM1, true), (Sites{0, 2, 3, 1}));
    EXPECT_EQ(ordered(SuspectOrder::kEM2, true), (Sites{1, 3, 2, 0}));
    EXPECT_EQ(ordered(SuspectOrder::kRules, false), (Sites{2, 1, 3, 0})) << "most rules first";
    survey.SiteIDPresent = false;
    EXPECT_EQ(ordered(SuspectOrder::kSite, true), (Sites{0, 1, 2, 3}));
}

TEST(SuspectList, CondemnsWhatIsFlaggedAndNotSpared) {
    const auto runs = condemnedRuns(flagged({1, 1, 0, 2, 8}), {0, 1, 0, 0, 0});
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0], (IndexRange{0, 1}));
    EXPECT_EQ(runs[1], (IndexRange{3, 5}));
}

TEST(SuspectList, LooksAtACopyWithoutDistances) {
    Survey survey = fourSites();
    survey.TrueDist = {0, 1, 2, 3, 0};
    const Survey copy = surveyToSearch(survey);
    EXPECT_EQ(copy.NumSites, 4);
    EXPECT_EQ(copy.SiteData(kEM2, 3), 20);
    EXPECT_TRUE(copy.TrueDist.empty());
    EXPECT_EQ(placesOf(copy, {2, 0}).x, (std::vector<double>{2, 3}));
    EXPECT_EQ(placesOf(copy, {2, 0}).y, (std::vector<double>{30, 10}));
}

}  // namespace tessel
