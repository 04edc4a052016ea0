// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_survey.h"

#include "rows/row_detection.h"

#include <gtest/gtest.h>

namespace tessel {

Survey madeSurvey(const std::vector<MadeSite>& sites) {
    Survey survey;
    survey.NumSites = static_cast<SiteIndex>(sites.size());
    survey.SiteData.resize(survey.NumSites + 5);
    survey.SiteID.resize(sites.size() + 5);
    survey.SiteIDPresent = true;
    survey.TwoEMColumns = true;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const MadeSite& site = sites[static_cast<std::size_t>(i)];
        const double values[] = {site.x, site.y, site.em1, site.em2, double(site.row)};
        for (int column = 0; column < kSiteColumns; ++column)
            survey.SiteData(column, i) = values[column];
        survey.SiteID[static_cast<std::size_t>(i)] = 1001.0 + double(i);
    }
    survey.NumRows = sites.empty() ? 0 : sites.back().row;
    survey.chooseDistance(1);
    survey.MinDistance = 20;
    Calculate_Chosen_Distance(survey);
    Calculate_NumPoints(survey);
    return survey;
}

std::vector<MadeSite> madeSitesOf(const Survey& survey) {
    std::vector<MadeSite> sites;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        sites.push_back({survey.SiteData(kX, i), survey.SiteData(kY, i), survey.SiteData(kEM1, i),
                         survey.SiteData(kEM2, i), static_cast<int>(survey.SiteData(kRow, i))});
    return sites;
}

bool operator==(const MadeSite& a, const MadeSite& b) {
    return a.x == b.x && a.y == b.y && a.em1 == b.em1 && a.em2 == b.em2 && a.row == b.row;
}

namespace {

std::vector<double> idsOf(const Survey& survey) {
    if (!survey.SiteIDPresent) return {};
    return {survey.SiteID.begin(), survey.SiteID.begin() + static_cast<std::ptrdiff_t>(survey.NumSites)};
}

void expectSameDistances(const Survey& actual, const Survey& expected) {
    EXPECT_EQ(actual.TrueDist, expected.TrueDist);
    EXPECT_EQ(actual.XDist, expected.XDist);
    EXPECT_EQ(actual.YDist, expected.YDist);
    EXPECT_EQ(actual.MaxTrueDist, expected.MaxTrueDist);
    EXPECT_EQ(actual.MaxXDist, expected.MaxXDist);
    EXPECT_EQ(actual.MaxYDist, expected.MaxYDist);
}

}  // namespace

void expectSameSurvey(const Survey& actual, const Survey& expected) {
    EXPECT_EQ(actual.NumSites, expected.NumSites);
    EXPECT_TRUE(madeSitesOf(actual) == madeSitesOf(expected)) << "sites differ";
    EXPECT_EQ(idsOf(actual), idsOf(expected));
    EXPECT_EQ(actual.NumRows, expected.NumRows);
    EXPECT_EQ(actual.NumPoints, expected.NumPoints);
    EXPECT_EQ(actual.TwoEMColumns, expected.TwoEMColumns);
    EXPECT_EQ(actual.DistanceMode, expected.DistanceMode);
    EXPECT_EQ(actual.MinDistance, expected.MinDistance);
    expectSameDistances(actual, expected);
}

}  // namespace tessel
