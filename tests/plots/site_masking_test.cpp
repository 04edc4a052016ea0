#include "plots/site_masking.h"

#include "app/run_time_error.h"
#include "rows/row_detection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <set>

namespace {

struct Site {
    double x, y, em1, em2, row, id;
    bool operator==(const Site&) const = default;
};

Survey surveyOf(const std::vector<Site>& sites, bool withIDs = true) {
    Survey survey;
    survey.NumSites = static_cast<SiteIndex>(sites.size());
    survey.SiteIDPresent = withIDs;
    survey.TwoEMColumns = true;
    survey.SiteData.resize(survey.NumSites);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const Site& site = sites[static_cast<std::size_t>(i)];
        survey.SiteData(kX, i) = site.x;
        survey.SiteData(kY, i) = site.y;
        survey.SiteData(kEM1, i) = site.em1;
        survey.SiteData(kEM2, i) = site.em2;
        survey.SiteData(kRow, i) = site.row;
        if (withIDs) survey.SiteID.push_back(site.id);
    }
    return survey;
}

std::vector<Site> sitesOf(const Survey& survey) {
    std::vector<Site> sites;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        sites.push_back({survey.SiteData(kX, i), survey.SiteData(kY, i), survey.SiteData(kEM1, i),
                         survey.SiteData(kEM2, i), survey.SiteData(kRow, i),
                         survey.SiteIDPresent ? survey.SiteID[static_cast<std::size_t>(i)] : 0});
    return sites;
}

Survey surveyAt(const std::vector<std::pair<double, double>>& places) {
    std::vector<Site> sites;
    for (const auto& [x, y] : places)
        sites.push_back({x, y, 1, 2, 1, static_cast<double>(sites.size())});
    Survey survey = surveyOf(sites);
    survey.NumRows = survey.RowIndex = 1;
    return survey;
}

Survey surveyWithRows(const std::vector<double>& rows, int numRows) {
    std::vector<Site> sites;
    for (const double row : rows)
        sites.push_back(
            {static_cast<double>(sites.size()), row, 1, 2, row, static_cast<double>(sites.size())});
    Survey survey = surveyOf(sites);
    survey.NumRows = survey.RowIndex = numRows;
    return survey;
}

SiteMaskArray maskFor(const Survey& survey) {
    return SiteMaskArray(static_cast<std::size_t>(survey.NumSites), 0);
}

void expectExtent(const MapExtent& extent, double xMin, double xMax, double yMin, double yMax) {
    EXPECT_EQ(extent.MapXMin, xMin);
    EXPECT_EQ(extent.MapXMax, xMax);
    EXPECT_EQ(extent.MapYMin, yMin);
    EXPECT_EQ(extent.MapYMax, yMax);
}

}  // namespace

TEST(MapScale, StretchesEachAxisOverItsOwnExtent) {
    expectExtent(SetMapScale(surveyAt({{-3, 100}, {7, 120}, {2, 90}}), false), -3, 7, 90, 120);
}

TEST(MapScale, WidensTheShorterXAxisAroundItsCentreInTrueResolution) {
    expectExtent(SetMapScale(surveyAt({{0, 100}, {10, 140}}), true), -15, 25, 100, 140);
}

TEST(MapScale, WidensTheShorterYAxisAroundItsCentreInTrueResolution) {
    expectExtent(SetMapScale(surveyAt({{0, 100}, {40, 110}}), true), 0, 40, 85, 125);
}

TEST(MapScale, LeavesASquareFieldAsItIsInTrueResolution) {
    expectExtent(SetMapScale(surveyAt({{0, 5}, {8, 13}}), true), 0, 8, 5, 13);
}

TEST(MapScale, GivesAnAxisWithoutExtentOneUnit) {
    expectExtent(SetMapScale(surveyAt({{4, 100}, {4, 140}}), false), 3.5, 4.5, 100, 140);
    expectExtent(SetMapScale(surveyAt({{0, 100}, {40, 100}}), false), 0, 40, 99.5, 100.5);
}

TEST(MapScale, GivesAnAxisWithoutExtentTheOtherOnesInTrueResolution) {
    expectExtent(SetMapScale(surveyAt({{4, 100}, {4, 140}}), true), -16, 24, 100, 140);
    expectExtent(SetMapScale(surveyAt({{0, 100}, {40, 100}}), true), 0, 40, 80, 120);
}

