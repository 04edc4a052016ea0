// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_turns.h"

#include "rows/row_detection.h"
#include "support/made_survey.h"
#include "support/made_walks.h"
#include "support/survey_invariants.h"

#include <numbers>

namespace tessel {

namespace {

// Larger than every step of a made walk.
constexpr double kNoGap = 30;

struct Outcome {
    RowScore kept;
    int rows = 0;
};

Outcome outcomeOf(MadeWalk& walk, double gap) {
    walk.survey.MinDistance = gap;
    const RowTurns found = findRowTurns(walk.survey, proposedTurnParameters(walk.survey));
    return {scoreRows(walk, rowsWithTurnsKept(walk.survey, found)), found.rows};
}

void expectFound(const WalkPlan& plan, double share) {
    MadeWalk walk = madeWalk(plan);
    const Outcome outcome = outcomeOf(walk, kNoGap);
    const auto kind = static_cast<int>(plan.kind);
    EXPECT_GE(outcome.kept.right, share) << kind << " noise " << plan.noise << " seed " << plan.seed;
    EXPECT_EQ(outcome.rows, walk.rows) << kind << " noise " << plan.noise << " seed " << plan.seed;
}

}  // namespace

TEST(RowsByTurns, FindsEveryRowAndNinetyEightSitesOfAHundredUpToNoiseOfThirtyCentimetres) {
    for (const WalkKind kind : {WalkKind::kBoustrophedon, WalkKind::kSpiral, WalkKind::kLoops})
        for (const double noise : {0.0, 0.1, 0.3})
            for (const unsigned seed : {11u, 12u, 13u})
                expectFound({.kind = kind, .noise = noise, .seed = seed}, 0.98);
}

TEST(RowsByTurns, FindsCurvedRowsAndThoseOfTwoBlocks) {
    for (const WalkKind kind : {WalkKind::kContour, WalkKind::kTwoBlocks})
        expectFound({.kind = kind, .noise = 0.3, .seed = 5}, 0.98);
}

TEST(RowsByTurns, LivesWithRepeatedPositionsRestsAndLostFixes) {
    for (const WalkKind kind : {WalkKind::kBoustrophedon, WalkKind::kLoops}) {
        expectFound({.kind = kind, .noise = 0.3, .repeated = 0.6, .seed = 1}, 0.98);
        expectFound({.kind = kind, .noise = 0.5, .rests = 30, .seed = 2}, 0.98);
        expectFound({.kind = kind, .noise = 0.3, .lost = 0.1, .seed = 3}, 0.98);
        expectFound({.kind = kind, .noise = 0.3, .repeated = 0.3, .rests = 10, .lost = 0.01, .seed = 4},
                    0.98);
    }
}

TEST(RowsByTurns, AreNeverWorseThanThoseByGapsWhereTheLoggerPaused) {
    for (const WalkKind kind : {WalkKind::kBoustrophedon, WalkKind::kLoops, WalkKind::kContour})
        for (const double noise : {0.0, 0.3}) {
            MadeWalk walk = madeWalk({.kind = kind, .noise = noise, .paused = true, .seed = 7});
            walk.survey.MinDistance = 5;
            ASSERT_EQ(Assign_Row(walk.survey), RowDetection::kAssigned);
            std::vector<int> byGaps;
            for (const double row : readingsOf(walk.survey, kRow))
                byGaps.push_back(static_cast<int>(row));
            EXPECT_GE(outcomeOf(walk, 5).kept.right, scoreRows(walk, byGaps).right);
        }
}

TEST(RowsByTurns, FindTurnsThatAreWiderThanTheChord) {
    std::vector<MadeSite> sites;
    constexpr double kRadius = 18;  // over a chord of 10 m the heading changes by less than 45 degrees
    for (int row = 0; row < 4; ++row) {
        const double up = row % 2 == 0 ? 1 : -1;
        for (int i = 0; i < 150; ++i)
            sites.push_back({row * 2 * kRadius, up > 0 ? i : 150.0 - i, 1, 2, 1, 0});
        for (int i = 0; i < 56; ++i) {
            const double angle = std::numbers::pi * i / 56;
            sites.push_back({row * 2 * kRadius + kRadius * (1 - std::cos(angle)),
                             (up > 0 ? 150 : 0) + up * kRadius * std::sin(angle), 1, 2, 1, 0});
        }
    }
    EXPECT_EQ(findRowTurns(surveyWithRows(sites), {.shortest = 50}).rows, 4);
}

TEST(RowsByTurns, SayWhatTheyHaveFound) {
    const Survey survey = surveyWalkedToAndFro(3);
    const RowTurns found = findRowTurns(survey, {.shortest = 20});
    EXPECT_EQ(found.rows, 3);
    EXPECT_EQ(found.longest, 40);
    EXPECT_EQ(found.shortest, 40);
    EXPECT_EQ(found.gaps, 0);
    EXPECT_EQ(found.sitesInTurns, std::count(found.row.begin(), found.row.end(), kInTurn));
    EXPECT_GE(found.sitesInTurns, 6);
    EXPECT_LE(found.sitesInTurns, 10);
    for (int site = 0; site <= 40; ++site)
        EXPECT_EQ(found.row[static_cast<std::size_t>(46 + site)], 2) << site;
}

TEST(RowsByTurns, HeedAngleAndShortestRow) {
    const Survey survey = surveyWalkedToAndFro(3);
    EXPECT_EQ(findRowTurns(survey, {.turnAngle = 179.9, .shortest = 0}).rows, 1);
    EXPECT_EQ(findRowTurns(survey, {.shortest = 40}).rows, 3);
    const RowTurns none = findRowTurns(survey, {.shortest = 41});
    EXPECT_EQ(none.rows, 0);
    EXPECT_EQ(none.sitesInTurns, survey.NumSites);
    EXPECT_EQ(none.longest, 0);
}

TEST(RowsByTurns, EndAtGapsAboveTheMinimumDistanceToo) {
    std::vector<double> gaps(60, 1.0);
    gaps[30] = 12;
    const Survey survey = surveyAlongX(gaps, 10);
    const RowTurns found = findRowTurns(survey, proposedTurnParameters(survey));
    EXPECT_EQ(found.gaps, 1);
    EXPECT_EQ(found.rows, 2);
    EXPECT_EQ(found.row[30], 1);
    EXPECT_EQ(found.row[31], 2);
    TurnParameters parameters = proposedTurnParameters(survey);
    parameters.gap = 0;
    EXPECT_EQ(findRowTurns(survey, parameters).rows, 1) << "a minimum distance of 0 ends no row";
}

TEST(RowsByTurns, ProposeAChordOfTenSteps) {
    Survey survey = surveyWalkedToAndFro(3);
    survey.MinDistance = 7;
    const TurnParameters proposed = proposedTurnParameters(survey);
    EXPECT_EQ(proposed.turnAngle, 45);
    EXPECT_EQ(proposed.chord, 10);
    EXPECT_EQ(proposed.shortest, 8);
    EXPECT_EQ(proposed.gap, 7);
    EXPECT_EQ(proposed.distanceMode, 1);
}

TEST(RowsByTurns, LeaveLostFixesAsideWhereTheSurveyHasNoMinimumDistance) {
    MadeWalk walk = madeWalk({.noise = 0.1, .lost = 0.01});
    const Outcome outcome = outcomeOf(walk, 0);
    EXPECT_EQ(outcome.rows, walk.rows);
    EXPECT_GT(outcome.kept.right, 0.98);
    walk.survey.MinDistance = 7;
    EXPECT_EQ(turnGap(walk.survey), 7);
}

TEST(RowsByTurns, OfFewSitesAreOneRow) {
    for (const int sites : {1, 2, 3}) {
        const Survey survey = surveyAlongX(std::vector<double>(static_cast<std::size_t>(sites - 1), 1), 0);
        const RowTurns found = findRowTurns(survey, proposedTurnParameters(survey));
        EXPECT_EQ(found.rows, 1);
        EXPECT_EQ(found.sitesInTurns, 0);
    }
    EXPECT_EQ(findRowTurns(Survey{}, proposedTurnParameters(Survey{})).rows, 0);
}

TEST(RowsByTurns, LiveWithSitesThatAreNoPlaceOnEarth) {
    std::vector<MadeSite> sites;
    for (const double x : {0.0, 1.0, 1e308, -1e308, 2.0, 1e200, 3.0, -1e155})
        sites.push_back({x, -x, 1, 2, 1, 0});
    const Survey survey = surveyWithRows(sites);
    const RowTurns found = findRowTurns(survey, proposedTurnParameters(survey));
    EXPECT_EQ(found.row.size(), sites.size());
    EXPECT_TRUE(std::isfinite(found.longest));
}

TEST(KeepingTurns, GivesTheirSitesToTheNearerRow) {
    const Survey survey = surveyWalkedToAndFro(2);
    RowTurns found = findRowTurns(survey, {.shortest = 20});
    for (std::size_t i = 0; i < found.row.size(); ++i)
        found.row[i] = i < 41 ? 1 : i < 46 ? kInTurn : 2;  // the way across: 5 sites, the middle one between
    const std::vector<int> rows = rowsWithTurnsKept(survey, found);
    EXPECT_EQ(std::count(rows.begin(), rows.end(), kInTurn), 0);
    EXPECT_EQ(rows[43], 1);
    EXPECT_EQ(rows[44], 2);
}

TEST(KeepingTurns, GivesThoseBeforeTheFirstAndBehindTheLastRowToThese) {
    const Survey survey = surveyAlongX(std::vector<double>(5, 1), 0);
    RowTurns found;
    found.row = {0, 0, 1, 2, 0, 0};
    found.rows = 2;
    EXPECT_EQ(rowsWithTurnsKept(survey, found), (std::vector<int>{1, 1, 1, 2, 2, 2}));
}

TEST(ApplyingRowsByTurns, NumbersTheRowsAndKeepsEverySite) {
    Survey survey = surveyWalkedToAndFro(4);
    const auto before = sitesIn(survey);
    const RowTurns found = findRowTurns(survey, proposedTurnParameters(survey));
    applyRowTurns(survey, found, TurnSites::kKeep);
    EXPECT_EQ(survey.NumRows, 4);
    EXPECT_EQ(brokenInvariant(survey), "");
    auto expected = before;
    const std::vector<int> rows = rowsWithTurnsKept(survey, found);
    for (std::size_t i = 0; i < expected.size(); ++i)
        expected[i].row = rows[i];
    EXPECT_TRUE(sitesIn(survey) == expected);
}

TEST(ApplyingRowsByTurns, DeletesTheSitesInTurnsAndKeepsEverythingInStep) {
    Survey survey = surveyWalkedToAndFro(4);
    const SiteIndex before = survey.NumSites;
    const RowTurns found = findRowTurns(survey, proposedTurnParameters(survey));
    applyRowTurns(survey, found, TurnSites::kDelete);
    EXPECT_GT(found.sitesInTurns, 0);
    EXPECT_EQ(survey.NumSites, before - found.sitesInTurns);
    EXPECT_EQ(survey.NumRows, 4);
    EXPECT_EQ(brokenInvariant(survey), "");
    std::vector<double> rows(found.row.begin(), found.row.end());
    std::erase(rows, kInTurn);
    EXPECT_EQ(readingsOf(survey, kRow), rows);
}

TEST(ApplyingRowsByTurns, IsTakenBackAndDoneAgainToTheBit) {
    for (const TurnSites inTurns : {TurnSites::kKeep, TurnSites::kDelete}) {
        Survey survey = surveyWalkedToAndFro(4);
        // Rows that no act could use: a search for them has stopped at its limit.
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            survey.SiteData(kRow, i) = static_cast<double>(i % 7 + (i < 20 ? 300 : 0));
        survey.RowIndex = kMaxRows + 1;
        Calculate_X_Distance(survey);
        const Survey before = survey;
        Difference difference =
            applyRowTurns(survey, findRowTurns(survey, proposedTurnParameters(survey)), inTurns);
        EXPECT_EQ(brokenInvariant(survey), "");
        EXPECT_EQ(survey.NumRows, 4);
        expectThereAndBack(survey, before, difference);
    }
}

TEST(ApplyingRowsByTurns, ForgetsTheRowsThatWere) {
    Survey survey = surveyWithRows({{0, 0, 1, 1, 1}, {1, 0, 1, 1, 2}, {2, 0, 1, 1, 3}});
    survey.NumPoints[7] = 7;
    RowTurns found;
    found.row = {1, 1, 1};
    found.rows = 1;
    applyRowTurns(survey, found, TurnSites::kDelete);
    EXPECT_EQ(survey.NumRows, 1);
    EXPECT_EQ(survey.RowIndex, 1);
    EXPECT_EQ(survey.NumPoints[1], 3);
    EXPECT_EQ(survey.NumPoints[2], 0);
    EXPECT_EQ(survey.NumPoints[7], 0);
}

}  // namespace tessel
