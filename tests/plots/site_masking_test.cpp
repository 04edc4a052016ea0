// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_masking.h"

#include "base/run_time_error.h"
#include "plots/map_zones.h"
#include "rows/row_detection.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

SiteMaskArray maskFor(const Survey& survey) {
    return SiteMaskArray(static_cast<std::size_t>(survey.NumSites), 0);
}

// The extent of a map of these sites: left, right, bottom, top.
std::array<double, 4> extentOf(const std::vector<std::pair<double, double>>& places, bool trueScale) {
    const MapExtent extent = SetMapScale(surveyAt(places), trueScale);
    return {extent.MapXMin, extent.MapXMax, extent.MapYMin, extent.MapYMax};
}

}  // namespace

TEST(MapScale, StretchesEachAxisOverItsExtentAndWidensTheShorterOneInTrueResolution) {
    const double most = std::numeric_limits<double>::max();
    const std::tuple<const char*, std::vector<std::pair<double, double>>, bool, std::array<double, 4>>
        cases[] = {{"own extents", {{-3, 100}, {7, 120}, {2, 90}}, false, {-3, 7, 90, 120}},
                   {"X is shorter", {{0, 100}, {10, 140}}, true, {-15, 25, 100, 140}},
                   {"Y is shorter", {{0, 100}, {40, 110}}, true, {0, 40, 85, 125}},
                   {"a square", {{0, 5}, {8, 13}}, true, {0, 8, 5, 13}},
                   {"no extent along X is one unit", {{4, 100}, {4, 140}}, false, {3.5, 4.5, 100, 140}},
                   {"and along Y", {{0, 100}, {40, 100}}, false, {0, 40, 99.5, 100.5}},
                   {"or that of Y", {{4, 100}, {4, 140}}, true, {-16, 24, 100, 140}},
                   {"or that of X", {{0, 100}, {40, 100}}, true, {0, 40, 80, 120}},
                   {"a single site", {{7, -2}}, false, {6.5, 7.5, -2.5, -1.5}},
                   {"and in true resolution", {{7, -2}}, true, {6.5, 7.5, -2.5, -1.5}},
                   {"no farther than the largest double",
                    {{-1.5e308, 1e308}, {1.5e308, 1e308}},
                    true,
                    {-1.5e308, 1.5e308, 1e308 - 1.5e308, most}}};
    for (const auto& [what, places, trueScale, extent] : cases)
        EXPECT_EQ(extentOf(places, trueScale), extent) << what;
}

TEST(MapScale, IsNeverZeroWhereDoublesAreCoarserThanOneUnit) {
    const MapExtent extent = SetMapScale(surveyAt({{1e18, -1e18}}), false);
    EXPECT_GT(extent.halfWidth(), 0);
    EXPECT_GT(extent.halfHeight(), 0);
}

TEST(MapScale, TakesAnExtentThatIsTooLongForADouble) {
    const MapExtent extent = SetMapScale(surveyAt({{-1.5e308, 0}, {1.5e308, 1}, {0, 0.5}}), false);
    EXPECT_EQ(extentOf({{-1.5e308, 0}, {1.5e308, 1}, {0, 0.5}}, false),
              (std::array{-1.5e308, 1.5e308, 0.0, 1.0}));
    EXPECT_EQ(extent.surveyX(0.5), 0);
    EXPECT_EQ(extent.surveyX(1), 1.5e308);
}

TEST(MapScale, NeedsASite) {
    EXPECT_THROW(SetMapScale(Survey{}, true), RunTimeError);
}

TEST(MapSpace, HasNorthAboveAndTheExtentAsUnitSquare) {
    const MapExtent extent{100, 300, 1000, 1400};
    EXPECT_EQ(extent.surveyX(0.25), 150);
    EXPECT_EQ(extent.surveyY(0.25), 1300);
}

