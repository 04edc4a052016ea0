// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey_facts.h"

#include "support/made_survey.h"

namespace tessel {

namespace {

double plainMedian(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : std::midpoint(values[middle - 1], values[middle]);
}

std::vector<double> stepsOf(const std::vector<MadeSite>& sites) {
    std::vector<double> steps;
    for (std::size_t i = 1; i < sites.size(); ++i) {
        const double dx = sites[i].x - sites[i - 1].x, dy = sites[i].y - sites[i - 1].y;
        steps.push_back(std::sqrt(dx * dx + dy * dy));
    }
    return steps;
}

std::vector<double> withoutZeros(std::vector<double> steps) {
    std::erase(steps, 0.0);
    return steps;
}

// Positions on a coarse grid, so that some are repeated and some lie at 0, 0.
std::vector<MadeSite> randomSites(std::mt19937& random, int count) {
    std::uniform_int_distribution<int> place(-1, 1);
    std::uniform_real_distribution<double> reading(-50, 500);
    std::vector<MadeSite> sites;
    for (int i = 0; i < count; ++i)
        sites.push_back({place(random) * 2.5, place(random) * 0.75, reading(random), reading(random)});
    return sites;
}

void expectRange(const Interval& range, const std::vector<MadeSite>& sites, double MadeSite::*value) {
    const auto less = [value](const MadeSite& a, const MadeSite& b) { return a.*value < b.*value; };
    const auto [smallest, largest] = std::minmax_element(sites.begin(), sites.end(), less);
    EXPECT_EQ(range.from, (*smallest).*value);
    EXPECT_EQ(range.to, (*largest).*value);
}

SurveyFacts factsOf(const std::vector<MadeSite>& sites) {
    return surveyFacts(madeSurvey(sites));
}

}  // namespace

TEST(SurveyFacts, AreThoseOfAPlainComputation) {
    std::mt19937 random(20);
    for (int count = 1; count <= 120; ++count) {
        const auto sites = randomSites(random, count);
        const SurveyFacts facts = factsOf(sites);
        const auto steps = stepsOf(sites);
        EXPECT_EQ(facts.steps, static_cast<SiteIndex>(steps.size()));
        EXPECT_EQ(facts.repeatedPositions, std::count(steps.begin(), steps.end(), 0.0)) << count;
        EXPECT_EQ(facts.medianStep, plainMedian(steps)) << count;
        EXPECT_EQ(facts.medianMove, plainMedian(withoutZeros(steps))) << count;
        EXPECT_EQ(facts.sitesAtZero, std::count_if(sites.begin(), sites.end(), [](const MadeSite& site) {
                      return site.x == 0 && site.y == 0;
                  }));
        expectRange(facts.ranges[kX], sites, &MadeSite::x);
        expectRange(facts.ranges[kY], sites, &MadeSite::y);
        expectRange(facts.ranges[kEM1], sites, &MadeSite::em1);
        expectRange(facts.ranges[kEM2], sites, &MadeSite::em2);
    }
}

TEST(SurveyFacts, FindTheMediansWhateverTheShareOfRepeatedPositions) {
    std::mt19937 random(21);
    std::uniform_real_distribution<double> length(1, 9);
    for (int moves = 0; moves <= 12; ++moves)
        for (int repeats = 0; repeats <= 12; ++repeats) {
            std::vector<MadeSite> sites(1);
            for (int i = 0; i < moves + repeats; ++i)
                sites.push_back({sites.back().x + (i < moves ? length(random) : 0.0)});
            std::shuffle(sites.begin() + 1, sites.end(), random);
            const SurveyFacts facts = factsOf(sites);
            EXPECT_EQ(facts.medianStep, plainMedian(stepsOf(sites))) << moves << ' ' << repeats;
            EXPECT_EQ(facts.medianMove, plainMedian(withoutZeros(stepsOf(sites)))) << moves << ' ' << repeats;
        }
}

TEST(SurveyFacts, OfNoSiteAreAllZero) {
    const SurveyFacts facts = surveyFacts(Survey{});
    EXPECT_EQ(facts.steps, 0);
    EXPECT_EQ(facts.sitesAtZero, 0);
    EXPECT_EQ(facts.medianStep, 0);
    EXPECT_EQ(facts.ranges[kX].to, 0);
    EXPECT_FALSE(facts.looksLikeDegrees);
}

TEST(SurveyFacts, CountStepsBeyondAllDoublesAsTheLargestDouble) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    Survey survey;
    survey.SiteData.resize(3);
    survey.NumSites = 3;
    survey.SiteData(kX, 0) = survey.SiteData(kX, 2) = -kLargest;
    survey.SiteData(kX, 1) = kLargest;
    EXPECT_EQ(surveyFacts(survey).medianStep, kLargest);
    survey.SiteData(kX, 0) = survey.SiteData(kX, 2) = 0;
    survey.SiteData(kX, 1) = 3e200;
    survey.SiteData(kY, 1) = 4e200;
    EXPECT_EQ(surveyFacts(survey).medianStep, std::hypot(3e200, 4e200));
}

TEST(SurveyFacts, SeeThatPositionsAreDegrees) {
    const double step = 1.3e-5;
    std::vector<MadeSite> sites;
    for (int i = 0; i < 10; ++i)
        sites.push_back({-64.415 + i * step, 83.442 + i * step});
    EXPECT_TRUE(factsOf(sites).looksLikeDegrees);
    for (MadeSite& site : sites)
        std::swap(site.x, site.y);
    EXPECT_TRUE(factsOf(sites).looksLikeDegrees) << "latitude first";
    sites[4].x = sites[4].y = 0;
    EXPECT_TRUE(factsOf(sites).looksLikeDegrees) << "with a missing position";
    sites[6].y = sites[5].y;
    sites[6].x = sites[5].x;
    EXPECT_TRUE(factsOf(sites).looksLikeDegrees) << "with a repeated position";
}

TEST(SurveyFacts, TakeMetresOfALocalGridForMetres) {
    EXPECT_FALSE(factsOf({{1, 1}, {1, 1.5}, {1, 2}}).looksLikeDegrees);
    EXPECT_FALSE(factsOf({{0, 0}, {0, 0}, {0, 0}}).looksLikeDegrees) << "a logger that stood still";
    EXPECT_FALSE(factsOf({{10.001, 5}, {10.002, 5}, {10.003, 5}}).looksLikeDegrees)
        << "a receiver of millimetres that stood still";
    EXPECT_FALSE(factsOf({{12, 9}}).looksLikeDegrees);
}

TEST(SurveyFacts, TakePositionsFarFromTheOriginForMetresHoweverShortTheSteps) {
    const double step = 1e-5;
    EXPECT_FALSE(factsOf({{181, 10}, {181 + step, 10}, {181, 10}}).looksLikeDegrees);
    EXPECT_FALSE(factsOf({{95, 91}, {95 + step, 91}, {95, 91}}).looksLikeDegrees);
    EXPECT_TRUE(factsOf({{180, -90}, {180 - step, -90}, {180, -90}}).looksLikeDegrees);
}

}  // namespace tessel