TEST(MapScale, PutsASingleSiteIntoTheMiddleOfOneUnit) {
    for (const bool trueScale : {false, true})
        expectExtent(SetMapScale(surveyAt({{7, -2}}), trueScale), 6.5, 7.5, -2.5, -1.5);
}

TEST(MapScale, IsNeverZeroWhereDoublesAreCoarserThanOneUnit) {
    const MapExtent extent = SetMapScale(surveyAt({{1e18, -1e18}}), false);
    EXPECT_GT(extent.width(), 0);
    EXPECT_GT(extent.height(), 0);
    EXPECT_NEAR(extent.mapX(1e18), 0.5, 0.3);
}

TEST(MapScale, RefusesAnExtentThatIsNotFinite) {
    EXPECT_THROW(SetMapScale(surveyAt({{-1e308, 0}, {1e308, 1}}), false), RunTimeError);
}

TEST(MapScale, NeedsASite) {
    EXPECT_THROW(SetMapScale(Survey{}, true), RunTimeError);
}

TEST(MapSpace, HasNorthAboveAndTheExtentAsUnitSquare) {
    const MapExtent extent{100, 300, 1000, 1400};
    EXPECT_EQ(extent.mapX(100), 0);
    EXPECT_EQ(extent.mapX(300), 1);
    EXPECT_EQ(extent.mapY(1400), 0);
    EXPECT_EQ(extent.mapY(1000), 1);
    EXPECT_EQ(extent.mapY(1300), 0.25);
    EXPECT_EQ(extent.surveyX(0.25), 150);
    EXPECT_EQ(extent.surveyY(0.25), 1300);
}

TEST(MapZones, AreTheFourteenOfTheMenu) {
    // Left, top, width, height.
    const std::map<std::string_view, MapWindow> expected = {
        {"mnuZnorth", {-0.05, -0.05, 1.1, 0.2}}, {"mnuZsouth", {-0.05, 0.85, 1.1, 0.2}},
        {"mnuZwest", {-0.05, -0.05, 0.2, 1.1}},  {"mnuZeast", {0.85, -0.05, 0.2, 1.1}},
        {"mnuZnw", {-0.05, -0.05, 0.55, 0.55}},  {"mnuZne", {0.5, -0.05, 0.55, 0.55}},
        {"mnuZsw", {-0.05, 0.5, 0.55, 0.55}},    {"mnuZse", {0.5, 0.5, 0.55, 0.55}},
        {"mnuZw13", {-0.05, -0.05, 0.35, 1.1}},  {"mnuZc13v", {0.3, -0.05, 0.4, 1.1}},
        {"mnuZe13", {0.7, -0.05, 0.35, 1.1}},    {"mnuZn13", {-0.05, -0.05, 1.1, 0.35}},
        {"mnuZc13h", {-0.05, 0.3, 1.1, 0.4}},    {"mnuZs13", {-0.05, 0.7, 1.1, 0.35}}};
    std::map<std::string_view, MapWindow> found;
    for (const MapZone& zone : kMapZones)
        found[zone.item] = zone.window;
    EXPECT_EQ(found, expected);
}

namespace {

// Five sites on the edges and corners of the square 1..3, one in it, one outside.
const std::vector<std::pair<double, double>> kAroundASquare = {{0, 0}, {4, 4}, {1, 2}, {3, 2},
                                                               {2, 1}, {2, 3}, {3, 3}, {2, 2}};

}  // namespace

