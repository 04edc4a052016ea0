// SPDX-License-Identifier: GPL-3.0-or-later
// Sites of surveys that are not as surveys should be: written several times, of few digits, at rest, or begun
// with a lost fix.
#include "analysis/robust_measures.h"
#include "analysis/suspicious_sites.h"
#include "rows/walked_path.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

SuspectParameters only(SuspectRule rule, const Survey& survey) {
    SuspectParameters parameters = proposedSuspectParameters(survey);
    parameters.uses[rule] = true;
    return parameters;
}

// A field of 100 by 100 sites a metre apart, with normal noise and some readings far off.
Survey noisyField(SiteIndex planted) {
    std::mt19937 random(4);
    std::normal_distribution<double> noise(40, 1);
    std::vector<MadeSite> sites;
    for (int i = 0; i < 10000; ++i)
        sites.push_back(
            {500000.0 + i / 100, 5500000.0 + i % 100, noise(random), noise(random), 1.0 + i / 100, 0});
    Survey survey = surveyWithRows(sites);
    for (SiteIndex i = 0; i < planted; ++i)
        survey.SiteData(kEM1, 77 + i * 190) = 400;
    return survey;
}

double smooth(SiteIndex i) {
    return 40 + 10 * std::sin(0.01 * static_cast<double>(i));
}
double rounded(double reading, double steps) {
    return std::round(reading * steps) / steps;
}

// Two readings of 10,000 sites: second(noise of one mS/m, first reading).
template <typename First, typename Second>
Survey twoReadings(First first, Second second) {
    std::mt19937 random(9);
    std::normal_distribution<double> noise(0, 1);
    std::vector<double> em1, em2;
    for (SiteIndex i = 0; i < 10000; ++i) {
        em1.push_back(first(i, noise(random)));
        em2.push_back(second(i, noise(random), em1.back()));
    }
    return surveyOfReadings(em1, em2);
}

SiteIndex readingsApart(const Survey& survey) {
    return findSuspects(survey, only(kReadingsApart, survey)).sites;
}

// Sites a metre or so apart, each written several times; the first of them is `phase` times missing.
Survey writtenRepeatedly(SiteIndex sites, SiteIndex repeat, SiteIndex phase) {
    Survey survey = surveyOfReadings(
        sites, [=](SiteIndex i) { return static_cast<double>((i + phase) / repeat % 7 * 5 % 7); },
        [](SiteIndex) { return 0.0; });
    for (SiteIndex i = 0; i < sites; ++i)
        survey.SiteData(kX, i) = static_cast<double>((i + phase) / repeat);
    return survey;
}

}  // namespace

TEST(RepeatedRecords, LeaveNoiseAndStepsWhatTheyAre) {
    const double noise = readingNoise(writtenRepeatedly(70000, 1, 0), kEM1);
    for (const auto& [sites, repeat] : {std::pair{200000, 2}, {300000, 3}, {500000, 10}})
        for (const int phase : {0, 1}) {
            const Survey survey = writtenRepeatedly(sites, repeat, phase);
            EXPECT_EQ(readingNoise(survey, kEM1), noise) << sites << ' ' << repeat << ' ' << phase;
            EXPECT_EQ(medianStep(survey), 1) << sites << ' ' << repeat << ' ' << phase;
        }
}

TEST(ReadingsApart, AreNotThoseThatDifferByADigit) {
    EXPECT_EQ(readingsApart(twoReadings(
                  [](SiteIndex i, double) { return rounded(smooth(i), 1); },
                  [](SiteIndex i, double noise, double) { return rounded(smooth(i) + 0.35 * noise, 1); })),
              0);
    const auto tenths = [](SiteIndex i, double noise) { return rounded(smooth(i) + 0.3 * noise, 10); };
    for (const double slope : {0.7, 0.5})
        for (const double steps : {100.0, 10.0})
            EXPECT_EQ(
                readingsApart(twoReadings(
                    tenths, [=](SiteIndex, double, double em1) { return rounded(slope * em1, steps); })),
                0)
                << slope << ' ' << steps;
}

TEST(ReadingsApart, AreFoundAmongReadingsThatLieOnALineExactly) {
    Survey survey = twoReadings([](SiteIndex i, double noise) { return rounded(smooth(i) + noise, 10); },
                                [](SiteIndex, double, double em1) { return rounded(0.7 * em1, 100); });
    survey.SiteData(kEM2, 500) += 6;
    survey.SiteData(kEM1, 900) -= 9;
    EXPECT_EQ(readingsApart(survey), 2);
}

