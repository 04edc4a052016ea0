// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/walked_path.h"

#include "base/sample.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

constexpr PathRules kRules{.together = 1, .gap = 20, .distanceMode = 1, .stray = 5};

}  // namespace

TEST(WalkedPath, TakesSitesThatLieTogetherForOnePlace) {
    const WalkedPath path =
        walkedPath(surveyAt({{0, 0}, {0.5, 0}, {-0.5, 0}, {6, 8}, {6, 8}, {6, 9}, {12, 16.5}}), kRules);
    ASSERT_EQ(path.places.size(), 3u);
    EXPECT_EQ(path.place(0).x, 0);
    EXPECT_EQ(path.place(1).x, 6);
    EXPECT_NEAR(path.place(1).y, 25.0 / 3, 1e-12);
    EXPECT_NEAR(path.place(1).way, std::hypot(6, 25.0 / 3), 1e-12);
    EXPECT_EQ(path.siteAt(1), 3);
    EXPECT_EQ(path.siteAt(2), 6);
    EXPECT_EQ(path.siteAt(3), 7);
}

TEST(WalkedPath, LeavesAPlaceWithTwoSitesInARowAndNotWithOne) {
    const WalkedPath resting =
        walkedPath(surveyAt({{0, 0}, {0, 0}, {3, 0}, {0, 0}, {-3, 0}, {0, 0}}), kRules);
    EXPECT_EQ(resting.places.size(), 1u);
    const WalkedPath walking = walkedPath(surveyAt({{0, 0}, {0, 0}, {3, 0}, {3, 0}, {6, 0}}), kRules);
    ASSERT_EQ(walking.places.size(), 3u);
    EXPECT_EQ(walking.place(2).x, 6);
    EXPECT_EQ(walking.place(2).way, 6);
}

TEST(WalkedPath, BeginsAPieceBehindAGap) {
    const WalkedPath path = walkedPath(surveyAt({{0, 0}, {10, 0}, {30, 0}, {50.5, 0}, {60, 0}}), kRules);
    ASSERT_EQ(path.pieces.size(), 2u);
    EXPECT_EQ(path.pieces[0], (IndexRange{0, 3}));
    EXPECT_EQ(path.place(3).way, 0);
    EXPECT_EQ(path.siteAt(3), 3);
}

TEST(WalkedPath, MeasuresGapsAsRowDetectionDoes) {
    const Survey survey = surveyAt({{0, 0}, {30, 0}, {30, 30}});
    for (const auto& [mode, place] : {std::pair{1, 3}, {2, 2}, {3, 2}}) {
        PathRules rules = kRules;
        rules.distanceMode = mode;
        EXPECT_EQ(walkedPath(survey, rules).pieces.size(), static_cast<std::size_t>(place)) << mode;
    }
}

TEST(WalkedPath, PassesOverLostFixes) {
    const WalkedPath path = walkedPath(
        surveyAt({{900, 900}, {904, 900}, {0, 0}, {0, 0}, {0, 0}, {912, 900}, {916, 900}}), kRules);
    EXPECT_EQ(path.pieces.size(), 1u);
    ASSERT_EQ(path.strays.size(), 1u);
    EXPECT_EQ(path.strays[0], (IndexRange{2, 5}));
    EXPECT_EQ(path.place(1).x, 904);
    EXPECT_EQ(withoutStrayEnds(path, {1, 4}), (IndexRange{1, 2}));
    EXPECT_EQ(withoutStrayEnds(path, {3, 7}), (IndexRange{5, 7}));
    EXPECT_EQ(withoutStrayEnds(path, {1, 6}), (IndexRange{1, 6}));
    EXPECT_EQ(withoutStrayEnds(path, {2, 4}).count(), 0);
}

TEST(WalkedPath, TakesNoShortRowForStrays) {
    // To and fro, three sites a row: the third row begins near the end of the first.
    const Survey survey = surveyAt(
        {{0, 0}, {9, 0}, {18, 0}, {18, 21}, {9, 21}, {0, 21}, {0, 42}, {9, 42}, {18, 42}, {18, 63}, {9, 63}});
    EXPECT_EQ(walkedPath(survey, {1, 20, 1, 100}).pieces.size(), 4u);
}

TEST(WalkedPath, IsCutWhereFarMoreThanAFewPlacesAreStrays) {
    std::vector<std::pair<double, double>> places{{900, 0}, {901, 0}};
    for (int i = 0; i < kMostStrays; ++i)
        places.push_back({0.5 * i, 0});
    const auto back = places;
    places.push_back({902, 0});
    EXPECT_EQ(walkedPath(surveyAt(places), kRules).pieces.size(), 1u);
    places.back() = {0, 5};
    places.push_back({902, 0});
    EXPECT_EQ(walkedPath(surveyAt(places), kRules).pieces.size(), 3u);
}

TEST(WalkedPath, KnowsEveryPointOfItsWay) {
    const WalkedPath path = walkedPath(surveyAt({{0, 0}, {0, 0}, {8, 6}, {8, 6}, {8, 16}, {8, 16}}), kRules);
    const WayPoint between = pointOnWay(path, path.pieces[0], 0, 5);
    EXPECT_NEAR(between.x, 4, 1e-12);
    EXPECT_NEAR(between.y, 3, 1e-12);
    EXPECT_EQ(pointOnWay(path, path.pieces[0], 2, 20).y, 16);
}

TEST(MedianStep, LeavesOutRepeatedPositions) {
    EXPECT_EQ(medianStep(surveyAt({{0, 0}, {0, 0}, {0, 0}, {2, 0}, {2, 0}, {5, 0}, {9, 0}})), 3);
    EXPECT_EQ(medianStep(surveyAt({{1, 1}, {1, 1}})), 0);
    EXPECT_EQ(medianStep(Survey{}), 0);
}

TEST(MedianStep, LooksAtASampleOfALargeSurvey) {
    Survey survey = surveyOfReadings(
        5 * kSampleSize, [](SiteIndex) { return 1.0; }, [](SiteIndex) { return 1.0; });
    EXPECT_EQ(medianStep(survey), 1);
}

TEST(WalkedPath, LivesWithSitesThatAreNoPlaceOnEarthAndWithNone) {
    const WalkedPath path =
        walkedPath(surveyAt({{0, 0}, {1e300, 0}, {-1e308, 1e308}, {1e308, -1e308}}), kRules);
    EXPECT_EQ(path.pieces.size(), 4u);
    EXPECT_TRUE(walkedPath(Survey{}, kRules).pieces.empty());
}

}  // namespace tessel
