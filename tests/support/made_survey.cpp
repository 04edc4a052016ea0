// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_survey.h"

#include "rows/row_detection.h"

namespace tessel {

Survey surveyWithRows(const std::vector<MadeSite>& sites) {
    Survey survey;
    survey.NumSites = static_cast<SiteIndex>(sites.size());
    survey.SiteData.resize(survey.NumSites + 10);
    survey.SiteID.resize(sites.size() + 10);
    survey.SourceLine.resize(sites.size() + 10);
    survey.SiteIDPresent = survey.TwoEMColumns = true;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const MadeSite& site = sites[static_cast<std::size_t>(i)];
        const double columns[kSiteColumns] = {site.x, site.y, site.em1, site.em2, site.row};
        for (int column = 0; column < kSiteColumns; ++column)
            survey.SiteData(column, i) = columns[column];
        survey.SiteID[static_cast<std::size_t>(i)] = site.id;
        survey.SourceLine[static_cast<std::size_t>(i)] = sourceLine(2 * i + 1);
    }
    survey.chooseDistance(1);
    if (sites.empty()) return survey;
    survey.NumRows = static_cast<int>(sites.back().row);
    Calculate_Distance(survey);
    if (survey.NumRows > 0) Calculate_NumPoints(survey);
    return survey;
}

Survey madeSurvey(std::vector<MadeSite> sites) {
    double id = 1000;
    for (MadeSite& site : sites)
        site.id = ++id;
    Survey survey = surveyWithRows(sites);
    survey.MinDistance = 20;
    return survey;
}

Survey surveyAt(const std::vector<std::pair<double, double>>& places) {
    std::vector<MadeSite> sites;
    for (const auto& [x, y] : places)
        sites.push_back({x, y, 20, 30, 1, static_cast<double>(sites.size())});
    return surveyWithRows(sites);
}

Survey surveyOfRowNumbers(const std::vector<double>& numbers, int rows) {
    std::vector<MadeSite> sites;
    for (const double number : numbers)
        sites.push_back({static_cast<double>(sites.size()), number, 1, 2, number, 0});
    Survey survey = surveyWithRows(sites);
    survey.NumRows = survey.RowIndex = rows;
    return survey;
}

Survey surveyWalkedToAndFro(int rows, double length) {
    std::vector<MadeSite> sites;
    for (int row = 0; row < rows; ++row) {
        for (double i = 0; i <= length; ++i)
            sites.push_back({row * 6.0, row % 2 == 0 ? i : length - i, 20, 30, 1, 0});
        for (int i = 1; i < 6 && row + 1 < rows; ++i)
            sites.push_back({row * 6.0 + i, row % 2 == 0 ? length : 0, 20, 30, 1, 0});
    }
    return madeSurvey(sites);
}

Survey surveyOfTwoRows() {
    return madeSurvey({{0, 0, 1, 1, 1},
                       {10, 0, 1, 1, 1},
                       {20, 0, 1, 1, 1},
                       {20, 40, 1, 1, 2},
                       {10, 40, 1, 1, 2},
                       {0, 40, 1, 1, 2}});
}

Survey surveyAlongX(const std::vector<double>& gaps, double minDistance) {
    std::vector<MadeSite> sites{{0, 0, 1, 2, 0, 0}};
    for (const double gap : gaps)
        sites.push_back({sites.back().x + gap, 0, 1, 2, 0, 0});
    Survey survey = surveyWithRows(sites);
    survey.MinDistance = minDistance;
    return survey;
}

Survey randomRows(std::mt19937& random, int rows, int largestRow) {
    std::uniform_int_distribution<int> size(1, largestRow);
    std::uniform_int_distribution<int> place(0, 40);
    std::uniform_real_distribution<double> reading(-5, 90);
    std::vector<MadeSite> sites;
    for (int row = 1; row <= rows; ++row)
        for (int i = size(random); i > 0; --i)
            sites.push_back({place(random) * 0.5, place(random) * 0.25, reading(random), reading(random),
                             static_cast<double>(row), static_cast<double>(sites.size()) + 1001});
    return surveyWithRows(sites);
}

Survey surveyOfReadings(const std::vector<double>& em1) {
    const auto at = [&em1](SiteIndex i) { return em1[static_cast<std::size_t>(i)]; };
    Survey survey = surveyOfReadings(static_cast<SiteIndex>(em1.size()), at, [](SiteIndex) { return 0.0; });
    survey.TwoEMColumns = false;
    return survey;
}