TEST(Masking, LeavesASiteExactlyOnAnEdgeUnmaskedInAllFourDirections) {
    const Survey survey = surveyAt(kAroundASquare);
    const MapExtent extent = SetMapScale(survey, false);  // 0..4, so that 0.25 and 0.75 are 1 and 3
    for (const auto& [x1, x2] : {std::pair{0.25, 0.75}, std::pair{0.75, 0.25}})
        for (auto [y1, y2] : {std::pair{0.25, 0.75}, std::pair{0.75, 0.25}}) {
            SiteMaskArray mask = maskFor(survey);
            EXPECT_EQ(MaskSites(survey, extent, mask, x1, y1, x2, y2), 1);
            EXPECT_EQ(mask, (SiteMaskArray{0, 0, 0, 0, 0, 0, 0, 1}));
        }
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

TEST(Masking, KeepsMasksSetBeforeAndCountsNoneTwice) {
    const Survey survey = surveyAt({{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}});
    const MapExtent extent = SetMapScale(survey, false);
    SiteMaskArray mask = maskFor(survey);
    double y1 = 0.9, y2 = 0.4;
    EXPECT_EQ(MaskSites(survey, extent, mask, 0.1, y1, 0.6, y2), 2);
    y1 = 0.6, y2 = 0.1;
    EXPECT_EQ(MaskSites(survey, extent, mask, 0.4, y1, 0.9, y2), 3);
    EXPECT_EQ(mask, (SiteMaskArray{0, 1, 1, 1, 0}));
}

TEST(Masking, AnEmptyRectangleMasksNothing) {
    const Survey survey = surveyAt({{0, 0}, {1, 1}, {2, 2}});
    SiteMaskArray mask = maskFor(survey);
    double y1 = 0.5, y2 = 0.5;
    EXPECT_EQ(MaskSites(survey, SetMapScale(survey, false), mask, 0.5, y1, 0.5, y2), 0);
}

TEST(Restoring, UnmasksEverySite) {
    SiteMaskArray mask{1, 0, 1, 1};
    recoverSites(mask);
    EXPECT_EQ(mask, (SiteMaskArray{0, 0, 0, 0}));
}

TEST(Deleting, TakesTheMaskedSitesOutInEveryColumnAndShrinksTheStorage) {
    Survey survey =
        surveyOf({{1, 2, 3, 4, 1, 10}, {5, 6, 7, 8, 1, 11}, {9, 8, 7, 6, 2, 12}, {5, 4, 3, 2, 3, 13}});
    survey.NumRows = survey.RowIndex = 3;
    survey.chooseDistance(1);
    Calculate_Distance(survey);
    SiteMaskArray mask{1, 0, 1, 0};
    EXPECT_EQ(deleteMaskedSites(survey, mask), 2);
    EXPECT_EQ(sitesOf(survey), (std::vector<Site>{{5, 6, 7, 8, 1, 11}, {5, 4, 3, 2, 3, 13}}));
    EXPECT_EQ(survey.SiteData.capacity(), 2);
    EXPECT_EQ(survey.SiteID.size(), 2U);
    EXPECT_EQ(mask, (SiteMaskArray{0, 0}));
    EXPECT_EQ(survey.TrueDist, (std::vector<double>{0, 2, 0}));
    EXPECT_EQ(survey.MaxTrueDist, 2);
    EXPECT_EQ(survey.NumRows, 3);
    EXPECT_EQ(survey.RowIndex, 3);
    EXPECT_EQ((std::vector<std::int64_t>(survey.NumPoints.begin() + 1, survey.NumPoints.begin() + 5)),
              (std::vector<std::int64_t>{1, 0, 1, 0}));
}

TEST(Deleting, RecalculatesEveryDistanceThatWasThere) {
    Survey survey = surveyAt({{0, 0}, {3, 4}, {6, 8}});
    survey.chooseDistance(2);
    Calculate_X_Distance(survey);
    Calculate_Y_Distance(survey);
    SiteMaskArray mask{0, 1, 0};
    deleteMaskedSites(survey, mask);
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, 6, 0}));
    EXPECT_EQ(survey.YDist, (std::vector<double>{0, 8, 0}));
    EXPECT_TRUE(survey.TrueDist.empty());
}

TEST(Deleting, KeepsEverySiteWhenNothingIsMasked) {
    Survey survey = surveyAt({{0, 0}, {3, 4}});
    const auto before = sitesOf(survey);
    SiteMaskArray mask{0, 0};
    EXPECT_EQ(deleteMaskedSites(survey, mask), 0);
    EXPECT_EQ(sitesOf(survey), before);
}

