// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/suspicious_sites.h"

#include "analysis/robust_measures.h"
#include "base/run_time_error.h"
#include "support/made_faults.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

using Sites = std::vector<SiteIndex>;

SuspectParameters only(SuspectRule rule, const Survey& survey) {
    SuspectParameters parameters = proposedSuspectParameters(survey);
    parameters.uses[rule] = true;
    return parameters;
}

Sites flaggedBy(const Survey& survey, const SuspectParameters& parameters) {
    Sites sites;
    const Suspects suspects = findSuspects(survey, parameters);
    for (std::size_t i = 0; i < suspects.flags.size(); ++i)
        if (suspects.flags[i] != 0) sites.push_back(static_cast<SiteIndex>(i));
    EXPECT_EQ(suspects.sites, static_cast<SiteIndex>(sites.size()));
    return sites;
}
Sites flaggedBy(const Survey& survey, SuspectRule rule) {
    return flaggedBy(survey, only(rule, survey));
}

// Readings that differ from their neighbours by one or none.
std::vector<double> quietReadings(int count) {
    std::vector<double> readings;
    for (int i = 0; i < count; ++i)
        readings.push_back(20 + i % 2);
    return readings;
}

// Ten rows of ten sites a metre apart in both directions; row 5 reads 8 mS/m too much over six sites.
std::vector<MadeSite> squareWithAStretchOff() {
    std::vector<MadeSite> sites;
    for (int row = 0; row < 10; ++row)
        for (int i = 0; i < 10; ++i)
            sites.push_back({row * 1.0, i * 1.0, 20.0 + (i + row) % 2 + (row == 5 && i > 1 && i < 8 ? 8 : 0),
                             30, row + 1.0, 0});
    return sites;
}

}  // namespace

TEST(ReadingsOutsideLimits, AreThoseBelowOrAboveEachReadingsOwn) {
    Survey survey = surveyOfReadings({-1, 0, 50, 100, 101}, {5, 5, 61, 4, 60});
    SuspectParameters parameters = only(kOutsideLimits, survey);
    parameters.lowest = {0, 5};
    parameters.highest = {100, 60};
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{0, 2, 3, 4}));
    survey.TwoEMColumns = false;
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{0, 4})) << "a second reading that is none is left alone";
}

TEST(Spikes, StandOutFromTheirNeighboursOnEitherSide) {
    std::vector<double> readings = quietReadings(40);
    readings[7] = 60;
    readings[20] = -3;
    readings[21] = -4;
    readings[39] = 60;
    EXPECT_EQ(flaggedBy(surveyOfReadings(readings), kSpike), (Sites{7, 20, 21, 39}));
    EXPECT_EQ(flaggedBy(surveyOfReadings(quietReadings(40), readings), kSpike), (Sites{7, 20, 21, 39}));
}

TEST(Spikes, AreMeasuredInScaledMedianAbsoluteDeviations) {
    // Differences of 1 everywhere: their noise is 1.4826 / sqrt(2) = 1.048, the neighbours' deviation 1.4826
    // or 0.
    std::vector<double> readings = quietReadings(40);
    SuspectParameters parameters = only(kSpike, surveyOfReadings(readings));
    readings[20] = 21 + 4 * kScaledDeviation * 1.01;
    EXPECT_EQ(flaggedBy(surveyOfReadings(readings), parameters), (Sites{20}));
    parameters.spikeThreshold = 6.5;
    EXPECT_TRUE(flaggedBy(surveyOfReadings(readings), parameters).empty());
}

TEST(Spikes, AreNotLookedForAcrossRows) {
    std::vector<MadeSite> sites;
    for (int row = 1; row <= 3; ++row)
        for (int i = 0; i < 12; ++i)
            sites.push_back({i * 1.0, row * 1.0, 20.0 + i % 2 + (row == 2 ? 50 : 0), 30, row * 1.0, 0});
    sites.resize(27);  // of the third row three are left: too few to judge
    sites.back().em1 = 900;
    EXPECT_TRUE(flaggedBy(surveyWithRows(sites), kSpike).empty());
}

TEST(Spikes, AreFoundAsByTheDefinition) {
    std::mt19937 random(3);
    std::normal_distribution<double> noise(0, 1);
    std::vector<double> readings;
    for (int i = 0; i < 3000; ++i)
        readings.push_back(std::round(100 * (noise(random) * (i % 17 == 0 ? 6 : 1))) / 100);
    const Survey survey = surveyOfReadings(readings);
    SuspectParameters parameters = only(kSpike, survey);
    for (const auto& [neighbours, threshold] : {std::pair{5, 4.0}, {2, 4.0}, {8, 6.5}}) {
        parameters.spikeNeighbours = neighbours;
        parameters.spikeThreshold = threshold;
        Sites expected;
        for (int i = 0; i < 3000; ++i) {
            std::vector<double> others;
            for (int j = std::max(0, i - neighbours); j <= std::min(2999, i + neighbours); ++j)
                if (j != i) others.push_back(readings[static_cast<std::size_t>(j)]);
            if (isUnlike(readings[static_cast<std::size_t>(i)], others, threshold,
                         readingNoise(survey, kEM1)))
                expected.push_back(i);
        }
        EXPECT_GT(expected.size(), 20u);
        EXPECT_EQ(flaggedBy(survey, parameters), expected);
    }
}

