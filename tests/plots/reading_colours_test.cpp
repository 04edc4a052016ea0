// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/reading_colours.h"

#include "support/made_survey.h"

namespace tessel {

namespace {

// 0 to 100, shuffled.
std::vector<double> hundredAndOneReadings() {
    std::vector<double> readings(101);
    std::iota(readings.begin(), readings.end(), 0);
    std::shuffle(readings.begin(), readings.end(), std::mt19937(3));
    return readings;
}

}  // namespace

TEST(ReadingRange, ReachesFromThe2ndToThe98thPercentile) {
    EXPECT_EQ(readingRange(surveyOfReadings(hundredAndOneReadings()), kEM1), (Interval{2, 98}));
}

TEST(ReadingRange, IsThatOfTheColumnAskedFor) {
    std::vector<double> higher = hundredAndOneReadings();
    for (double& reading : higher)
        reading += 500;
    const Survey survey = surveyOfReadings(hundredAndOneReadings(), higher);
    EXPECT_EQ(readingRange(survey, kEM2), (Interval{502, 598}));
}

TEST(ReadingRange, IsNotWidenedByAFewWildReadings) {
    std::vector<double> readings = hundredAndOneReadings();
    readings[10] = -1e300;
    readings[70] = 1e300;
    const Interval range = readingRange(surveyOfReadings(readings), kEM1);
    EXPECT_GE(range.from, 0);
    EXPECT_LE(range.to, 100);
}

TEST(ReadingRange, LeavesOutWhatIsNoFiniteNumber) {
    std::vector<double> readings = hundredAndOneReadings();
    const double inf = std::numeric_limits<double>::infinity();
    readings.insert(readings.end(), {inf, -inf, std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(readingRange(surveyOfReadings(readings), kEM1), (Interval{2, 98}));
    EXPECT_EQ(readingRange(surveyOfReadings(std::vector<double>{inf}), kEM1), (Interval{0, 1}));
}

TEST(ReadingRange, OfFewSitesOrEqualReadingsReachesOverAllOfThem) {
    EXPECT_EQ(readingRange(surveyOfReadings(std::vector<double>{4, 9}), kEM1), (Interval{4, 9}));
    EXPECT_EQ(readingRange(surveyOfReadings(std::vector<double>{7, 7, 7}), kEM1), (Interval{7, 7}));
    EXPECT_EQ(readingRange(Survey{}, kEM1), (Interval{0, 1}));
}

TEST(ReadingShades, AreThoseOfEverySite) {
    const Survey survey = surveyOfReadings({10, 30, 50}, {1, 2, 3});
    EXPECT_EQ(readingShades(survey, kEM1, {10, 50}), (std::vector<Shade>{0, 128, 255}));
    EXPECT_EQ(readingShades(survey, kEM2, {1, 2}), (std::vector<Shade>{0, 255, 255}));
}

}  // namespace tessel
