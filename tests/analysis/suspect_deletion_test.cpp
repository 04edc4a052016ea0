// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/suspect_deletion.h"

#include "rows/row_detection.h"
#include "support/made_survey.h"
#include "support/survey_invariants.h"

namespace tessel {

namespace {

// Three rows; sites 1 to 3 and 6 to 7 lie at one place each.
Survey threeRows() {
    Survey survey = madeSurvey({{0, 0, 10, 1, 1},
                                {1, 0, 20, 2, 1},
                                {1, 0, 22, 4, 1},
                                {1, 0, 24, 9, 1},
                                {2, 0, 11, 3, 1},
                                {0, 9, 12, 3, 2},
                                {0, 18, 13, 3, 3},
                                {0, 18, 15, 5, 3}});
    Calculate_Distances(survey, 1);
    return survey;
}

SuspectParameters meansOfRepeated() {
    SuspectParameters parameters;
    parameters.uses[kRepeatedPlace] = true;
    parameters.repeated = RepeatedPlaces::kKeepMean;
    return parameters;
}

}  // namespace

TEST(DeletingSuspects, ClosesUpRowsThatLoseTheirLastSite) {
    Survey survey = threeRows();
    const Survey before = survey;
    DeletedSuspects deleted = deleteSuspects(survey, {{0, 1}, {5, 6}}, {});
    EXPECT_FALSE(deleted.rowsLost);
    EXPECT_EQ(readingsOf(survey, kEM1), (std::vector<double>{20, 22, 24, 11, 13, 15}));
    EXPECT_EQ(readingsOf(survey, kRow), (std::vector<double>{1, 1, 1, 1, 2, 2}));
    EXPECT_EQ(survey.NumRows, 2);
    EXPECT_EQ(brokenInvariant(survey), "");
    EXPECT_TRUE(deleted.difference.changesContent(survey));
    expectThereAndBack(survey, before, deleted.difference);
}

TEST(DeletingSuspects, GivesASiteThatStaysForOthersTheirMean) {
    Survey survey = threeRows();
    const Survey before = survey;
    DeletedSuspects deleted = deleteSuspects(survey, {{0, 1}, {2, 4}, {7, 8}}, meansOfRepeated());
    EXPECT_EQ(readingsOf(survey, kEM1), (std::vector<double>{22, 11, 12, 14}));
    EXPECT_EQ(readingsOf(survey, kEM2), (std::vector<double>{5, 3, 3, 4}));
    EXPECT_EQ(brokenInvariant(survey), "");
    expectThereAndBack(survey, before, deleted.difference);
}

TEST(DeletingSuspects, LeavesReadingsAloneWhereTheFirstGoesOrNoneDoes) {
    Survey survey = threeRows();
    deleteSuspects(survey, {{1, 2}, {4, 5}}, meansOfRepeated());
    EXPECT_EQ(readingsOf(survey, kEM1), (std::vector<double>{10, 22, 24, 12, 13, 15}));
    survey = threeRows();
    SuspectParameters first = meansOfRepeated();
    first.repeated = RepeatedPlaces::kKeepFirst;
    deleteSuspects(survey, {{2, 4}}, first);
    EXPECT_EQ(readingsOf(survey, kEM1), (std::vector<double>{10, 20, 11, 12, 13, 15}));
}

TEST(DeletingSuspects, OfAllSitesLeavesNoRow) {
    Survey survey = threeRows();
    const Survey before = survey;
    DeletedSuspects deleted = deleteSuspects(survey, {{0, 8}}, {});
    EXPECT_EQ(survey.NumSites, 0);
    EXPECT_EQ(survey.NumRows, 0);
    EXPECT_EQ(survey.RowIndex, 0);
    EXPECT_FALSE(deleted.rowsLost);
    expectThereAndBack(survey, before, deleted.difference);
}

TEST(DeletingSuspects, LosesRowsThatWereOfNoUseAndHaveAGapNow) {
    Survey survey = threeRows();
    survey.RowIndex = kMaxRows + 1;  // as a search leaves it that has stopped at its limit
    const Survey before = survey;
    DeletedSuspects deleted = deleteSuspects(survey, {{5, 6}}, {});
    EXPECT_TRUE(deleted.rowsLost);
    EXPECT_EQ(readingsOf(survey, kRow), std::vector<double>(7, 1));
    EXPECT_EQ(survey.NumRows, 1);
    EXPECT_TRUE(rowsAreUsable(survey));
    expectThereAndBack(survey, before, deleted.difference);
}

TEST(DeletingSuspects, NamesRulesAndParametersInTheRecord) {
    SuspectParameters parameters;
    parameters.uses.fill(true);
    const ActDescription act = deletionOfSuspects(threeRows(), parameters, 12, 3);
    EXPECT_EQ(act.order, "delete 12 suspicious sites");
    EXPECT_EQ(act.words, "Deleted 12 suspicious sites");
    const decltype(act.parameters) expected = {
        {"readings outside limits", "EM1 0 to 1000 mS/m, EM2 0 to 1000 mS/m"},
        {"spikes along the row", "5 neighbours on each side, 4 deviations"},
        {"readings unlike those around", "within 10 m, 4 deviations"},
        {"jumps out and back", "longer than 10 m"},
        {"repeated positions", "the first site stays"},
        {"positions at 0, 0 or far away", "10 times the median distance"},
        {"readings that stay the same", "10 sites or more"},
        {"readings that do not go together", "4 deviations"},
        {"flagged sites that were kept", "3"}};
    EXPECT_EQ(act.parameters, expected);
    parameters.uses.fill(false);
    parameters.uses[kRepeatedPlace] = true;
    parameters.repeated = RepeatedPlaces::kKeepLast;
    EXPECT_EQ(deletionOfSuspects(threeRows(), parameters, 1, 0).words, "Deleted 1 suspicious site");
    EXPECT_EQ(deletionOfSuspects(threeRows(), parameters, 1, 0).parameters,
              (decltype(act.parameters){{"repeated positions", "the last site stays"}}));
}

}  // namespace tessel