Survey surveyOfReadings(const std::vector<double>& em1, const std::vector<double>& em2) {
    Survey survey = surveyOfReadings(em1);
    survey.TwoEMColumns = true;
    std::copy(em2.begin(), em2.end(), survey.SiteData.column(kEM2));
    return survey;
}

Survey surveyOfReadings(SiteIndex sites, const std::function<double(SiteIndex)>& em1,
                        const std::function<double(SiteIndex)>& em2) {
    Survey survey;
    survey.SiteData.resize(sites + 1);
    survey.NumSites = sites;
    survey.NumRows = survey.RowIndex = 1;
    survey.NumPoints[1] = sites;
    survey.TwoEMColumns = true;
    for (SiteIndex i = 0; i < sites; ++i) {
        survey.SiteData(kX, i) = static_cast<double>(i);
        survey.SiteData(kRow, i) = 1;
        survey.SiteData(kEM1, i) = em1(i);
        survey.SiteData(kEM2, i) = em2(i);
    }
    return survey;
}

Survey surveyWithTies() {
    return surveyOfReadings({12, 12, 12, 8, 8, 20, 20, 20, 20, 15}, {30, 30, 30, 22, 22, 41, 41, 41, 41, 33});
}

Survey surveyAroundZero() {
    return surveyOfReadings({-7.5, 0, 3.25, 0, -0.5, 12.75, -7.5, 4, 0, 9.5, 2, -1.25},
                            {1.5, 0, -2, 4.25, 0, 8.5, -6, 3, 0.25, 5, 0, -9.75});
}

Survey surveyWithLargeOffset() {
    Survey survey = surveyOfReadings({0.25, 0.5, 0.75, 1, 2, 3, 4.5, 7.25, 0, 10},
                                     {1, 0.75, 0.5, 2, 3, 8, 1.25, 4, 0, 6});
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        survey.SiteData(kEM1, i) += 1e9;
        survey.SiteData(kEM2, i) = 5e8 - survey.SiteData(kEM2, i);
    }
    return survey;
}

std::vector<MadeSite> sitesIn(const Survey& survey) {
    std::vector<MadeSite> sites;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        sites.push_back({survey.SiteData(kX, i), survey.SiteData(kY, i), survey.SiteData(kEM1, i),
                         survey.SiteData(kEM2, i), survey.SiteData(kRow, i),
                         survey.SiteIDPresent ? survey.SiteID[static_cast<std::size_t>(i)] : 0});
    return sites;
}

std::vector<std::uint32_t> linesIn(const Survey& survey) {
    if (survey.SourceLine.empty()) return {};
    return {survey.SourceLine.begin(), survey.SourceLine.begin() + survey.NumSites};
}

std::vector<double> readingsOf(const Survey& survey, SiteColumn column) {
    const double* const readings = survey.SiteData.column(column);
    return {readings, readings + survey.NumSites};
}

void expectSameSurvey(const Survey& actual, const Survey& expected) {
    EXPECT_EQ(actual.NumSites, expected.NumSites);
    EXPECT_TRUE(sitesIn(actual) == sitesIn(expected)) << "sites differ";
    EXPECT_EQ(actual.SiteIDPresent, expected.SiteIDPresent);
    EXPECT_EQ(linesIn(actual), linesIn(expected));
    EXPECT_EQ(actual.NumRows, expected.NumRows);
    EXPECT_EQ(actual.NumPoints, expected.NumPoints);
    EXPECT_EQ(actual.TwoEMColumns, expected.TwoEMColumns);
    EXPECT_EQ(actual.DistanceMode, expected.DistanceMode);
    EXPECT_EQ(actual.MinDistance, expected.MinDistance);
    EXPECT_EQ(actual.TrueDist, expected.TrueDist);
    EXPECT_EQ(actual.XDist, expected.XDist);
    EXPECT_EQ(actual.YDist, expected.YDist);
    EXPECT_EQ(actual.MaxTrueDist, expected.MaxTrueDist);
    EXPECT_EQ(actual.MaxXDist, expected.MaxXDist);
    EXPECT_EQ(actual.MaxYDist, expected.MaxYDist);
}

void expectThereAndBack(Survey& survey, const Survey& before, Difference& difference) {
    const Survey after = survey;
    Survey kept = before;
    difference.waiting(after).forth(kept);
    expectSameSurvey(kept, after);
    for (int turn = 0; turn < 2; ++turn) {
        difference.back(survey);
        expectSameSurvey(survey, before);
        difference.forth(survey);
        expectSameSurvey(survey, after);
    }
}

}  // namespace tessel