TEST(SitesUnlikeThoseAround, AreSeenFromOtherRows) {
    const Survey survey = surveyWithRows(squareWithAStretchOff());
    SuspectParameters parameters = only(kUnlikeAround, survey);
    parameters.radius = 2.3;
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{52, 53, 54, 55, 56, 57}));
    // Along their own row they are the many.
    const Sites spikes = flaggedBy(survey, kSpike);
    for (const SiteIndex middle : {54, 55})
        EXPECT_EQ(std::count(spikes.begin(), spikes.end(), middle), 0);
}

TEST(SitesUnlikeThoseAround, AreFoundAsByTheDefinition) {
    std::mt19937 random(8);
    std::uniform_real_distribution<double> place(-40, 40);
    std::normal_distribution<double> noise(0, 1);
    std::vector<MadeSite> sites;
    for (int i = 0; i < 900; ++i)
        sites.push_back({place(random), place(random), 30 + noise(random) * (i % 23 == 0 ? 6 : 1), 20, 1, 0});
    sites.push_back({1e7, -1e7, 900, 1, 1, 0});
    const Survey survey = surveyWithRows(sites);
    SuspectParameters parameters = only(kUnlikeAround, survey);
    parameters.radius = 7;
    Sites expected;
    for (std::size_t i = 0; i < sites.size(); ++i) {
        std::vector<double> others;
        for (std::size_t j = 0; j < sites.size(); ++j)
            if (j != i && std::hypot(sites[j].x - sites[i].x, sites[j].y - sites[i].y) <= 7)
                others.push_back(sites[j].em1);
        if (others.size() >= 4 && isUnlike(sites[i].em1, others, 4, readingNoise(survey, kEM1)))
            expected.push_back(static_cast<SiteIndex>(i));
    }
    EXPECT_GT(expected.size(), 10u);
    EXPECT_EQ(flaggedBy(survey, parameters), expected);
}

TEST(SitesUnlikeThoseAround, AreJudgedByASampleWhereThousandsLieOnOneSpot) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 5000; ++i)
        sites.push_back({5, 5, 20.0 + i % 2, 30, 1, 0});
    sites[2500].em1 = 80;
    EXPECT_EQ(flaggedBy(surveyWithRows(sites), kUnlikeAround), (Sites{2500}));
}

TEST(Jumps, GoOutAndComeBack) {
    const Survey survey = surveyAt(
        {{0, 0}, {1, 0}, {2, 0}, {60, 40}, {61, 40}, {5, 0}, {6, 0}, {7, 0}, {8, 0}, {90, 0}, {91, 0}});
    SuspectParameters parameters = only(kJump, survey);
    EXPECT_EQ(parameters.jump, 10);
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{3, 4}));
    parameters.jump = 75;
    EXPECT_TRUE(flaggedBy(survey, parameters).empty());
}

TEST(RepeatedPlaces, LeaveTheFirstOrTheLast) {
    std::vector<MadeSite> sites;
    for (const double x : {1.0, 1.0, 1.0, 2.0, 3.0, 3.0, 1.0})
        sites.push_back({x, 4, 20, 30, 1, 0});
    sites.push_back({1, 4, 20, 30, 2, 0});  // on another row
    const Survey survey = surveyWithRows(sites);
    SuspectParameters parameters = only(kRepeatedPlace, survey);
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{1, 2, 5}));
    parameters.repeated = RepeatedPlaces::kKeepLast;
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{0, 1, 4}));
    parameters.repeated = RepeatedPlaces::kKeepMean;
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{1, 2, 5}));
}

TEST(RepeatedPlaces, HaveTheMeanOfTheirReadings) {
    Survey survey = surveyWithRows({{1, 1, 10, 40, 1},
                                    {1, 1, 12, 41, 1},
                                    {1, 1, 17, 45, 1},
                                    {2, 1, 9, 9, 1},
                                    {3, 1, 1, 2, 1},
                                    {3, 1, 2, 4, 1}});
    const std::vector<MeanReadings> means = meansOfRepeatedPlaces(survey);
    ASSERT_EQ(means.size(), 2u);
    EXPECT_EQ(means[0].site, 0);
    EXPECT_EQ(means[0].em1, 13);
    EXPECT_EQ(means[0].em2, 42);
    EXPECT_EQ(means[1].site, 4);
    EXPECT_EQ(means[1].em1, 1.5);
    survey.TwoEMColumns = false;
    EXPECT_EQ(meansOfRepeatedPlaces(survey)[0].em2, 40) << "a second reading that is none stays";
}

