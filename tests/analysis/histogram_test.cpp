// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/histogram.h"

#include "support/made_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

// Bins and mean marks: Python 3, the readings as exact rational numbers (fractions.Fraction), its round()
// taking halves to the even neighbour.

namespace {

using Bins = std::map<int, std::int64_t>;

// The bins that are not empty, numbered from 1.
Bins binsOf(const Survey& survey, SiteColumn column) {
    const BinCounts counts = countBins(survey, column, histogramStatistics(survey, column));
    Bins bins;
    for (std::size_t i = 0; i < counts.size(); ++i)
        if (counts[i] != 0) bins[static_cast<int>(i) + 1] = counts[i];
    return bins;
}

int markOf(const Survey& survey, SiteColumn column) {
    return meanMark(histogramStatistics(survey, column));
}

}  // namespace

TEST(Histogram, BinsOfReadingsThatRepeatLieAroundZeroOrHaveALargeOffset) {
    const std::tuple<Survey, SiteColumn, Bins, int> cases[] = {
        {surveyWithTies(), kEM1, {{1, 2}, {18, 3}, {30, 1}, {50, 4}}, 28},
        {surveyWithTies(), kEM2, {{1, 2}, {22, 3}, {30, 1}, {50, 4}}, 29},
        {surveyAroundZero(),
         kEM1,
         {{1, 2}, {16, 1}, {18, 1}, {20, 3}, {24, 1}, {28, 1}, {29, 1}, {43, 1}, {50, 1}},
         22},
        {surveyAroundZero(),
         kEM2,
         {{1, 1}, {11, 1}, {22, 1}, {28, 4}, {32, 1}, {36, 1}, {39, 1}, {41, 1}, {50, 1}},
         28},
        {surveyWithLargeOffset(),
         kEM1,
         {{1, 1}, {2, 1}, {3, 1}, {5, 1}, {6, 1}, {11, 1}, {16, 1}, {23, 1}, {37, 1}, {50, 1}},
         15},
        {surveyWithLargeOffset(),
         kEM2,
         {{1, 1}, {13, 1}, {26, 1}, {32, 1}, {39, 1}, {43, 1}, {45, 1}, {46, 1}, {48, 1}, {50, 1}},
         33}};
    for (const auto& [survey, column, bins, mark] : cases) {
        EXPECT_EQ(binsOf(survey, column), bins) << mark;
        EXPECT_EQ(markOf(survey, column), mark);
    }
}

// Readings 0 to 100, so that t * 50 is half the reading: every odd one is a tie. 1 goes to 0, 3 and 5 to 2, 7
// and 9 to 4, ..., 99 to 50: from bin 1 on 2, 1, 3, 1, 3, 1, ... and 98, 99 and 100 in bin 50.
TEST(Histogram, HalvesGoToTheEvenNeighbour) {
    std::vector<double> readings(101);
    std::iota(readings.begin(), readings.end(), 0.0);
    const Survey survey = surveyOfReadings(readings);
    Bins expected{{1, 2}, {50, 3}};
    for (int bin = 2; bin < 50; ++bin)
        expected[bin] = bin % 2 == 0 ? 1 : 3;
    EXPECT_EQ(binsOf(survey, kEM1), expected);
    EXPECT_EQ(markOf(survey, kEM1), 25);
}

// Width 2 a bin: the first takes up to 1 (and the tie 1 itself), the last from 97 on.
TEST(Histogram, FirstBinIsHalfAsWideAndLastOneAndAHalfTimes) {
    EXPECT_EQ(binsOf(surveyOfReadings({0, 0.99, 1, 1.01, 2.99, 96.99, 97.01, 98.5, 99.5, 100}), kEM1),
              (Bins{{1, 3}, {2, 2}, {49, 1}, {50, 4}}));
}

