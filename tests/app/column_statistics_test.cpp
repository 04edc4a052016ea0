// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/column_statistics.h"

#include "support/made_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

int errorOfMeanSD(const std::vector<double>& em1) {
    return errorNumberOf([&] { Column_MeanSD(surveyOfReadings(em1), kEM1); });
}

}  // namespace

TEST(ColumnMinMax, FindsSmallestLargestAndCountOfReadingsNotAboveZero) {
    const ColumnMinMax result = Column_MinMax(surveyOfReadings({3, -2.5, 0, 8, -0.0, 7}), kEM1);
    EXPECT_EQ(result.minimum, -2.5);
    EXPECT_EQ(result.maximum, 8);
    EXPECT_EQ(result.notPositive, 3);
}

TEST(ColumnMinMax, LooksAtTheFirstSiteToo) {
    EXPECT_EQ(Column_MinMax(surveyOfReadings({0}), kEM1).notPositive, 1);
    EXPECT_EQ(Column_MinMax(surveyOfReadings({-4, 1}), kEM1).notPositive, 1);
    EXPECT_EQ(Column_MinMax(surveyOfReadings({4, 1}), kEM1).notPositive, 0);
    const ColumnMinMax negative = Column_MinMax(surveyOfReadings({-5, -3, -9}), kEM1);
    EXPECT_EQ(negative.maximum, -3);
    EXPECT_EQ(negative.minimum, -9);
}

TEST(ColumnMinMax, FindsThemWhereverTheyStand) {
    for (std::size_t sites = 2; sites < 12; ++sites)
        for (std::size_t at = 0; at < sites; ++at) {
            SCOPED_TRACE(testing::Message() << at << " of " << sites);
            std::vector<double> column(sites, 1);
            column[at] = 5;
            EXPECT_EQ(minMaxOf(column).maximum, 5);
            EXPECT_EQ(minMaxOf(column).minimum, 1);
            column[at] = -5;
            EXPECT_EQ(minMaxOf(column).minimum, -5);
            EXPECT_EQ(minMaxOf(column).maximum, 1);
            EXPECT_EQ(minMaxOf(column).notPositive, 1);
        }
}

TEST(ColumnMinMax, OfZerosOfBothSignsTheFirstOneCounts) {
    EXPECT_FALSE(std::signbit(minMaxOf(std::vector{7.0, 3.0, 0.0, 2.0, 1.0, -0.0}).minimum));
    EXPECT_TRUE(std::signbit(minMaxOf(std::vector{7.0, 3.0, 8.0, -0.0, 1.0, 0.0, 9.0, 9.0}).minimum));
    EXPECT_TRUE(std::signbit(minMaxOf(std::vector{-7.0, -0.0, 0.0, -2.0, 0.0}).maximum));
    EXPECT_FALSE(std::signbit(minMaxOf(std::vector{-7.0, -3.0, 0.0, -2.0, -0.0}).maximum));
}

TEST(ColumnMinMax, NeverReadsBeyondTheLastSite) {
    Survey survey = surveyOfReadings({5, 6});
    survey.SiteData(kEM1, 2) = 1000;
    EXPECT_EQ(Column_MinMax(survey, kEM1).maximum, 6);
    EXPECT_EQ(Column_Mean(survey, kEM1), 5.5);
}

TEST(ColumnNumbers, OutsideZeroToThreeAreClamped) {
    const Survey survey = surveyOfReadings({5, 6}, {7, 9});  // at X = 0 and 1
    EXPECT_EQ(Column_MinMax(survey, -3).maximum, 1);
    EXPECT_EQ(Column_MinMax(survey, 4).maximum, 9);
    EXPECT_EQ(Column_MinMax(survey, 100).minimum, 7);
    EXPECT_EQ(Column_MeanSD(survey, kRow).mean, 8);
    EXPECT_EQ(Column_MeanSD(survey, -1).mean, 0.5);
}

TEST(ColumnMeanSD, HasDivisorOneLessThanTheSites) {
    const ColumnMeanSD result = Column_MeanSD(surveyOfReadings({2, 4, 4, 4, 5, 5, 7, 9}), kEM1);
    EXPECT_EQ(result.mean, 5);
    EXPECT_DOUBLE_EQ(result.sd, std::sqrt(32.0 / 7));
}

TEST(ColumnMeanSD, OfAConstantColumnIsThatConstantAndZero) {
    const ColumnMeanSD result = Column_MeanSD(surveyOfReadings(std::vector<double>(1001, 0.1)), kEM1);
    EXPECT_EQ(result.mean, 0.1);
    EXPECT_EQ(result.sd, 0);
}

