// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/turn_search.h"

#include "base/bounded.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

// A way of straight legs, some hardly longer than a chord, with a site every metre or so and sharp turns.
Survey waySharplyTurning(unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> turn(-3.1, 3.1), length(3, 40), noise(-0.4, 0.4);
    std::vector<MadeSite> sites;
    double x = 0, y = 0, heading = 0;
    for (int leg = 0; leg < 30; ++leg) {
        heading += turn(random);
        for (double left = length(random); left > 0; --left) {
            x += std::cos(heading);
            y += std::sin(heading);
            sites.push_back({x + noise(random), y + noise(random), 1, 2, 1, 0});
        }
    }
    return surveyWithRows(sites);
}

}  // namespace

TEST(TurnSearch, GivesNoRowThatIsShorterThanTheShortestAndNoSiteTwice) {
    int rows = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const Survey survey = waySharplyTurning(seed);
        const double* const x = survey.SiteData.column(kX);
        const double* const y = survey.SiteData.column(kY);
        SiteIndex end = 0;
        for (const IndexRange& row : rowsBetweenTurns(survey, {.chord = 8, .shortest = 12}).rows) {
            EXPECT_GE(row.first, end) << seed;
            end = row.last;
            EXPECT_GE(lengthBetween(x[row.first], y[row.first], x[end - 1], y[end - 1]), 12) << seed;
            ++rows;
        }
        EXPECT_LE(end, survey.NumSites);
    }
    EXPECT_GT(rows, 1000);
}

}  // namespace tessel
