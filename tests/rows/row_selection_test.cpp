// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_selection.h"

#include "rows/row_detection.h"
#include "rows/row_sites.h"
#include "support/made_survey.h"
#include "support/plain_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

std::vector<SiteIndex> selected(const RowSelection& selection) {
    return {selection.SelPoints.begin(), selection.SelPoints.begin() + selection.SelCount};
}

RowSelection selectionOf(const std::vector<SiteIndex>& points) {
    RowSelection selection;
    for (const SiteIndex point : points)
        selection.append(point);
    return selection;
}

using Random = std::mt19937;

int upTo(Random& random, int most) {
    return std::uniform_int_distribution<int>(1, most)(random);
}

// Few different coordinates, so that many sites share one.
Survey randomSurvey(Random& random) {
    std::vector<MadeSite> sites;
    const int rows = upTo(random, 5);
    for (int row = 1; row <= rows; ++row)
        for (int left = upTo(random, 8); left > 0; --left)
            sites.push_back({double(upTo(random, 6)), double(upTo(random, 6)), double(upTo(random, 999)),
                             double(upTo(random, 999)), double(row)});
    Survey survey = madeSurvey(sites);
    survey.SiteIDPresent = upTo(random, 2) == 1;
    survey.TwoEMColumns = upTo(random, 2) == 1;
    survey.chooseDistance(upTo(random, 3));
    Calculate_Chosen_Distance(survey);
    return survey;
}

// Picked as a user does: at random, with points picked again and equal coordinates taken for one.
RowSelection randomSelection(Random& random, const Survey& survey, int row) {
    const IndexRange sites = rowSites(survey, row);
    const auto along = columnOf(survey, alongColumn(upTo(random, 2) == 1), sites);
    RowSelection selection;
    for (int picks = upTo(random, 12); picks > 0; --picks)
        selection.toggle(upTo(random, static_cast<int>(sites.count())), along);
    return selection;
}

}  // namespace

TEST(RowSelection, KeepsTheOrderOfSelectionAndLosesAPointThatIsPickedAgain) {
    const std::vector<double> along{10, 20, 30, 40};
    RowSelection selection;
    for (const SiteIndex point : {3, 1, 4})
        EXPECT_EQ(selection.toggle(point, along), -1);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{3, 1, 4}));
    EXPECT_EQ(selection.toggle(1, along), 1);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{3, 4}));
    EXPECT_EQ(selection.toggle(3, along), 0);
    EXPECT_EQ(selection.toggle(4, along), 0);
    EXPECT_EQ(selection.SelCount, 0);
}

TEST(RowSelection, TakesSitesAtTheSameCoordinateForOne) {
    const std::vector<double> along{10, 20, 20, 40};
    RowSelection selection;
    selection.toggle(2, along);
    selection.toggle(4, along);
    EXPECT_EQ(selection.toggle(3, along), 0);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{4}));
    EXPECT_EQ(selection.toggle(3, along), -1);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{4, 3}));
}

TEST(RowSelection, Holds101PointsAndNoMore) {
    std::vector<double> along(150);
    std::iota(along.begin(), along.end(), 0.0);
    RowSelection selection;
    for (SiteIndex point = 1; point <= 101; ++point)
        selection.toggle(point, along);
    const auto before = selected(selection);
    EXPECT_EQ(before.size(), 101u);
    const auto oneMore = [&] { selection.toggle(102, along); };
    EXPECT_EQ(errorNumberOf(oneMore), RunTimeError::kSubscript);
    EXPECT_EQ(selected(selection), before);
    EXPECT_EQ(selection.toggle(50, along), 49);
    EXPECT_EQ(selection.toggle(102, along), -1);
    EXPECT_EQ(selection.SelCount, 101);
}

TEST(RowSelection, TakesManyPointsAtOnceEachForItself) {
    const std::vector<double> along{10, 20, 20, 40, 50};
    RowSelection selection = selectionOf({4, 2});
    EXPECT_EQ(selection.select(std::vector<SiteIndex>{1, 2, 3, 4}), 0);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{4, 2, 1, 3}));
    EXPECT_EQ(selection.toggle(3, along), 1) << "a pick takes the first of them";
    selection.deselect(std::vector<SiteIndex>{1, 2, 4, 5});
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{3}));
}

TEST(RowSelection, TakesNoMoreAtOnceThanItHoldsAndSaysHowManyAreLeft) {
    std::vector<SiteIndex> points(150);
    std::iota(points.begin(), points.end(), SiteIndex{1});
    RowSelection selection = selectionOf({120, 3});
    EXPECT_EQ(selection.select(points), 49);
    EXPECT_EQ(selection.SelCount, 101);
    EXPECT_EQ(selected(selection).front(), 120);
    EXPECT_EQ(selected(selection).back(), 100);
    EXPECT_EQ(selection.select(std::vector<SiteIndex>{120, 50}), 0) << "they are selected";
}

TEST(RowDeletion, EndsAsDeletingByThePlainRulesDoes) {
    Random random(20240607);
    for (int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round) {
        Survey survey = randomSurvey(random);
        PlainSurvey expected = plainSurveyOf(survey);
        while (survey.NumSites > 0 && !testing::Test::HasFailure()) {
            const int row = upTo(random, survey.NumRows);
            RowSelection selection = randomSelection(random, survey, row);
            const SiteIndex points = selection.SelCount;
            const int rows = survey.NumRows;
            deletePlainPoints(expected, row, selected(selection));
            const RemovedSites removed = deleteSelectedSites(survey, row, selection);
            expectAsPlain(survey, expected);
            EXPECT_EQ(removed.sites, points);
            EXPECT_EQ(removed.rows, rows - expected.rows);
            EXPECT_EQ(selection.SelCount, 0);
        }
    }
}

}  // namespace tessel
