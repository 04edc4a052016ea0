// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/plot_limits.h"

#include "base/run_time_error.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

void expectLimits(const PlotLimits& limits, const PlotLimits& expected) {
    EXPECT_DOUBLE_EQ(limits.PlotXMin, expected.PlotXMin);
    EXPECT_DOUBLE_EQ(limits.PlotXMax, expected.PlotXMax);
    EXPECT_DOUBLE_EQ(limits.PlotYMin, expected.PlotYMin);
    EXPECT_DOUBLE_EQ(limits.PlotYMax, expected.PlotYMax);
}

// Of a row profile and of a row map: the sites, plotted by X or by Y, and what they give.
struct Case {
    const char* what;
    std::vector<MadeSite> sites;
    bool byX;
    PlotLimits limits;
};

IndexRange firstRow(const Survey& survey) {
    return rowSites(survey, 1);
}

}  // namespace

TEST(RowProfileLimits, AddATwentiethAlongAndATenthOfTheReadings) {
    const std::vector<MadeSite> three = {{100, 7, 20, 40, 1}, {300, 9, 30, 10, 1}, {200, 8, 25, 20, 1}};
    const Case cases[] = {
        {"by X", three, true, {90, 310, 7, 43}},
        {"by Y", three, false, {6.9, 9.1, 7, 43}},
        {"one site is 400 m and 1 mS/m", {{500, 900, 20, 20, 1}}, true, {300, 700, 19.5, 20.5}},
        {"one site by Y", {{500, 900, 20, 20, 1}}, false, {700, 1100, 19.5, 20.5}},
        {"both readings of one site", {{500, 900, 42, 17, 1}}, true, {300, 700, 16.5, 42.5}},
        {"a share of the lowest value", {{500, 7, 20, 20, 1}, {500, 9, 20, 20, 1}}, true, {475, 525, 18, 22}},
        {"downwards below 0", {{-500, 7, -20, -20, 1}, {-500, 9, -20, -20, 1}}, true, {-475, -525, -18, -22}},
        {"no width at 0", {{0, 7, 0, 0, 1}, {0, 9, 0, 0, 1}}, true, {0, 0, 0, 0}}};
    for (const auto& [what, sites, byX, limits] : cases) {
        SCOPED_TRACE(what);
        const Survey survey = madeSurvey(sites);
        expectLimits(rowProfileLimits(survey, firstRow(survey), byX), limits);
    }
}

TEST(RowProfileLimits, LookAtTheSitesOfTheRowOnly) {
    const Survey survey =
        madeSurvey({{-900, 0, -5, -5, 1}, {100, 7, 20, 20, 2}, {300, 9, 30, 30, 2}, {5000, 0, 99, 99, 3}});
    expectLimits(rowProfileLimits(survey, rowSites(survey, 2), true), {90, 310, 19, 31});
}

TEST(RowMapLimits, AddATwentiethBothWaysAndAreTurnedWhenPlottedByY) {
    const std::vector<MadeSite> two = {{100, 10, 0, 0, 1}, {300, 30, 0, 0, 1}};
    const std::vector<MadeSite> same = {{200, 1000, 1, 2, 1}, {200, 1000, 3, 4, 1}};
    const Case cases[] = {{"by X", two, true, {90, 310, 9, 31}},
                          {"by Y", two, false, {9, 31, 90, 310}},
                          {"one site is 400 m both ways", {{500, 900, 1, 2, 1}}, true, {300, 700, 700, 1100}},
                          {"one site by Y", {{500, 900, 1, 2, 1}}, false, {700, 1100, 300, 700}},
                          {"a twentieth along, a tenth across", same, true, {190, 210, 900, 1100}},
                          {"the same by Y", same, false, {950, 1050, 180, 220}},
                          {"downwards below 0",
                           {{-200, -1000, 1, 2, 1}, {-200, -1000, 3, 4, 1}},
                           true,
                           {-190, -210, -900, -1100}}};
    for (const auto& [what, sites, byX, limits] : cases) {
        SCOPED_TRACE(what);
        const Survey survey = madeSurvey(sites);
        expectLimits(rowMapLimits(survey, firstRow(survey), byX), limits);
    }
}

TEST(SurveyGridLimits, AddATwentiethToTheSurveysExtent) {
    const Survey survey = madeSurvey({{100, 10, 0, 0, 1}, {300, 30, 0, 0, 2}, {300, 70, 0, 0, 3}});
    expectLimits(surveyGridLimits(siteExtent(survey)), {90, 310, 7, 73});
    expectLimits(surveyGridLimits(siteExtent(survey, {0, 2})), {90, 310, 9, 31});
    expectLimits(surveyGridLimits(siteExtent(survey, {1, 3})), {300, 300, 28, 72});
    EXPECT_THROW(siteExtent(Survey{}), RunTimeError);
}

TEST(PlotLimits, ReachNoFartherThanTheLargestDouble) {
    const double most = std::numeric_limits<double>::max();
    const Survey survey = madeSurvey({{-1.75e308, 10, 0, 0, 1}, {1.75e308, 30, 1.75e308, 0, 1}});
    expectLimits(surveyGridLimits(siteExtent(survey)), {-most, most, 9, 31});
    expectLimits(rowProfileLimits(survey, firstRow(survey), true), {-most, most, -1.75e307, most});
    expectLimits(rowMapLimits(survey, firstRow(survey), true), {-most, most, 9, 31});
}

}  // namespace tessel
