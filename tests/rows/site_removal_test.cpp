// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/site_removal.h"

#include "rows/row_detection.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

using Marks = std::vector<std::uint8_t>;

constexpr double kLargest = std::numeric_limits<double>::max();

Survey numberedSites(SiteIndex count) {
    std::vector<MadeSite> sites;
    for (SiteIndex i = 0; i < count; ++i)
        sites.push_back(
            {double(i), double(i) + 0.25, double(i) + 0.5, double(i) + 0.75, 1, double(i) + 1001});
    return surveyWithRows(sites);
}

RemovedSites removeMarked(Survey& survey, const Marks& marks, EmptiedRows emptied = EmptiedRows::kLeaveGaps) {
    return removeSites(survey, markedRuns(marks), emptied);
}

Marks someMarks(std::mt19937& random, SiteIndex count, double share) {
    Marks marks(static_cast<std::size_t>(count));
    std::bernoulli_distribution marked(share);
    for (auto& mark : marks)
        mark = marked(random) ? 1 : 0;
    return marks;
}

void expectRemoved(SiteIndex count, const Marks& marks) {
    Survey survey = numberedSites(count);
    std::vector<MadeSite> expected;
    for (const MadeSite& site : sitesIn(survey))
        if (marks[static_cast<std::size_t>(site.x)] == 0) expected.push_back(site);
    const RemovedSites removed = removeMarked(survey, marks);
    EXPECT_EQ(removed.sites, count - static_cast<SiteIndex>(expected.size()));
    EXPECT_EQ(removed.difference.removed(), markedRuns(marks));
    std::vector<std::uint32_t> lines;
    for (const MadeSite& site : expected)
        lines.push_back(sourceLine(2 * static_cast<SiteIndex>(site.x) + 1));
    EXPECT_EQ(linesIn(survey), lines);
    ASSERT_TRUE(sitesIn(survey) == expected) << "of " << count << " sites";
}

Survey rowsOfOneSite(int rows) {
    std::vector<MadeSite> sites;
    for (int row = 1; row <= rows; ++row)
        sites.push_back({double(row), 0, 0, 0, double(row), 0});
    return surveyWithRows(sites);
}

// Coarse coordinates, so that distances repeat and the largest occurs more than once.
Survey coarseSurvey(std::mt19937& random, int measure) {
    std::uniform_int_distribution<int> coordinate(-5, 5);
    std::vector<MadeSite> sites(1 + random() % 12);
    for (MadeSite& site : sites)
        site = {double(coordinate(random)), double(coordinate(random))};
    Survey survey = surveyWithRows(sites);
    for (const int each : {1, 2, 3})
        Calculate_Distances(survey, each);
    survey.chooseDistance(measure);
    return survey;
}

}  // namespace

TEST(MarkedRuns, AreThoseOfTheMarks) {
    EXPECT_EQ(markedRuns(Marks{1, 1, 0, 0, 1, 0, 1}), (std::vector<IndexRange>{{0, 2}, {4, 5}, {6, 7}}));
    EXPECT_EQ(markedRuns(Marks{0, 1, 0}), (std::vector<IndexRange>{{1, 2}}));
    EXPECT_TRUE(markedRuns(Marks{0, 0}).empty());
    EXPECT_TRUE(markedRuns({}).empty());
}

TEST(SiteRemoval, KeepsTheOthersInOrderHoweverManyGo) {
    std::mt19937 random(7);
    for (const double share : {0.0, 0.003, 0.02, 0.5, 0.98, 1.0})
        for (const SiteIndex count : {1, 2, 64, 129, 1000})
            expectRemoved(count, someMarks(random, count, share));
}

TEST(SiteRemoval, KeepsTheSizeOfTheStorageWithZerosInWhatBecomesFree) {
    Survey survey = numberedSites(20);
    const SiteIndex before = survey.SiteData.capacity();
    removeSites(survey, {{3, 9}}, EmptiedRows::kCloseUp);
    ASSERT_EQ(survey.SiteData.capacity(), before);
    ASSERT_EQ(survey.SiteID.size(), static_cast<std::size_t>(before));
    ASSERT_EQ(survey.SourceLine.size(), static_cast<std::size_t>(before));
    EXPECT_EQ(survey.SiteData(kX, 13), 19);
    for (SiteIndex site = 14; site < before; ++site) {
        EXPECT_EQ(survey.SiteID[static_cast<std::size_t>(site)], 0);
        EXPECT_EQ(survey.SourceLine[static_cast<std::size_t>(site)], 0U);
        for (int column = 0; column < kSiteColumns; ++column)
            EXPECT_EQ(survey.SiteData(column, site), 0);
    }
}