TEST(ReadingsApart, AreFoundHoweverMuchBothReadingsChangeTogether) {
    Survey survey = twoReadings([](SiteIndex i, double noise) { return smooth(i) + 8 * noise; },
                                [](SiteIndex, double noise, double em1) { return 0.7 * em1 + 0.1 * noise; });
    for (SiteIndex i = 50; i < 10000; i += 100)
        survey.SiteData(kEM2, i) += 3;
    EXPECT_NEAR(static_cast<double>(readingsApart(survey)), 100, 5);
}

// A field in which the readings go together otherwise in one quarter than in the others, as over other
// ground.
Survey fieldOfTwoGrounds() {
    return twoReadings([](SiteIndex i, double noise) { return smooth(i) + 0.3 * noise; },
                       [](SiteIndex i, double noise, double em1) {
                           return i < 2500 ? 40 - 0.5 * em1 + 0.3 * noise : 0.7 * em1 + 0.3 * noise;
                       });
}

TEST(ReadingsApart, AreNotThoseOfOtherGround) {
    Survey survey = fieldOfTwoGrounds();
    EXPECT_EQ(only(kReadingsApart, survey).apartThreshold, 4);
    EXPECT_LT(readingsApart(survey), 10);
    // The second coil is off here and there, over one to four sites.
    std::vector<SiteIndex> off;
    for (SiteIndex first = 40; first < 9990; first += 250)
        for (SiteIndex i = first; i <= first + first / 250 % 4; ++i)
            off.push_back(i);
    for (const SiteIndex i : off)
        survey.SiteData(kEM2, i) += i % 500 < 250 ? 5 : -5;
    const Suspects found = findSuspects(survey, only(kReadingsApart, survey));
    SiteIndex offAndFound = 0;
    for (const SiteIndex i : off)
        offAndFound += found.flags[static_cast<std::size_t>(i)] != 0 ? 1 : 0;
    EXPECT_GE(offAndFound, std::ssize(off) * 95 / 100);
    EXPECT_LT(found.sites, std::ssize(off) + 10);
}

TEST(ReadingsApart, AreNoMoreThanAFiftiethAtFirst) {
    // Noise that is ten times as large at each tenth site: none of them is a single fault.
    Survey survey = twoReadings([](SiteIndex i, double noise) { return smooth(i) + 0.1 * noise; },
                                [](SiteIndex i, double noise, double em1) {
                                    return 0.7 * em1 + noise * (i * 7 % 10 == 0 ? 3 : 0.3);
                                });
    SuspectParameters parameters = only(kReadingsApart, survey);
    EXPECT_GT(parameters.apartThreshold, 6);
    EXPECT_EQ(parameters.apartThreshold, std::floor(parameters.apartThreshold));
    const auto flagged = static_cast<double>(findSuspects(survey, parameters).sites);
    EXPECT_LE(flagged, 10000 / 50);
    EXPECT_GT(flagged, 10000 / 100);
    parameters.apartThreshold = 4;
    EXPECT_GT(findSuspects(survey, parameters).sites, 400);
    survey.SiteData(kEM2, 5555) += 80;
    parameters = only(kReadingsApart, survey);
    EXPECT_NE(findSuspects(survey, parameters).flags[5555], 0);
}

TEST(ReadingsApart, AreNotLookedForAcrossRows) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 60; ++i)
        sites.push_back({i * 1.0, 0, 20.0 + i * 7 % 5, 14.0 + i * 7 % 5, i < 54 ? 1.0 : 2.0, 0});
    for (std::size_t i = 54; i < 60; ++i)
        sites[i].em2 += 60;
    const Survey survey = surveyWithRows(sites);
    EXPECT_EQ(only(kReadingsApart, survey).apartThreshold, 4);
    EXPECT_EQ(readingsApart(survey), 0);
}

TEST(SitesUnlikeThoseAround, AreFoundWhereverTheFirstSiteIs) {
    Survey survey = noisyField(50);
    const SuspectParameters parameters = only(kUnlikeAround, survey);
    const Suspects expected = findSuspects(survey, parameters);
    EXPECT_GE(expected.sites, 50);
    for (const double wild : {0.0, 1e12, -1e30, 1e308}) {
        survey.SiteData(kX, 0) = survey.SiteData(kY, 0) = wild;
        const Suspects found = findSuspects(survey, parameters);
        EXPECT_TRUE(std::equal(found.flags.begin() + 300, found.flags.end(), expected.flags.begin() + 300))
            << wild;
    }
}

TEST(SitesUnlikeThoseAround, AreJudgedByTheOthersAlone) {
    // Six sites within a metre, of which the last is unlike the others; were it one of them, their median
    // would be 30 and not 20.
    std::vector<MadeSite> sites;
    for (const double reading : {20, 20, 20, 30, 30, 60})
        sites.push_back({0.1 * static_cast<double>(sites.size()), 0, reading, 30, 1, 0});
    for (int i = 1; i <= 200; ++i)
        sites.push_back({i * 100.0, 0, 20.0 + i % 2, 30, 1, 0});
    const Survey survey = surveyWithRows(sites);
    SuspectParameters parameters = only(kUnlikeAround, survey);
    parameters.radius = 1;
    EXPECT_NE(findSuspects(survey, parameters).flags[5], 0);
}

