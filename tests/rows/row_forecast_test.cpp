// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_forecast.h"

#include "rows/row_editing.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

std::vector<IndexRange> rowsOf(const Survey& survey) {
    std::vector<IndexRange> rows;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        if (i == 0 || survey.SiteData(kRow, i) != survey.SiteData(kRow, i - 1)) rows.push_back({i, i});
        ++rows.back().last;
    }
    return rows;
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

TEST(RowForecast, KnowsTheNumberOfRowsAndTheirSitesThatFindingThemWouldGive) {
    std::mt19937 random(7);
    for (const int sites : {1, 2, 3, 4, 5, 30, 249, 250, 251, 252, 253, 700}) {
        const Survey survey = randomSurvey(random, sites);
        for (const int mode : {1, 2, 3}) {
            const RowForecast forecast(survey, mode);
            for (const double distance : {0.0, 0.5, 1.0, 2.0, 3.0, 3.5, 5.0, 8.0, 11.0, 12.0}) {
                Survey found = survey;
                const bool tooMany =
                    Recalculate_Rows(found, mode, distance).outcome == RowDetection::kTooManyRows;
                SCOPED_TRACE(testing::Message() << sites << " sites, measure " << mode << ", " << distance);
                EXPECT_EQ(forecast.rows(distance), found.RowIndex);
                EXPECT_EQ(forecast.rowSites(distance), tooMany ? std::vector<IndexRange>{} : rowsOf(found));
            }
        }
    }
    EXPECT_TRUE(RowForecast().rowSites(1).empty());
}

TEST(RowForecast, TellsTheLimitFromOneRowMore) {
    const auto ofEqualGaps = [](std::size_t gaps) {
        return RowForecast(surveyAlongX(std::vector<double>(gaps, 1), 0), 1);
    };
    EXPECT_EQ(ofEqualGaps(250).rows(0.5), 250);
    EXPECT_EQ(ofEqualGaps(250).rowSites(0.5).size(), 250u);
    EXPECT_EQ(ofEqualGaps(251).rows(0.5), kMaxRows + 1);
    EXPECT_EQ(ofEqualGaps(252).rows(0.5), kMaxRows + 1);
}

TEST(RowForecast, NeverTestsTheGapBehindTheFirstSite) {
    EXPECT_EQ(RowForecast(surveyAlongX({100}, 0), 1).rows(5), 1);
    EXPECT_EQ(RowForecast(surveyAlongX({100, 1}, 0), 1).rows(5), 1);
    EXPECT_EQ(RowForecast(surveyAlongX({1, 100}, 0), 1).rows(5), 2);
    EXPECT_EQ(RowForecast().rows(5), 0) << "no site, no row";
    EXPECT_EQ(RowForecast(Survey{}, 1).rows(5), 0);
}

TEST(RowForecast, KeepsWhatItNeedsSoThatNoDistanceCostsAnotherLookAtTheSurvey) {
    Survey survey = surveyAlongX({1, 100}, 0);
    const RowForecast forecast(survey, 2);
    survey.SiteData(kX, 2) = 2;
    EXPECT_EQ(forecast.rows(5), 2);
}

}  // namespace tessel
