// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/lag_distance.h"

#include "rows/row_detection.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

// Two rows of three sites 10 m apart, 40 m between the rows.
Survey twoRows() {
    return madeSurvey({{0, 0, 1, 1, 1},
                       {10, 0, 1, 1, 1},
                       {20, 0, 1, 1, 1},
                       {20, 40, 1, 1, 2},
                       {10, 40, 1, 1, 2},
                       {0, 40, 1, 1, 2}});
}

std::vector<double> distancesOf(const LagDistances& lag) {
    return {lag.distances.begin(), lag.distances.end()};
}

// Calculated for the plot, as it does itself.
LagDistances measuredLag(Survey& survey, LagMeasure measure) {
    Calculate_Distances(survey, distanceModeOf(measure));
    return lagDistances(survey, measure);
}

}  // namespace

TEST(LagDistance, ShowsAFlatRunAndASpikeBetweenRows) {
    Survey survey = twoRows();
    const LagDistances lag = measuredLag(survey, LagMeasure::kTrueDistance);
    EXPECT_EQ(distancesOf(lag), (std::vector<double>{0, 10, 10, 40, 10, 10}));
    EXPECT_EQ(lag.top, 40);
    EXPECT_EQ(lag.header, "Sample Distance Plot (True Distance)");
}

TEST(LagDistance, IsMeasuredAlongOneCoordinateToo) {
    Survey survey = twoRows();
    const LagDistances alongX = measuredLag(survey, LagMeasure::kAlongX);
    EXPECT_EQ(distancesOf(alongX), (std::vector<double>{0, 10, 10, 0, 10, 10}));
    EXPECT_EQ(alongX.header, "Sample Distance Plot (By X)");
    EXPECT_EQ(survey.MaxXDist, 10);
    const LagDistances alongY = measuredLag(survey, LagMeasure::kAlongY);
    EXPECT_EQ(distancesOf(alongY), (std::vector<double>{0, 0, 0, 40, 0, 0}));
    EXPECT_EQ(alongY.header, "Sample Distance Plot (By Y)");
    EXPECT_EQ(alongY.top, 40);
}

TEST(LagDistance, ReachesUpToTheMinimumDistanceAtLeast) {
    Survey survey = twoRows();
    survey.MinDistance = 75;
    EXPECT_EQ(measuredLag(survey, LagMeasure::kTrueDistance).top, 75);
}

TEST(LagDistance, LeavesTheMeasureOfRowDetectionAlone) {
    Survey survey = twoRows();
    measuredLag(survey, LagMeasure::kAlongY);
    EXPECT_TRUE(survey.UseTrueDist);
    EXPECT_EQ(survey.DistanceMode, 1);
    EXPECT_EQ(survey.NumRows, 2);
}

TEST(LagDistance, OfOneSiteIsNone) {
    Survey survey = madeSurvey({{5, 5, 1, 1, 1}});
    const LagDistances lag = measuredLag(survey, LagMeasure::kTrueDistance);
    EXPECT_EQ(distancesOf(lag), std::vector<double>{0});
    EXPECT_EQ(lag.top, 20);
}

TEST(LagDistance, StandsAtTheSequenceNumberOfItsSite) {
    EXPECT_EQ(sequenceNumbers(5, 4), (std::vector<double>{5, 6, 7, 8}));
    EXPECT_TRUE(sequenceNumbers(1, 0).empty());
}

}  // namespace tessel