TEST(SitesFarAway, StandAtZeroOrFarFromTheMiddle) {
    std::vector<std::pair<double, double>> places;
    for (int i = 0; i <= 100; ++i)
        places.push_back({500000.0 + i, 4000000});  // half of them within 25 m of the middle
    places.push_back({0, 0});
    places.push_back({500050, 4000249});
    places.push_back({500050, 4000271});
    places.push_back({0, 4000000});
    const Survey survey = surveyAt(places);
    EXPECT_EQ(flaggedBy(survey, kFarAway), (Sites{101, 103, 104}));
    SuspectParameters parameters = only(kFarAway, survey);
    parameters.farFactor = 9;
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{101, 102, 103, 104}));
}

TEST(StuckReadings, AreTheSameOverManySitesOfARow) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 40; ++i)
        sites.push_back({i * 1.0, 0, 20.0 + i % 7, 30.0 + i % 5, i < 30 ? 1.0 : 2.0, 0});
    for (std::size_t i = 3; i < 13; ++i)
        sites[i].em1 = 25;
    for (std::size_t i = 15; i < 24; ++i)
        sites[i].em2 = 77;
    for (std::size_t i = 25; i < 35; ++i)
        sites[i].em2 = 88;  // five on each row
    const Survey survey = surveyWithRows(sites);
    SuspectParameters parameters = only(kStuckReading, survey);
    EXPECT_EQ(flaggedBy(survey, parameters), (Sites{3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    parameters.stuckSites = 9;
    EXPECT_EQ(flaggedBy(survey, parameters).size(), 19u);
}

TEST(ReadingsApart, LeaveTheLineOfTheOthersWhichWildReadingsDoNotTurn) {
    std::vector<double> em1;
    std::vector<double> em2;
    for (int i = 0; i < 200; ++i) {
        em1.push_back(20 + i % 40);
        em2.push_back(7 + 0.5 * em1.back() + 0.1 * (i % 3 - 1));
    }
    for (std::size_t i = 0; i < 20; ++i)
        em2[i * 10] += 400;
    const Sites apart = flaggedBy(surveyOfReadings(em1, em2), kReadingsApart);
    ASSERT_EQ(apart.size(), 20u);
    EXPECT_EQ(apart[1], 10);
    EXPECT_TRUE(flaggedBy(surveyOfReadings(em1), kReadingsApart).empty());
}

TEST(Suspects, AreCountedForEachRuleAndOnceInAll) {
    std::vector<double> readings = quietReadings(40);
    readings[7] = 6000;
    readings[9] = 1500;
    Survey survey = surveyOfReadings(readings);
    survey.SiteData(kX, 20) = survey.SiteData(kX, 19);
    SuspectParameters parameters = proposedSuspectParameters(survey);
    EXPECT_EQ(findSuspects(survey, parameters).sites, 0) << "no rule is used at first";
    parameters.uses[kOutsideLimits] = parameters.uses[kSpike] = parameters.uses[kRepeatedPlace] = true;
    const Suspects suspects = findSuspects(survey, parameters);
    EXPECT_EQ(suspects.counts[kOutsideLimits], 2);
    EXPECT_EQ(suspects.counts[kSpike], 2);
    EXPECT_EQ(suspects.counts[kRepeatedPlace], 1);
    EXPECT_EQ(suspects.counts[kStuckReading], 0);
    EXPECT_EQ(suspects.sites, 3);
    EXPECT_EQ(suspects.flags[7], 1 << kOutsideLimits | 1 << kSpike);
    EXPECT_EQ(suspects.flags[20], 1 << kRepeatedPlace);
}

TEST(Suspects, TellHowFarTheyAreAndStopWhenToldTo) {
    const FaultySurvey made = surveyWithoutFaults(1);
    SuspectParameters parameters = proposedSuspectParameters(made.survey);
    parameters.uses.fill(true);
    std::vector<double> parts;
    const Suspects all = findSuspects(made.survey, parameters, [&](double part) {
        parts.push_back(part);
        return true;
    });
    EXPECT_FALSE(all.cancelled);
    EXPECT_GE(parts.size(), 8u);
    EXPECT_EQ(parts.front(), 0);
    EXPECT_LT(parts.back(), 1);
    for (std::size_t stopAt = 0; stopAt < parts.size(); ++stopAt) {
        std::size_t asked = 0;
        const Suspects stopped =
            findSuspects(made.survey, parameters, [&](double) { return asked++ != stopAt; });
        EXPECT_TRUE(stopped.cancelled) << stopAt;
        EXPECT_EQ(asked, stopAt + 1) << "it went on working";
    }
}

TEST(Suspects, OfMadeUpFaultsAreFoundAndFewGoodSitesAreFlagged) {
    for (int kind = 0; kind < kSuspectRules; ++kind) {
        const auto rule = static_cast<SuspectRule>(kind);
        FaultScore mean;
        for (const unsigned seed : {21u, 22u, 23u, 24u}) {
            const FaultySurvey made = surveyWithFaults(rule, seed);
            const FaultScore score =
                scoreFlags(made, findSuspects(made.survey, only(rule, made.survey)).flags);
            mean.found += score.found / 4;
            mean.wronglyFlagged += score.wronglyFlagged / 4;
        }
        EXPECT_GE(mean.found, rule == kUnlikeAround ? 0.6 : rule == kSpike ? 0.8 : 0.99) << kind;
        EXPECT_LE(mean.wronglyFlagged, 0.001) << kind;
    }
}

TEST(Suspects, OfSmallAndOddSurveysDoNoHarm) {
    for (const SiteIndex sites : {0, 1, 2, 5}) {
        const Survey survey = surveyOfReadings(
            sites, [](SiteIndex) { return 7.0; }, [](SiteIndex) { return 8.0; });
        SuspectParameters parameters = proposedSuspectParameters(survey);
        parameters.uses.fill(true);
        parameters.uses[kFarAway] = false;  // it begins at 0, 0
        EXPECT_EQ(findSuspects(survey, parameters).sites, 0) << sites;
    }
    Survey wild = surveyWithRows({{1e308, -1e308, 1e308, -1e308, 1},
                                  {-1e308, 1e308, -1e308, 1e308, 1},
                                  {0, 1e300, 1, 1, 1},
                                  {2, 3, 4, 5, 1},
                                  {2, 3, 1e-300, 5, 1},
                                  {3, 3, 4, 5, 1}});
    SuspectParameters parameters = proposedSuspectParameters(wild);
    EXPECT_TRUE(std::isfinite(parameters.radius) && std::isfinite(parameters.jump));
    parameters.uses.fill(true);
    EXPECT_GT(findSuspects(wild, parameters).sites, 0);
    EXPECT_THROW(meansOfRepeatedPlaces(
                     surveyWithRows({{1, 1, 1.5e308, 0, 1}, {1, 1, 1.5e308, 0, 1}, {1, 1, 1.5e308, 0, 1}})),
                 RunTimeError);
}

TEST(SuspectParameters, AreProposedFromStepsAndDensity) {
    const FaultySurvey made = surveyWithoutFaults(2);
    const SuspectParameters proposed = proposedSuspectParameters(made.survey);
    EXPECT_NEAR(proposed.jump, 10, 0.5);
    EXPECT_NEAR(proposed.radius, std::sqrt(60 * 5 / 3.1416), 0.8) << "sixty sites of 5 square metres each";
    EXPECT_EQ(proposed.spikeNeighbours, 5);
    EXPECT_EQ(proposed.spikeThreshold, 4);
    EXPECT_EQ(std::count(proposed.uses.begin(), proposed.uses.end(), true), 0);
    const Survey line = surveyAlongX(std::vector<double>(50, 2), 0);
    EXPECT_EQ(proposedSuspectParameters(line).radius, 10) << "of a single row";
}

TEST(RobustMeasures, AreNotMovedByAWildValue) {
    std::vector<double> values{3, 1, 2, 5, 4};
    EXPECT_EQ(medianOf(values), 3);
    values = {3, 1, 2, 1e9, 4};
    const Spread spread = spreadOf(values);
    EXPECT_EQ(spread.median, 3);
    EXPECT_EQ(spread.deviation, kScaledDeviation);
    values = {3, 1, 2, 1e9, 4};
    EXPECT_EQ(deviationsFrom(6, values, 0.5), 3 / kScaledDeviation);
    values = {3, 1, 2, 1e9, 4};
    EXPECT_EQ(deviationsFrom(6, values, 3), 1);
    values = {7, 7, 7};
    EXPECT_EQ(deviationsFrom(7, values, 0), 0);
    EXPECT_NEAR(readingNoise(surveyOfReadings({1, 2, 2, 2, 1, 90, 91}), kEM1), 1.0484, 1e-3);
    EXPECT_EQ(readingNoise(surveyOfReadings({5, 5}), kEM1), 0);
}

}  // namespace tessel
