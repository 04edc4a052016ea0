// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_forecast.h"

#include "rows/row_editing.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

// What finding the rows arrives at.
int rowsFound(Survey survey, int mode, double distance) {
    Recalculate_Rows(survey, mode, distance);
    return survey.RowIndex;
}

std::vector<IndexRange> rowsOf(const Survey& survey) {
    std::vector<IndexRange> rows;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        if (i == 0 || survey.SiteData(kRow, i) != survey.SiteData(kRow, i - 1)) rows.push_back({i, i});
        ++rows.back().last;
    }
    return rows;
}

Survey surveyAlong(const std::vector<double>& x) {
    std::vector<MadeSite> sites;
    for (const double at : x)
        sites.push_back({at, 0, 10, 20, 1});
    return madeSurvey(sites);
}

Survey randomSurvey(std::mt19937& random, int sites) {
    // Whole steps, so that gaps equal to a distance are common.
    std::uniform_int_distribution<int> step(-4, 4);
    std::vector<MadeSite> made;
    for (int i = 0; i < sites; ++i)
        made.push_back({double(step(random)), double(step(random)), 10, 20, 1});
    return madeSurvey(made);
}

}  // namespace

TEST(RowForecast, SaysWhatFindingTheRowsWouldGive) {
    std::mt19937 random(7);
    for (const int sites : {1, 2, 3, 4, 5, 30, 249, 250, 251, 252, 253, 700}) {
        const Survey survey = randomSurvey(random, sites);
        for (const int mode : {1, 2, 3}) {
            const RowForecast forecast(survey, mode);
            for (const double distance : {0.0, 0.5, 1.0, 2.0, 3.0, 3.5, 5.0, 8.0, 11.0, 12.0})
                EXPECT_EQ(forecast.rows(distance), rowsFound(survey, mode, distance))
                    << sites << " sites, measure " << mode << ", " << distance << " m";
        }
    }
}

TEST(RowForecast, KnowsTheSitesOfTheRowsThatFindingThemWouldGive) {
    std::mt19937 random(8);
    for (const int sites : {1, 2, 3, 4, 5, 30, 251, 700}) {
        const Survey survey = randomSurvey(random, sites);
        for (const int mode : {1, 2, 3}) {
            const RowForecast forecast(survey, mode);
            for (const double distance : {0.0, 0.5, 1.0, 2.0, 3.0, 3.5, 5.0, 8.0, 11.0, 12.0}) {
                Survey divided = survey;
                if (Recalculate_Rows(divided, mode, distance).outcome == RowDetection::kTooManyRows) {
                    EXPECT_TRUE(forecast.rowSites(distance).empty());
                    continue;
                }
                EXPECT_EQ(forecast.rowSites(distance), rowsOf(divided))
                    << sites << " sites, measure " << mode << ", " << distance << " m";
            }
        }
    }
    EXPECT_TRUE(RowForecast().rowSites(1).empty());
}

TEST(RowForecast, TellsTheLimitFromOneRowMore) {
    std::vector<double> x;
    for (int i = 0; i < 251; ++i)
        x.push_back(i);
    EXPECT_EQ(RowForecast(surveyAlong(x), 1).rows(0.5), 250);
    EXPECT_EQ(RowForecast(surveyAlong(x), 1).rowSites(0.5).size(), 250u);
    x.push_back(251);
    EXPECT_EQ(RowForecast(surveyAlong(x), 1).rows(0.5), kMaxRows + 1);
    x.push_back(252);
    EXPECT_EQ(RowForecast(surveyAlong(x), 1).rows(0.5), kMaxRows + 1);
}

TEST(RowForecast, NeverTestsTheGapBehindTheFirstSite) {
    EXPECT_EQ(RowForecast(surveyAlong({0, 100}), 1).rows(5), 1);
    EXPECT_EQ(RowForecast(surveyAlong({0, 100, 101}), 1).rows(5), 1);
    EXPECT_EQ(RowForecast(surveyAlong({0, 1, 101}), 1).rows(5), 2);
    EXPECT_EQ(RowForecast().rows(5), 0) << "no site, no row";
    EXPECT_EQ(RowForecast(Survey{}, 1).rows(5), 0);
}

TEST(RowForecast, ChangesNothingInTheSurvey) {
    const Survey before = surveyAlong({0, 1, 101});
    Survey survey = before;
    const RowForecast forecast(survey, 2);
    expectSameSurvey(survey, before);
    // It keeps what it needs: no distance costs another look at the survey.
    survey.SiteData(kX, 2) = 2;
    EXPECT_EQ(forecast.rows(5), 2);
}

}  // namespace tessel