TEST(Deleting, CanEmptyASurveyWithoutSiteNumbers) {
    Survey survey = surveyOf({{1, 2, 3, 4, 1, 0}, {5, 6, 7, 8, 1, 0}}, false);
    survey.chooseDistance(1);
    SiteMaskArray mask{1, 1};
    EXPECT_EQ(deleteMaskedSites(survey, mask), 2);
    EXPECT_EQ(survey.NumSites, 0);
    EXPECT_EQ(survey.SiteData.capacity(), 0);
    EXPECT_TRUE(survey.SiteID.empty());
    EXPECT_TRUE(mask.empty());
}

TEST(RowInformation, HoldsWhileNumbersRunUpToTheLastRow) {
    for (const auto& rows : {std::vector<double>{1}, {1, 1, 1}, {1, 2, 3}, {1, 1, 2, 2, 2, 3}}) {
        Survey survey = surveyWithRows(rows, static_cast<int>(rows.back()));
        const auto before = sitesOf(survey);
        EXPECT_TRUE(ValidateRowInfo(survey));
        EXPECT_EQ(sitesOf(survey), before);
        EXPECT_EQ(survey.NumRows, rows.back());
    }
}

TEST(RowInformation, IsLostWhenARowIsGoneOrNumbersFallBack) {
    const std::vector<std::pair<std::vector<double>, int>> lost = {{{2, 2, 3}, 3},  // the first row is gone
                                                                   {{1, 1, 2}, 3},  // the last
                                                                   {{1, 1, 3}, 3},  // one between
                                                                   {{1, 2, 1, 2}, 2},  // falls back
                                                                   {{1, 2, 3, 2}, 2}, {{1, 3, 2}, 2}};
    for (const auto& [rows, numRows] : lost) {
        Survey survey = surveyWithRows(rows, numRows);
        EXPECT_FALSE(ValidateRowInfo(survey));
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            EXPECT_EQ(survey.SiteData(kRow, i), 1);
        EXPECT_EQ(survey.NumRows, 1);
        EXPECT_EQ(survey.RowIndex, 1);
        EXPECT_EQ(survey.NumPoints[1], survey.NumSites);
        EXPECT_EQ(survey.NumPoints[2], 0);
        EXPECT_TRUE(rowsAreUsable(survey));
    }
}

TEST(RowInformation, ReadsRowNumbersRounded) {
    Survey survey = surveyWithRows({1.2, 0.9, 2.4, 1.6}, 2);
    EXPECT_TRUE(ValidateRowInfo(survey));
    EXPECT_EQ(survey.SiteData(kRow, 0), 1.2);
}

TEST(RowInformation, IsNoneWithoutSites) {
    Survey survey = surveyWithRows({1, 2}, 2);
    survey.NumPoints[1] = 1;
    forgetRows(survey);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.RowIndex, 0);
    EXPECT_EQ(survey.NumPoints[1], 0);
    EXPECT_FALSE(rowsAreUsable(survey));
}

TEST(SitesOfARow, AreTheRunsOfItsNumber) {
    const Survey survey = surveyWithRows({1, 1, 2, 2.4, 3, 2}, 3);
    EXPECT_EQ(sitesOfRow(survey, 1), (std::vector<SiteRun>{{0, 2}}));
    EXPECT_EQ(sitesOfRow(survey, 2), (std::vector<SiteRun>{{2, 4}, {5, 6}}));
    EXPECT_EQ(sitesOfRow(survey, 3), (std::vector<SiteRun>{{4, 5}}));
    EXPECT_TRUE(sitesOfRow(survey, 4).empty());
    EXPECT_TRUE(sitesOfRow(Survey{}, 1).empty());
}

TEST(DrawingBlocks, CoverTheSurveyAndEndAtMultiplesOfAHundredSites) {
    for (const SiteIndex sites : {0, 1, 100, 6399, 6400, 6401, 100000}) {
        Survey survey;
        survey.NumSites = sites;
        SiteIndex next = 0;
        for (const SiteRun& block : drawingBlocks(survey)) {
            EXPECT_EQ(block.first, next);
            EXPECT_GT(block.last, block.first);
            EXPECT_TRUE(block.last % 100 == 0 || block.last == sites);
            next = block.last;
        }
        EXPECT_EQ(next, sites);
    }
}

