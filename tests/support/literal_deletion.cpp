// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/literal_deletion.h"

#include "rows/row_detection.h"

namespace tessel {

namespace {

void correctForEarlier(std::vector<SiteIndex>& points, std::size_t i) {
    for (std::size_t j = 0; j < i; ++j)
        if (points[i] > points[j]) points[i] -= 1;
}

SiteIndex siteOf(const Survey& survey, int row, SiteIndex point) {
    SiteIndex site = point - 1;
    for (int r = 1; r < row; ++r)
        site += survey.NumPoints[static_cast<std::size_t>(r)];
    return site;
}

void shiftDown(Survey& survey, SiteIndex site, bool losesLastPoint) {
    for (SiteIndex k = site; k <= survey.NumSites - 2; ++k) {
        for (int column = kX; column <= kEM2; ++column)
            survey.SiteData(column, k) = survey.SiteData(column, k + 1);
        if (survey.SiteIDPresent)
            survey.SiteID[static_cast<std::size_t>(k)] = survey.SiteID[static_cast<std::size_t>(k + 1)];
        if (!survey.SourceLine.empty())
            survey.SourceLine[static_cast<std::size_t>(k)] =
                survey.SourceLine[static_cast<std::size_t>(k + 1)];
        survey.SiteData(kRow, k) = survey.SiteData(kRow, k + 1) - (losesLastPoint ? 1 : 0);
    }
}

}  // namespace

void deleteOneByOne(Survey& survey, int row, std::vector<SiteIndex> points) {
    auto& numPoints = survey.NumPoints[static_cast<std::size_t>(row)];
    for (std::size_t i = 0; i < points.size(); ++i) {
        correctForEarlier(points, i);
        shiftDown(survey, siteOf(survey, row, points[i]), numPoints == 1);
        if (numPoints == 1) survey.NumRows -= 1;
        survey.NumSites -= 1;
        Calculate_Chosen_Distance(survey);
        if (!survey.TrueDist.empty()) Calculate_Distance(survey);
        numPoints -= 1;
    }
    if (numPoints == 0) Calculate_NumPoints(survey);
}

}  // namespace tessel
