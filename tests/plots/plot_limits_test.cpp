// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/plot_limits.h"

#include "base/run_time_error.h"
#include "rows/row_detection.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

void expectLimits(const PlotLimits& limits, double xMin, double xMax, double yMin, double yMax) {
    EXPECT_DOUBLE_EQ(limits.PlotXMin, xMin);
    EXPECT_DOUBLE_EQ(limits.PlotXMax, xMax);
    EXPECT_DOUBLE_EQ(limits.PlotYMin, yMin);
    EXPECT_DOUBLE_EQ(limits.PlotYMax, yMax);
}

IndexRange firstRow(const Survey& survey) {
    return rowSites(survey, 1);
}

}  // namespace

TEST(RowProfileLimits, AddATwentiethAlongAndATenthOfTheReadings) {
    const Survey survey = madeSurvey({{100, 7, 20, 40, 1}, {300, 9, 30, 10, 1}, {200, 8, 25, 20, 1}});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), 90, 310, 7, 43);
    expectLimits(rowProfileLimits(survey, firstRow(survey), false), 6.9, 9.1, 7, 43);
}

TEST(RowProfileLimits, LeaveTheSecondReadingOutWhereThereIsNone) {
    Survey survey = madeSurvey({{100, 7, 20, 999, 1}, {300, 9, 30, -999, 1}});
    survey.TwoEMColumns = false;
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), 90, 310, 19, 31);
}

TEST(RowProfileLimits, LookAtTheSitesOfTheRowOnly) {
    const Survey survey =
        madeSurvey({{-900, 0, -5, -5, 1}, {100, 7, 20, 20, 2}, {300, 9, 30, 30, 2}, {5000, 0, 99, 99, 3}});
    expectLimits(rowProfileLimits(survey, rowSites(survey, 2), true), 90, 310, 19, 31);
}

TEST(RowProfileLimits, OfOneSiteSpan400MetresAndOneMilliSiemens) {
    Survey survey = madeSurvey({{500, 900, 20, 20, 1}});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), 300, 700, 19.5, 20.5);
    expectLimits(rowProfileLimits(survey, firstRow(survey), false), 700, 1100, 19.5, 20.5);
}

TEST(RowProfileLimits, OfOneSiteWithTwoReadingsHoldBoth) {
    const Survey survey = madeSurvey({{500, 900, 42, 17, 1}});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), 300, 700, 16.5, 42.5);
}

TEST(RowProfileLimits, WithoutSpreadTakeAShareOfTheLowestValue) {
    const Survey survey = madeSurvey({{500, 7, 20, 20, 1}, {500, 9, 20, 20, 1}});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), 475, 525, 18, 22);
}

TEST(RowProfileLimits, WithoutSpreadRunDownwardsAtNegativeValues) {
    const Survey survey = madeSurvey({{-500, 7, -20, -20, 1}, {-500, 9, -20, -20, 1}});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), -475, -525, -18, -22);
}

TEST(RowProfileLimits, WithoutSpreadAtZeroHaveNoWidth) {
    const Survey survey = madeSurvey({{0, 7, 0, 0, 1}, {0, 9, 0, 0, 1}});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), 0, 0, 0, 0);
}

TEST(RowMapLimits, AddATwentiethBothWays) {
    const Survey survey = madeSurvey({{100, 10, 0, 0, 1}, {300, 30, 0, 0, 1}});
    expectLimits(rowMapLimits(survey, firstRow(survey), true), 90, 310, 9, 31);
}

TEST(RowMapLimits, AreTurnedWhenPlottedByY) {
    const Survey survey = madeSurvey({{100, 10, 0, 0, 1}, {300, 30, 0, 0, 1}});
    expectLimits(rowMapLimits(survey, firstRow(survey), false), 9, 31, 90, 310);
}

TEST(RowMapLimits, OfOneSiteSpan400MetresBothWays) {
    const Survey survey = madeSurvey({{500, 900, 1, 2, 1}});
    expectLimits(rowMapLimits(survey, firstRow(survey), true), 300, 700, 700, 1100);
    expectLimits(rowMapLimits(survey, firstRow(survey), false), 700, 1100, 300, 700);
}

TEST(RowMapLimits, WithoutSpreadTakeATwentiethAlongAndATenthAcross) {
    const Survey survey = madeSurvey({{200, 1000, 1, 2, 1}, {200, 1000, 3, 4, 1}});
    expectLimits(rowMapLimits(survey, firstRow(survey), true), 190, 210, 900, 1100);
    expectLimits(rowMapLimits(survey, firstRow(survey), false), 950, 1050, 180, 220);
}

TEST(RowMapLimits, WithoutSpreadRunDownwardsAtNegativeCoordinates) {
    const Survey survey = madeSurvey({{-200, -1000, 1, 2, 1}, {-200, -1000, 3, 4, 1}});
    expectLimits(rowMapLimits(survey, firstRow(survey), true), -190, -210, -900, -1100);
}

TEST(EmptiedRowLimits, StandAroundTheSurveysExtent) {
    Survey survey = madeSurvey({{100, 10, 0, 0, 1}, {300, 30, 0, 0, 1}});
    Calculate_Max(survey);
    Calculate_Min(survey);
    expectLimits(emptiedRowLimits(survey), -100, 500, -190, 230);
}

TEST(SurveyGridLimits, AddATwentiethToTheSurveysExtent) {
    const Survey survey = madeSurvey({{100, 10, 0, 0, 1}, {300, 30, 0, 0, 2}});
    expectLimits(surveyGridLimits(survey), 90, 310, 9, 31);
}

TEST(SurveyGridLimits, HaveNoWidthWithoutSpread) {
    const Survey survey = madeSurvey({{100, 10, 0, 0, 1}, {100, 30, 0, 0, 1}});
    expectLimits(surveyGridLimits(survey), 100, 100, 9, 31);
}

TEST(PlotLimits, ReachNoFartherThanTheLargestDouble) {
    const double most = std::numeric_limits<double>::max();
    const Survey survey = madeSurvey({{-1.75e308, 10, 0, 0, 1}, {1.75e308, 30, 1.75e308, 0, 1}});
    expectLimits(surveyGridLimits(survey), -most, most, 9, 31);
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), -most, most, -1.75e307, most);
    expectLimits(rowMapLimits(survey, firstRow(survey), true), -most, most, 9, 31);
}

TEST(SurveyGridLimits, NeedASite) {
    EXPECT_THROW(surveyGridLimits(Survey{}), RunTimeError);
}

TEST(PlotLimits, OfTheLastPlotAreShared) {
    thePlotLimits() = {1, 2, 3, 4};
    EXPECT_EQ(thePlotLimits(), (PlotLimits{1, 2, 3, 4}));
    thePlotLimits() = {};
}

}  // namespace tessel
