// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/em_summary.h"

#include "support/made_survey.h"

namespace tessel {

// Expected values: Python 3, the readings as exact rational numbers (fractions.Fraction), mean, sum of
// squared deviations / (N - 1), and least squares about the means; the square root with decimal at 60 digits;
// each result rounded once to a Double.

namespace {

struct Expected {
    double mean, sd, minimum, maximum;
    SiteIndex notPositive;
};

void expectSummary(const ReadingSummary& summary, SiteIndex sites, const Expected& expected) {
    EXPECT_EQ(summary.sites, sites);
    ASSERT_TRUE(summary.mean && summary.sd && summary.minimum && summary.maximum && summary.notPositive);
    EXPECT_EQ(*summary.mean, expected.mean);
    EXPECT_NEAR(*summary.sd, expected.sd, 1e-14 * expected.sd);
    EXPECT_EQ(*summary.minimum, expected.minimum);
    EXPECT_EQ(*summary.maximum, expected.maximum);
    EXPECT_EQ(*summary.notPositive, expected.notPositive);
}

void expectLine(const EMSummary& summary, double intercept, double slope) {
    ASSERT_TRUE(summary.slope && summary.shift);
    EXPECT_NEAR(*summary.slope, slope, 1e-13 * std::fabs(slope));
    EXPECT_NEAR(*summary.shift, -intercept, 1e-13 * std::fabs(intercept));
    EXPECT_FALSE(summary.error);
}

}  // namespace

TEST(ReadingSummary, OfReadingsThatRepeat) {
    const EMSummary summary = summariseReadings(surveyWithTies());
    expectSummary(summary.em1, 10, {14.7, 4.9899899799498595, 8, 20, 0});
    expectSummary(summary.em2.value(), 10, {33.1, 7.636898730651221, 22, 41, 0});
    expectLine(summary, 10.712182061579652, 1.5229808121374386);
}

TEST(ReadingSummary, OfReadingsAroundZeroCountsZerosAndNegatives) {
    const EMSummary summary = summariseReadings(surveyAroundZero());
    expectSummary(summary.em1, 12, {1.2291666666666667, 5.874113408279869, -7.5, 12.75, 7});
    expectSummary(summary.em2.value(), 12, {0.3958333333333333, 4.859922293305696, -9.75, 8.5, 6});
    expectLine(summary, -0.25662435677530016, 0.5308130360205832);
}

TEST(ReadingSummary, OfReadingsWithALargeOffsetKeepsItsDigits) {
    const EMSummary summary = summariseReadings(surveyWithLargeOffset());
    expectSummary(summary.em1, 10, {1000000002.925, 3.3686668975526013, 1e9, 1e9 + 10, 0});
    expectSummary(summary.em2.value(), 10, {499999997.35, 2.6278423764669667, 5e8 - 8, 5e8, 0});
    expectLine(summary, 990667644.5841136, -0.4906676457989107);
}

// Sums in one pass give a standard deviation of 36.0899 here.
TEST(ReadingSummary, OfAMillionSitesKeepsItsDigits) {
    const Survey survey = surveyOfReadings(
        1000000, [](SiteIndex i) { return 1e6 + static_cast<double>(i * 7919 % 1000) / 8; },
        [](SiteIndex i) { return 2e6 - static_cast<double>(i * 104729 % 1000) / 4; });
    const EMSummary summary = summariseReadings(survey);
    expectSummary(summary.em1, 1000000, {1000062.4375, 36.08439182435161, 1e6, 1e6 + 999.0 / 8, 0});
    EXPECT_NEAR(summary.slope.value(), 0.1978021978021978, 1e-14);
    EXPECT_NEAR(summary.shift.value(), -1802060.576923077, 1e-7);
}

// 0.1 summed plainly a million times is 100000.00000133288.
TEST(ReadingSummary, OfAConstantColumnHasExactlyItsConstantAsMeanAndNoDeviation) {
    for (const SiteIndex sites : {3, 1000000}) {
        const EMSummary summary = summariseReadings(surveyOfReadings(
            sites, [](SiteIndex) { return 0.1; }, [](SiteIndex) { return -7.3; }));
        EXPECT_EQ(summary.em1.mean, 0.1);
        EXPECT_EQ(summary.em1.sd, 0);
        EXPECT_EQ(summary.em2->mean, -7.3);
        EXPECT_EQ(summary.em2->sd, 0);
    }
}

TEST(ReadingSummary, OfNoSitesHasOnlyTheirNumber) {
    const EMSummary summary =
        summariseReadings(surveyOfReadings(std::vector<double>{}, std::vector<double>{}));
    EXPECT_EQ(summary.em1.sites, 0);
    EXPECT_FALSE(summary.em1.mean || summary.em1.sd || summary.em1.minimum || summary.em1.maximum ||
                 summary.em1.notPositive);
    EXPECT_TRUE(summary.error);
}

TEST(ReadingSummary, OfReadingsWhoseSquaresOverflowKeepsTheMean) {
    const EMSummary summary = summariseReadings(surveyOfReadings({1e200, 3e200}, {1, 2}));
    EXPECT_EQ(summary.em1.mean, 2e200);
    EXPECT_FALSE(summary.em1.sd);
    EXPECT_EQ(summary.em2->mean, 1.5);
    EXPECT_EQ(summary.error.value().number(), RunTimeError::kOverflow);
}

}  // namespace tessel