// 1, 2, ..., 1000 on an offset of 2^30: mean 2^30 + 500.5, sum of squares n (n^2 - 1) / 12.
TEST(ColumnMeanSD, KeepsItsDigitsAtALargeOffset) {
    constexpr double kOffset = 1073741824;
    std::vector<double> values;
    for (int i = 1; i <= 1000; ++i)
        values.push_back(kOffset + i);
    const ColumnMeanSD result = Column_MeanSD(surveyOfReadings(values), kEM1);
    EXPECT_EQ(result.mean, kOffset + 500.5);
    EXPECT_DOUBLE_EQ(result.sd, std::sqrt(1000.0 * (1000.0 * 1000.0 - 1) / 12 / 999));
}

TEST(ColumnMeanSD, NeedsTwoSitesAndReportsWhatIsTooLargeForADouble) {
    EXPECT_EQ(errorOfMeanSD({1}), RunTimeError::kDivisionByZero);
    EXPECT_EQ(errorOfMeanSD({}), RunTimeError::kDivisionByZero);
    EXPECT_EQ(Column_Mean(surveyOfReadings({6}), kEM1), 6);
    EXPECT_EQ(errorOfMeanSD({-1.7e308, 1.7e308, 1.7e308}), RunTimeError::kOverflow);
    EXPECT_EQ(errorOfMeanSD({0, 1e200}), RunTimeError::kOverflow);
}

TEST(ColumnMeanSD, AgreesWithPlainSumsOfMoreDigits) {
    std::mt19937 random(3);
    std::normal_distribution<double> reading(60, 15);
    for (const int sites : {2, 3, 4, 5, 8, 1000, 9999}) {
        std::vector<double> values(static_cast<std::size_t>(sites));
        for (double& value : values)
            value = reading(random);
        long double sum = 0;
        long double squares = 0;
        for (const double value : values)
            sum += value;
        const long double mean = sum / sites;
        for (const double value : values)
            squares += (value - mean) * (value - mean);
        const ColumnMeanSD result = Column_MeanSD(surveyOfReadings(values), kEM1);
        EXPECT_DOUBLE_EQ(result.mean, static_cast<double>(mean)) << sites;
        EXPECT_DOUBLE_EQ(result.sd, static_cast<double>(std::sqrt(squares / (sites - 1)))) << sites;
    }
}

// The second worked out by hand: x = 10, 20, 30, y = 12, 18, 33: Sxx = 200, Sxy = 210, means 20 and 21.
TEST(Regression, IsTheLeastSquaresLine) {
    const Regression exact = EM_Regression(surveyOfReadings({10, 20, 35, 80}, {25, 45, 75, 165}));
    EXPECT_DOUBLE_EQ(exact.slope, 2);
    EXPECT_NEAR(exact.intercept, 5, 1e-12);
    const Regression line = EM_Regression(surveyOfReadings({10, 20, 30}, {12, 18, 33}));
    EXPECT_DOUBLE_EQ(line.slope, 1.05);
    EXPECT_NEAR(line.intercept, 0, 1e-12);
}

TEST(Regression, AgreesWithTheTextbookFormula) {
    std::mt19937 random(12);
    std::uniform_real_distribution<double> reading(0, 120);
    std::vector<double> em1(500);
    std::vector<double> em2(500);
    long double sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (std::size_t i = 0; i < em1.size(); ++i) {
        em1[i] = reading(random);
        em2[i] = 0.7 * em1[i] + reading(random) / 10;
        const long double x = em1[i] / 100.0L;
        const long double y = em2[i] / 100.0L;
        sx += x;
        sy += y;
        sxx += x * x;
        sxy += x * y;
    }
    const long double d = 500 * sxx - sx * sx;
    const Regression line = EM_Regression(surveyOfReadings(em1, em2));
    EXPECT_NEAR(line.intercept, static_cast<double>((sy * sxx - sx * sxy) / d * 100), 1e-11);
    EXPECT_NEAR(line.slope, static_cast<double>((500 * sxy - sy * sx) / d), 1e-13);
}

// Exact in whole numbers: y = 3 x - 7 at x = 2^26 + 0..999, where the plain sums have lost every digit.
TEST(Regression, KeepsItsDigitsAtALargeOffset) {
    std::vector<double> em1;
    std::vector<double> em2;
    for (int i = 0; i < 1000; ++i) {
        em1.push_back(67108864.0 + i);
        em2.push_back(3 * em1.back() - 7);
    }
    const Regression line = EM_Regression(surveyOfReadings(em1, em2));
    EXPECT_NEAR(line.slope, 3, 1e-12);
    EXPECT_NEAR(line.intercept, -7, 1e-4);
}

TEST(Regression, OnAConstantColumnIsADivisionByZero) {
    for (const Survey& survey : {surveyOfReadings({0.1, 0.1, 0.1}, {1, 2, 3}), surveyOfReadings({}, {})})
        EXPECT_EQ(errorNumberOf([&] { EM_Regression(survey); }), RunTimeError::kDivisionByZero);
}

}  // namespace tessel
