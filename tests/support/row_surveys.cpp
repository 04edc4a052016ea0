// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/row_surveys.h"

#include "rows/row_detection.h"

namespace tessel {

bool operator==(const RowSite& a, const RowSite& b) {
    return a.x == b.x && a.y == b.y && a.em1 == b.em1 && a.em2 == b.em2 && a.row == b.row && a.id == b.id;
}

Survey surveyWithRows(const std::vector<RowSite>& sites) {
    Survey survey;
    survey.NumSites = static_cast<SiteIndex>(sites.size());
    survey.SiteData.resize(survey.NumSites + 10);
    survey.SiteID.resize(sites.size() + 10);
    survey.SiteIDPresent = survey.TwoEMColumns = true;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const RowSite& site = sites[static_cast<std::size_t>(i)];
        const double columns[kSiteColumns] = {site.x, site.y, site.em1, site.em2, site.row};
        for (int column = 0; column < kSiteColumns; ++column)
            survey.SiteData(column, i) = columns[column];
        survey.SiteID[static_cast<std::size_t>(i)] = site.id;
    }
    if (sites.empty()) return survey;
    survey.NumRows = static_cast<int>(sites.back().row);
    survey.chooseDistance(1);
    Calculate_Distance(survey);
    if (survey.NumRows > 0) Calculate_NumPoints(survey);
    return survey;
}

Survey surveyAlongX(const std::vector<double>& gaps, double minDistance) {
    std::vector<RowSite> sites{{0, 0, 1, 2, 0, 0}};
    for (const double gap : gaps)
        sites.push_back({sites.back().x + gap, 0, 1, 2, 0, 0});
    Survey survey = surveyWithRows(sites);
    survey.MinDistance = minDistance;
    return survey;
}

std::vector<RowSite> sitesIn(const Survey& survey) {
    std::vector<RowSite> sites;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        sites.push_back({survey.SiteData(kX, i), survey.SiteData(kY, i), survey.SiteData(kEM1, i),
                         survey.SiteData(kEM2, i), survey.SiteData(kRow, i),
                         survey.SiteID[static_cast<std::size_t>(i)]});
    return sites;
}

Survey randomRows(std::mt19937& random, int rows, int largestRow) {
    std::uniform_int_distribution<int> size(1, largestRow);
    std::uniform_int_distribution<int> place(0, 40);
    std::uniform_real_distribution<double> reading(-5, 90);
    std::vector<RowSite> sites;
    for (int row = 1; row <= rows; ++row)
        for (int i = size(random); i > 0; --i)
            sites.push_back({place(random) * 0.5, place(random) * 0.25, reading(random), reading(random),
                             static_cast<double>(row), static_cast<double>(sites.size()) + 1001});
    return surveyWithRows(sites);
}

}  // namespace tessel
