// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_masking.h"
#include "rows/row_editing.h"
#include "rows/row_selection.h"
#include "rows/row_sites.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"

namespace tessel {

// Whichever door sites leave by, the survey that they leave behind is the same bit for bit.

namespace {

// With room behind the last site, as after an import; with site numbers or without; by any measure or none,
// and with the distances of others that have been looked at.
Survey anySurvey(std::mt19937& random) {
    Survey survey = randomRows(random, 1 + static_cast<int>(random() % 6), 9);
    survey.SiteIDPresent = random() % 2 == 0;
    if (!survey.SiteIDPresent) survey.SiteID.clear();
    survey.MinDistance = 3;
    survey.TrueDist.clear();
    survey.MaxTrueDist = 0;
    for (const int measure : {1, 2, 3})
        if (random() % 2 == 0) Calculate_Distances(survey, measure);
    survey.chooseDistance(static_cast<int>(random() % 4));
    return survey;
}

// Positions within a row, 1 for its first site, in any order.
std::vector<SiteIndex> somePoints(std::mt19937& random, SiteIndex ofRow, SiteIndex howMany) {
    std::vector<SiteIndex> points(static_cast<std::size_t>(ofRow));
    std::iota(points.begin(), points.end(), 1);
    std::shuffle(points.begin(), points.end(), random);
    points.resize(static_cast<std::size_t>(howMany));
    return points;
}

Survey withoutByRowPlot(Survey survey, int row, const std::vector<SiteIndex>& points) {
    RowSelection selection;
    for (const SiteIndex point : points)
        selection.append(point);
    deleteSelectedSites(survey, row, selection);
    return survey;
}

Survey withoutByMap(Survey survey, int row, const std::vector<SiteIndex>& points) {
    SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites), 0);
    for (const SiteIndex point : points)
        mask[static_cast<std::size_t>(rowSites(survey, row).first + point - 1)] = 1;
    // The map alone shrinks the storage.
    const SiteIndex size = survey.SiteData.capacity();
    const std::size_t siteNumbers = survey.SiteID.size();
    deleteMaskedSites(survey, mask);
    EXPECT_EQ(survey.SiteData.capacity(), survey.NumSites);
    EXPECT_EQ(survey.SiteID.size(), survey.SiteIDPresent ? static_cast<std::size_t>(survey.NumSites) : 0);
    EXPECT_EQ(survey.SourceLine.size(), static_cast<std::size_t>(survey.NumSites));
    survey.SiteData.resize(size);
    survey.SiteID.resize(siteNumbers);
    survey.SourceLine.resize(static_cast<std::size_t>(size));
    return survey;
}

Survey withoutRow(Survey survey, int row) {
    Delete_Row(survey, row);
    return survey;
}

// The map leaves the numbers of the rows as they were until it is closed.
void takeRowsFrom(Survey& survey, const Survey& other) {
    std::copy_n(other.SiteData.column(kRow), survey.NumSites, survey.SiteData.column(kRow));
    survey.NumRows = other.NumRows;
    survey.RowIndex = other.RowIndex;
    survey.NumPoints = other.NumPoints;
}

}  // namespace

TEST(OneWayOut, LeavesTheSameSurveyWhenARowIsDeletedPickedOrMasked) {
    std::mt19937 random(1404);
    for (int round = 0; round < 500; ++round) {
        const Survey survey = anySurvey(random);
        const int row = 1 + static_cast<int>(random() % static_cast<unsigned>(survey.NumRows));
        const SiteIndex sites = rowSites(survey, row).count();
        const auto points = somePoints(random, sites, sites);
        const Survey deleted = withoutRow(survey, row);
        Survey masked = withoutByMap(survey, row, points);
        ASSERT_EQ(differences(deleted, withoutByRowPlot(survey, row, points)), "") << "round " << round;
        EXPECT_EQ(masked.NumRows, survey.NumRows);
        EXPECT_EQ(masked.NumPoints[static_cast<std::size_t>(row)], 0);
        takeRowsFrom(masked, deleted);
        ASSERT_EQ(differences(deleted, masked), "") << "round " << round;
    }
}

TEST(OneWayOut, LeavesTheSameSurveyWhenSitesOfARowArePickedOrMasked) {
    std::mt19937 random(1405);
    for (int round = 0; round < 500; ++round) {
        const Survey survey = anySurvey(random);
        const int row = 1 + static_cast<int>(random() % static_cast<unsigned>(survey.NumRows));
        const SiteIndex sites = rowSites(survey, row).count();
        const auto points = somePoints(random, sites, static_cast<SiteIndex>(random()) % sites);
        ASSERT_EQ(differences(withoutByRowPlot(survey, row, points), withoutByMap(survey, row, points)), "")
            << "round " << round;
    }
}

TEST(OneWayOut, LeavesDistancesAsIfTheSitesHadNeverBeen) {
    std::mt19937 random(1406);
    for (int round = 0; round < 500; ++round) {
        const Survey survey = anySurvey(random);
        const Survey left =
            withoutRow(survey, 1 + static_cast<int>(random() % static_cast<unsigned>(survey.NumRows)));
        Survey anew = left;
        Calculate_Chosen_Distance(anew);
        for (const auto& [before, measure] :
             {std::pair{survey.TrueDist, 1}, {survey.XDist, 2}, {survey.YDist, 3}})
            if (!before.empty()) Calculate_Distances(anew, measure);
        ASSERT_EQ(differences(left, anew), "") << "round " << round;
    }
}

}  // namespace tessel