TEST(MapZones, AreTheFourteenOfTheMenu) {
    // Left, top, width, height.
    const std::map<std::string_view, Rectangle> expected = {
        {"mnuZnorth", Rectangle::at(-0.05, -0.05, 1.1, 0.2)},
        {"mnuZsouth", Rectangle::at(-0.05, 0.85, 1.1, 0.2)},
        {"mnuZwest", Rectangle::at(-0.05, -0.05, 0.2, 1.1)},
        {"mnuZeast", Rectangle::at(0.85, -0.05, 0.2, 1.1)},
        {"mnuZnw", Rectangle::at(-0.05, -0.05, 0.55, 0.55)},
        {"mnuZne", Rectangle::at(0.5, -0.05, 0.55, 0.55)},
        {"mnuZsw", Rectangle::at(-0.05, 0.5, 0.55, 0.55)},
        {"mnuZse", Rectangle::at(0.5, 0.5, 0.55, 0.55)},
        {"mnuZw13", Rectangle::at(-0.05, -0.05, 0.35, 1.1)},
        {"mnuZc13v", Rectangle::at(0.3, -0.05, 0.4, 1.1)},
        {"mnuZe13", Rectangle::at(0.7, -0.05, 0.35, 1.1)},
        {"mnuZn13", Rectangle::at(-0.05, -0.05, 1.1, 0.35)},
        {"mnuZc13h", Rectangle::at(-0.05, 0.3, 1.1, 0.4)},
        {"mnuZs13", Rectangle::at(-0.05, 0.7, 1.1, 0.35)}};
    std::map<std::string_view, Rectangle> found;
    for (const MapZone& zone : kMapZones)
        found[zone.item] = zone.window;
    EXPECT_EQ(found, expected);
}

TEST(Masking, TakesASiteHoweverLittleInsideAnEdge) {
    const double aboveOne = std::nextafter(1, 2);
    const double belowThree = std::nextafter(3, 2);
    const Survey survey =
        surveyAt({{0, 0}, {4, 4}, {aboveOne, 2}, {belowThree, 2}, {2, aboveOne}, {2, belowThree}});
    const MapExtent extent = SetMapScale(survey, false);  // 0..4, so that 0.25 and 0.75 are 1 and 3
    SiteMaskArray mask = maskFor(survey);
    double y1 = 0.25, y2 = 0.75;
    EXPECT_EQ(MaskSites(survey, extent, mask, 0.25, y1, 0.75, y2), 4);
    EXPECT_EQ(mask, (SiteMaskArray{0, 0, 1, 1, 1, 1}));
}

TEST(Masking, OverwritesTheYArgumentsWithNorthAndSouthInSurveyUnits) {
    const Survey survey = surveyAt({{0, 100}, {4, 500}});
    const MapExtent extent = SetMapScale(survey, false);
    SiteMaskArray mask = maskFor(survey);
    double y1 = 0.75, y2 = 0.25;
    MaskSites(survey, extent, mask, 0.1, y1, 0.2, y2);
    EXPECT_EQ(y1, 400);
    EXPECT_EQ(y2, 200);
}

TEST(Deleting, MayLeaveADistanceWhoseSquareIsTooLarge) {
    Survey survey = surveyAt({{1e300, 0}, {6e299, 0}, {2e299, 0}});
    survey.chooseDistance(1);
    Calculate_Distance(survey);
    SiteMaskArray mask{0, 1, 0};
    EXPECT_EQ(deleteMaskedSites(survey, mask).sites, 1);
    ASSERT_EQ(survey.TrueDist.size(), 3U);
    EXPECT_DOUBLE_EQ(survey.TrueDist[1], 8e299);
}

TEST(SitesOfARow, AreTheRunsOfItsNumber) {
    const Survey survey = surveyOfRowNumbers({1, 1, 2, 2.4, 3, 2}, 3);
    EXPECT_EQ(sitesOfRow(survey, 1), (std::vector<IndexRange>{{0, 2}}));
    EXPECT_EQ(sitesOfRow(survey, 2), (std::vector<IndexRange>{{2, 4}, {5, 6}}));
    EXPECT_EQ(sitesOfRow(survey, 3), (std::vector<IndexRange>{{4, 5}}));
    EXPECT_TRUE(sitesOfRow(survey, 4).empty());
    EXPECT_TRUE(sitesOfRow(Survey{}, 1).empty());
}

TEST(DrawingBlocks, CoverTheSurveyAndEndAtMultiplesOfAHundredSites) {
    for (const SiteIndex sites : {0, 1, 100, 6399, 6400, 6401, 100000}) {
        Survey survey;
        survey.NumSites = sites;
        SiteIndex next = 0;
        for (const IndexRange& block : drawingBlocks(survey)) {
            EXPECT_EQ(block.first, next);
            EXPECT_GT(block.last, block.first);
            EXPECT_TRUE(block.last % 100 == 0 || block.last == sites);
            next = block.last;
        }
        EXPECT_EQ(next, sites);
    }
}

}  // namespace tessel