TEST(SiteRemoval, WithoutSiteNumbersOrLinesTouchesNone) {
    Survey survey = numberedSites(3);
    survey.SiteIDPresent = false;
    survey.SiteID.clear();
    survey.SourceLine.clear();
    removeMarked(survey, {1, 0, 0});
    EXPECT_EQ(survey.SiteData(kX, 0), 1);
    EXPECT_TRUE(survey.SiteID.empty());
    EXPECT_TRUE(survey.SourceLine.empty());
}

TEST(SiteRemoval, FromAnEmptySurveyRemovesNone) {
    Survey survey;
    EXPECT_EQ(removeMarked(survey, {}).sites, 0);
    EXPECT_EQ(differences(survey, Survey{}), "");
}

TEST(SiteRemoval, ClosesUpAllRowsThatItEmpties) {
    Survey survey = rowsOfOneSite(6);
    EXPECT_EQ(removeMarked(survey, {1, 0, 1, 1, 0, 0}, EmptiedRows::kCloseUp).rows, 3);
    for (const int row : {1, 2, 3}) {
        EXPECT_EQ(survey.SiteData(kRow, row - 1), row);
        EXPECT_EQ(survey.NumPoints[static_cast<std::size_t>(row)], 1);
    }
    EXPECT_EQ(std::accumulate(survey.NumPoints.begin(), survey.NumPoints.end(), 0), 3);
    EXPECT_EQ(survey.NumRows, 3);
    EXPECT_EQ(survey.RowIndex, 3);
}

TEST(SiteRemoval, LeavesNumbersAloneWhereRowsLeaveGapsAndCountsByThem) {
    Survey survey = rowsOfOneSite(4);
    survey.SiteData(kRow, 2) = kMaxRows;
    survey.SiteData(kRow, 3) = kMaxRows + 1;
    survey.NumPoints.fill(9);
    EXPECT_EQ(removeMarked(survey, {0, 1, 0, 0}).rows, 1);
    EXPECT_EQ(survey.SiteData(kRow, 1), kMaxRows);
    EXPECT_EQ(survey.SiteData(kRow, 2), kMaxRows + 1);
    EXPECT_EQ(survey.NumRows, 4);
    EXPECT_EQ(survey.RowIndex, 4);
    Survey expected = survey;
    expected.NumPoints.fill(0);
    expected.NumPoints[1] = expected.NumPoints[kMaxRows] = 1;
    Calculate_Distance(expected);
    EXPECT_EQ(differences(survey, expected), "");
}

TEST(DistancesAfterRemoval, AreThoseThatACalculationOfAllGives) {
    std::mt19937 random(11);
    for (int run = 0; run < 3000; ++run) {
        Survey survey = coarseSurvey(random, 1 + run % 3);
        removeMarked(survey, someMarks(random, survey.NumSites, 0.33));
        Survey expected = survey;
        for (const int each : {1, 2, 3})
            Calculate_Distances(expected, each);
        ASSERT_EQ(differences(survey, expected), "") << "run " << run;
    }
}

TEST(DistancesAfterRemoval, AreCalculatedWhereThereWereNoneInForceAndForgottenWhereOutOfStep) {
    Survey survey = surveyWithRows({{0, 0}, {3, 4}, {6, 8}});
    survey.TrueDist.clear();
    survey.XDist = {0, 7};
    survey.MaxXDist = 7;
    removeMarked(survey, {0, 1, 0});
    EXPECT_EQ(survey.TrueDist, (std::vector<double>{0, 10, 0}));
    EXPECT_EQ(survey.MaxTrueDist, 10);
    EXPECT_TRUE(survey.XDist.empty());
    EXPECT_EQ(survey.MaxXDist, 0);
}

TEST(DistancesAfterRemoval, AcrossAGapTooLongForADoubleAreTheLargestDouble) {
    Survey survey = surveyWithRows({{-1e308, 0}, {0, 0}, {1e308, 0}});
    survey.chooseDistance(2);
    Calculate_X_Distance(survey);
    removeMarked(survey, {0, 1, 0});
    EXPECT_EQ(survey.XDist, (std::vector<double>{0, kLargest, 0}));
    EXPECT_EQ(survey.MaxXDist, kLargest);
}

}  // namespace tessel