// A second version, written plainly from the rules, on sites as records instead of columns.
namespace plain {

struct Model {
    std::vector<Site> sites;
    std::set<double> masked;  // by site ID number
    int numRows;

    void mask(const MapExtent& e, double x1, double y1, double x2, double y2) {
        const double west = std::min(e.surveyX(x1), e.surveyX(x2));
        const double east = std::max(e.surveyX(x1), e.surveyX(x2));
        const double south = std::min(e.surveyY(y1), e.surveyY(y2));
        const double north = std::max(e.surveyY(y1), e.surveyY(y2));
        for (const Site& site : sites)
            if (site.x > west && site.x < east && site.y > south && site.y < north) masked.insert(site.id);
    }

    void deleteMasked() {
        std::erase_if(sites, [this](const Site& site) { return masked.contains(site.id); });
        masked.clear();
    }

    bool validate() {
        bool ok = sites.front().row == 1 && sites.back().row == numRows;
        for (std::size_t i = 1; i < sites.size(); ++i) {
            const double step = sites[i].row - sites[i - 1].row;
            if (step != 0 && step != 1) ok = false;
        }
        if (!ok) {
            for (Site& site : sites)
                site.row = 1;
            numRows = 1;
        }
        return ok;
    }
};

}  // namespace plain

class RandomSurveys : public testing::TestWithParam<unsigned> {
  protected:
    std::mt19937 random{GetParam()};

    double between(int low, int high) { return std::uniform_int_distribution(low, high)(random); }

    // On a coarse grid, so that rectangle edges fall onto sites.
    std::vector<Site> makeSites(int rows) {
        std::vector<Site> sites;
        for (int row = 1; row <= rows; ++row)
            for (int k = static_cast<int>(between(1, 12)); k > 0; --k)
                sites.push_back({between(0, 16), between(0, 16), between(1, 99), between(1, 99),
                                 static_cast<double>(row), static_cast<double>(sites.size())});
        return sites;
    }
};

TEST_P(RandomSurveys, AreMaskedDeletedAndCheckedAsThePlainRulesSay) {
    const int rows = static_cast<int>(between(1, 9));
    plain::Model model{makeSites(rows), {}, rows};
    Survey survey = surveyOf(model.sites);
    survey.NumRows = survey.RowIndex = rows;
    survey.chooseDistance(static_cast<int>(between(1, 3)));
    Calculate_Chosen_Distance(survey);
    const MapExtent extent{0, 16, 0, 16};
    SiteMaskArray mask = maskFor(survey);

    for (int act = 0; act < 12 && survey.NumSites > 0; ++act) {
        double x1 = between(0, 16) / 16, x2 = between(0, 16) / 16;
        double y1 = between(0, 16) / 16, y2 = between(0, 16) / 16;
        model.mask(extent, x1, y1, x2, y2);
        EXPECT_EQ(MaskSites(survey, extent, mask, x1, y1, x2, y2),
                  static_cast<SiteIndex>(model.masked.size()));
        for (std::size_t i = 0; i < mask.size(); ++i)
            EXPECT_EQ(mask[i] != 0, model.masked.contains(model.sites[i].id));
        if (act % 3 != 2) continue;
        const auto before = model.sites.size();
        model.deleteMasked();
        EXPECT_EQ(deleteMaskedSites(survey, mask), static_cast<SiteIndex>(before - model.sites.size()));
        EXPECT_EQ(sitesOf(survey), model.sites);
        Survey fresh = survey;
        Calculate_Chosen_Distance(fresh);
        EXPECT_EQ(survey.TrueDist, fresh.TrueDist);
        EXPECT_EQ(survey.XDist, fresh.XDist);
        EXPECT_EQ(survey.YDist, fresh.YDist);
    }
    if (survey.NumSites == 0) return;
    EXPECT_EQ(ValidateRowInfo(survey), model.validate());
    EXPECT_EQ(sitesOf(survey), model.sites);
    EXPECT_EQ(survey.NumRows, model.numRows);
    const auto kept = survey.NumPoints;
    Calculate_NumPoints(survey);
    EXPECT_EQ(survey.NumPoints, kept);
    EXPECT_EQ(survey.RowIndex, survey.NumRows);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSurveys, testing::Range(1U, 201U));