TEST(Histogram, SmallestReadingIsInBin1AndLargestInBin50WhateverTheirSize) {
    for (const double scale : {1e-300, 1e-3, 1.0, 1e12, 1e150})
        EXPECT_EQ(binsOf(surveyOfReadings({-0.3 * scale, 0.7 * scale}), kEM1), (Bins{{1, 1}, {50, 1}}))
            << scale;
}

TEST(Histogram, ColumnsAboveEM2AreEM2) {
    const Survey survey = surveyWithTies();
    const HistogramStatistics statistics = histogramStatistics(survey, 9);
    EXPECT_EQ(statistics, histogramStatistics(survey, kEM2));
    EXPECT_EQ(countBins(survey, 9, statistics), countBins(survey, kEM2, statistics));
}

TEST(Histogram, FullestBarEndsATenthFromTheTopAndAnEmptyOneIsNoBar) {
    BinCounts counts{};
    counts[0] = 3;
    counts[7] = 12;
    counts[30] = 12;
    counts[49] = 6;
    const BarTops tops = barTops(counts);
    EXPECT_DOUBLE_EQ(tops[0], 0.775);
    EXPECT_DOUBLE_EQ(tops[7], 0.1);
    EXPECT_DOUBLE_EQ(tops[30], 0.1);
    EXPECT_DOUBLE_EQ(tops[49], 0.55);
    EXPECT_EQ(tops[1], 1);
    EXPECT_EQ(tops[48], 1);
}

TEST(Histogram, MeanMarkRoundsHalvesToEvenAndMayReachFifty) {
    for (const auto& [mean, mark] : {std::pair(25.0, 12), {27, 14}, {99.9, 50}, {0.2, 0}})
        EXPECT_EQ(meanMark({mean, 0, 0, 100}), mark) << mean;
}

TEST(Histogram, EqualReadingsOrOneSiteDivideByZero) {
    const Survey survey = surveyOfReadings({5, 5, 5});
    const HistogramStatistics statistics = histogramStatistics(survey, kEM1);
    EXPECT_EQ(errorNumberOf([&] { countBins(survey, kEM1, statistics); }), 11);
    EXPECT_EQ(errorNumberOf([&] { meanMark(statistics); }), 11);
    EXPECT_EQ(errorNumberOf([] { histogramStatistics(surveyOfReadings({5}), kEM1); }), 11);
}

TEST(Histogram, ARangeTooLargeForADoubleIsDividedAsAnyOther) {
    const HistogramStatistics statistics{0, 1, -1.5e308, 1.5e308};
    BinCounts expected{};
    expected[0] = expected[13] = expected[49] = 1;
    const Survey survey = surveyOfReadings({-1.5e308, -0.72e308, 1.5e308});
    EXPECT_EQ(countBins(survey, kEM1, statistics), expected);
    EXPECT_EQ(meanMark(statistics), 25);
    EXPECT_EQ(meanMark({1e308, 1, 0, 1.5e308}), 33);
}

TEST(BinInterval, HoldsTheReadingsThatAreCountedInIt) {
    const Survey survey = surveyOfReadings(
        5000, [](SiteIndex i) { return 10 + 0.02 * static_cast<double>(i); }, [](SiteIndex) { return 0.0; });
    const HistogramStatistics statistics = histogramStatistics(survey, kEM1);
    const BinCounts counts = countBins(survey, kEM1, statistics);
    for (int bin = 1; bin <= kHistogramBins; ++bin) {
        const Interval readings = binInterval(bin, statistics);
        std::int64_t within = 0;
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            within += readings.contains(survey.SiteData(kEM1, i));
        EXPECT_NEAR(static_cast<double>(within),
                    static_cast<double>(counts[static_cast<std::size_t>(bin - 1)]), 1)
            << bin;
    }
    EXPECT_EQ(binInterval(1, statistics).from, statistics[kHistMinimum]);
    EXPECT_EQ(binInterval(kHistogramBins, statistics).to, statistics[kHistMaximum]);
}

}  // namespace tessel
