// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_statistics.h"

#include "support/made_survey.h"

namespace tessel {

TEST(RowStatistics, SumUpEachRun) {
    const Survey survey = surveyWithRows({{0, 0, 10, 1, 1},
                                          {9, 9, 20, 2, 1},
                                          {3, 4, 60, 6, 1},
                                          {1, 1, 5, 50, 2},
                                          {1, 8, 7, 70, 2},
                                          {4, 5, 6, 7, 1}});
    const RowStatistics statistics = rowStatistics(survey);
    std::vector<std::array<double, 4>> rows;
    for (const RowSummary& row : statistics.rows)
        rows.push_back({static_cast<double>(row.sites), row.length, row.em1Mean, row.em2Mean});
    // The length is that from the first to the last site, however the way went; the third is of the number of
    // the first.
    EXPECT_EQ(rows, (decltype(rows){{3, 5, 30, 3}, {2, 7, 6, 60}, {1, 0, 6, 7}}));
    EXPECT_EQ(statistics.longest, 7);
    EXPECT_TRUE(statistics.twoEMColumns);
}

TEST(RowStatistics, OneReadingHasNoSecondMean) {
    Survey survey = surveyWithRows({{0, 0, 1, 1e308, 1}, {0, 0, 3, 1e308, 1}});
    survey.TwoEMColumns = false;
    const RowStatistics statistics = rowStatistics(survey);
    EXPECT_FALSE(statistics.twoEMColumns);
    EXPECT_EQ(statistics.rows[0].em1Mean, 2);
    EXPECT_EQ(statistics.rows[0].em2Mean, 0);
}

TEST(RowStatistics, RelativeLengthsAreOfTheLongestAndZeroWhenAllRowsHaveNone) {
    const RowStatistics statistics =
        rowStatistics(surveyWithRows({{0, 0, 0, 0, 1}, {8, 0, 0, 0, 1}, {0, 0, 0, 0, 2}, {2, 0, 0, 0, 2}}));
    EXPECT_EQ(statistics.relativeLength(statistics.rows[0]), 100);
    EXPECT_EQ(statistics.relativeLength(statistics.rows[1]), 25);
    const RowStatistics none = rowStatistics(surveyWithRows({{1, 1, 0, 0, 1}, {2, 2, 0, 0, 2}}));
    EXPECT_EQ(none.relativeLength(none.rows[0]) + none.relativeLength(none.rows[1]), 0);
}

TEST(RowStatistics, KeepTheDigitsOfReadingsWithALargeOffset) {
    // Binary fractions, so that the mean is exact: the offset, and 0.125 times the mean of 0..1023.
    constexpr double kOffset = 1e12;
    std::vector<MadeSite> sites;
    for (int i = 0; i < 100 * 1024; ++i)
        sites.push_back({0, 0, kOffset + i % 1024 * 0.125, 0.1, 1});
    const RowStatistics statistics = rowStatistics(surveyWithRows(sites));
    EXPECT_EQ(statistics.rows[0].em1Mean, kOffset + 511.5 * 0.125);
    EXPECT_EQ(statistics.rows[0].em2Mean, 0.1);
}

TEST(RowStatistics, MeansAreTheSumDividedByTheCount) {
    const RowStatistics statistics =
        rowStatistics(surveyWithRows({{0, 0, 5.63, 39.54, 1}, {0, 0, 39.54, 5.63, 1}}));
    EXPECT_EQ(statistics.rows[0].em1Mean, 22.585);
    EXPECT_EQ(statistics.rows[0].em2Mean, 22.585);
}

TEST(RowStatistics, OfNumbersThatAreNoPlaceOnEarthAreNumbersToo) {
    const double most = std::numeric_limits<double>::max();
    const RowStatistics statistics = rowStatistics(surveyWithRows({{0, 0, 1.5e308, -1e308, 1},
                                                                   {3e200, 4e200, 1.1e308, -1.4e308, 1},
                                                                   {-most, 0, most, 0, 2},
                                                                   {most, 0, most, 0, 2},
                                                                   {0, 0, 7, 0, 3}}));
    EXPECT_DOUBLE_EQ(statistics.rows[0].length, 5e200);
    EXPECT_DOUBLE_EQ(statistics.rows[0].em1Mean, 1.3e308);
    EXPECT_DOUBLE_EQ(statistics.rows[0].em2Mean, -1.2e308);
    EXPECT_EQ(statistics.rows[1].length, most);
    EXPECT_EQ(statistics.rows[1].em1Mean, most);
    EXPECT_EQ(statistics.rows[2].em1Mean, 7);
    EXPECT_EQ(statistics.longest, most);
    EXPECT_EQ(statistics.relativeLength(statistics.rows[1]), 100);
}

TEST(RowStatistics, AgreeWithPlainSumsOnRandomSurveys) {
    std::mt19937 random(8);
    for (int round = 0; round < 50; ++round) {
        const Survey survey = randomRows(random, 1 + round * 4, 30);
        const RowStatistics statistics = rowStatistics(survey);
        ASSERT_EQ(statistics.rows.size(), static_cast<std::size_t>(survey.NumRows));
        SiteIndex site = 0;
        for (const RowSummary& row : statistics.rows) {
            long double sum1 = 0;
            long double sum2 = 0;
            for (SiteIndex i = site; i < site + row.sites; ++i) {
                sum1 += survey.SiteData(kEM1, i);
                sum2 += survey.SiteData(kEM2, i);
            }
            const auto count = static_cast<long double>(row.sites);
            ASSERT_NEAR(row.em1Mean, static_cast<double>(sum1 / count), 1e-13);
            ASSERT_NEAR(row.em2Mean, static_cast<double>(sum2 / count), 1e-13);
            site += row.sites;
            ASSERT_EQ(row.sites, survey.NumPoints[static_cast<std::size_t>(survey.SiteData(kRow, site - 1))]);
        }
        ASSERT_EQ(site, survey.NumSites);
    }
}

}  // namespace tessel
