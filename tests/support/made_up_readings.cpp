// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_up_readings.h"

#include <algorithm>

namespace tessel {

namespace {

Survey emptySurvey(SiteIndex sites) {
    Survey survey;
    survey.SiteData.resize(sites + 1);
    survey.NumSites = sites;
    survey.NumRows = survey.RowIndex = 1;
    survey.NumPoints[1] = sites;
    for (SiteIndex i = 0; i < sites; ++i) {
        survey.SiteData(kX, i) = static_cast<double>(i);
        survey.SiteData(kRow, i) = 1;
    }
    return survey;
}

}  // namespace

Survey surveyOfReadings(const std::vector<double>& em1) {
    Survey survey = emptySurvey(static_cast<SiteIndex>(em1.size()));
    std::copy(em1.begin(), em1.end(), survey.SiteData.column(kEM1));
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
    Survey survey = emptySurvey(sites);
    survey.TwoEMColumns = true;
    for (SiteIndex i = 0; i < sites; ++i) {
        survey.SiteData(kEM1, i) = em1(i);
        survey.SiteData(kEM2, i) = em2(i);
    }
    return survey;
}

std::vector<double> readingsOf(const Survey& survey, SiteColumn column) {
    const double* const readings = survey.SiteData.column(column);
    return {readings, readings + survey.NumSites};
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

}  // namespace tessel