TEST(SitesFarAway, AreFoundWhereTheLoggerRestedForMostOfTheSurvey) {
    std::vector<MadeSite> sites(600, {5, 5, 20, 30, 1, 0});
    for (int i = 1; i <= 300; ++i)
        sites.push_back({5.0 + i, 5, 20, 30, 1, 0});
    sites.push_back({1e6, 5, 20, 30, 1, 0});
    const Survey survey = surveyWithRows(sites);
    const Suspects found = findSuspects(survey, only(kFarAway, survey));
    EXPECT_EQ(found.sites, 1);
    EXPECT_EQ(found.flags.back(), 1 << kFarAway);
    const Survey atRest = surveyWithRows(std::vector<MadeSite>(9, {5, 5, 20, 30, 1, 0}));
    EXPECT_EQ(findSuspects(atRest, only(kFarAway, atRest)).sites, 0);
}

TEST(SitesFarAway, AreFoundWhereMostPositionsTrembleAtARest) {
    std::mt19937 random(6);
    std::normal_distribution<double> tremble(0, 0.2);
    std::vector<MadeSite> sites;
    for (int i = 0; i < 4000; ++i)
        sites.push_back({500100 + tremble(random), 5500100 + tremble(random), 20, 30, 1, 0});
    for (int i = 0; i < 1000; ++i)
        sites.push_back({500000.0 + i / 50 * 5, 5500000.0 + i % 50 * 4, 20, 30, 1, 0});
    const SiteIndex field = std::ssize(sites);
    for (int i = 0; i < 90; ++i)
        sites.push_back({500100 + 3000.0 + i, 5500100 - 900.0 * i, 20, 30, 1, 0});
    sites.push_back({0, 0, 20, 30, 1, 0});
    const Survey survey = surveyWithRows(sites);
    const Suspects found = findSuspects(survey, only(kFarAway, survey));
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        EXPECT_EQ(found.flags[static_cast<std::size_t>(i)] != 0, i >= field) << i;
}

TEST(SitesFarAway, AreThoseAtZeroInTheMiddleOfTheFieldToo) {
    std::vector<MadeSite> sites;
    for (int i = -50; i <= 50; ++i)
        sites.push_back({i + 0.5, 0, 20, 30, 1, 0});
    sites.push_back({0, 0, 20, 30, 1, 0});
    const Survey survey = surveyWithRows(sites);
    const Suspects found = findSuspects(survey, only(kFarAway, survey));
    EXPECT_EQ(found.sites, 1);
    EXPECT_NE(found.flags.back(), 0);
}

TEST(SitesFarAway, AreMeasuredWithoutThoseAtZero) {
    // Four of ten fixes were lost.
    std::vector<MadeSite> sites;
    for (int i = 0; i < 1000; ++i)
        sites.push_back(i % 5 < 2 ? MadeSite{0, 0, 20, 30, 1, 0}
                                  : MadeSite{500000.0 + i, 5500000, 20, 30, 1, 0});
    sites[4].y += 50000;
    const Survey survey = surveyWithRows(sites);
    EXPECT_EQ(findSuspects(survey, only(kFarAway, survey)).sites, 401);
}

TEST(SuspectSearch, OfTwoReadingsNeverGoesBack) {
    const Survey survey = noisyField(0);
    SuspectParameters parameters = proposedSuspectParameters(survey);
    parameters.uses.fill(true);
    parameters.spikeNeighbours = 200;
    std::vector<double> parts;
    findSuspects(survey, parameters, [&](double part) {
        parts.push_back(part);
        return true;
    });
    EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
    EXPECT_LT(parts.back(), 1);
}

TEST(SuspectSearch, AsksTheSoonerTheMoreNeighboursItLooksAt) {
    const Survey survey = noisyField(0);
    const auto questionsWith = [&](int neighbours) {
        SuspectParameters parameters = only(kSpike, survey);
        parameters.spikeNeighbours = neighbours;
        int questions = 0;
        findSuspects(survey, parameters, [&](double) { return ++questions < 1000; });
        return questions;
    };
    EXPECT_LE(questionsWith(5), 3);
    // Two readings, a question for every 2 * 5 * 32768 values that are looked at.
    EXPECT_GE(questionsWith(1000), 2 * 10000 * 2000 / (10 * 32768) - 2);
    EXPECT_EQ(questionsWith(2000000000), 1000);
}

}  // namespace tessel
