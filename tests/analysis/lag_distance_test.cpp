// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/lag_distance.h"

#include "rows/row_detection.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

std::vector<double> distancesOf(const LagDistances& lag) {
    return {lag.distances.begin(), lag.distances.end()};
}

// Calculated for the plot, as it does itself.
LagDistances measuredLag(Survey& survey, LagMeasure measure) {
    Calculate_Distances(survey, distanceModeOf(measure));
    return lagDistances(survey, measure);
}

}  // namespace

TEST(LagDistance, ShowsAFlatRunAndASpikeBetweenRowsAlongOneCoordinateToo) {
    const std::tuple<LagMeasure, std::vector<double>, double, const char*> cases[] = {
        {LagMeasure::kTrueDistance, {0, 10, 10, 40, 10, 10}, 40, "Sample Distance Plot (True Distance)"},
        {LagMeasure::kAlongX, {0, 10, 10, 0, 10, 10}, 20, "Sample Distance Plot (By X)"},
        {LagMeasure::kAlongY, {0, 0, 0, 40, 0, 0}, 40, "Sample Distance Plot (By Y)"}};
    for (const auto& [measure, distances, top, header] : cases) {
        Survey survey = surveyOfTwoRows();
        const LagDistances lag = measuredLag(survey, measure);
        EXPECT_EQ(distancesOf(lag), distances);
        EXPECT_EQ(lag.top, top);
        EXPECT_EQ(lag.header, header);
        EXPECT_TRUE(survey.UseTrueDist) << "the measure of row detection stays";
        EXPECT_EQ(survey.DistanceMode, 1);
        EXPECT_EQ(survey.NumRows, 2);
        survey.MinDistance = 75;
        EXPECT_EQ(measuredLag(survey, measure).top, 75) << "it reaches up to the minimum distance";
    }
}

TEST(LagDistance, StandsAtTheSequenceNumberOfItsSite) {
    EXPECT_EQ(sequenceNumbers(5, 4), (std::vector<double>{5, 6, 7, 8}));
    EXPECT_TRUE(sequenceNumbers(1, 0).empty());
}

}  // namespace tessel
