// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/journal.h"

#include "base/run_time_error.h"
#include "base/session.h"
#include "rows/row_acts.h"
#include "rows/row_editing.h"
#include "support/failing_allocations.h"
#include "support/made_acts.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

const ActDescription kAnyAct{ActKind::kAdjust, "do", "Done", {}};

Survey threeRows() {
    return madeSurvey({{0, 0, 10, 1, 1, 1},
                       {1, 0, 11, 2, 1, 2},
                       {2, 0, 12, 3, 1, 3},
                       {40, 5, 13, 4, 2, 4},
                       {41, 5, 14, 5, 2, 5},
                       {80, 9, 15, 6, 3, 6}});
}

// The last act, to and fro: the survey is what it was before and after it, to the bit.
void expectThereAndBack(Journal& journal, const Survey& before) {
    const Survey after = journal.survey();
    const std::size_t position = journal.position();
    for (int turn = 0; turn < 2; ++turn) {
        journal.goTo(position - 1);
        EXPECT_EQ(differences(journal.survey(), before), "") << "back, turn " << turn;
        journal.goTo(position);
        EXPECT_EQ(differences(journal.survey(), after), "") << "forth, turn " << turn;
    }
}

// An act on a survey whose distances are measured by none, one or all, or those in force are of other
// sites.
void expectThereAndBack(const std::function<void(Journal&)>& act) {
    for (const int measured : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(measured);
        Survey survey = threeRows();
        if (measured == 0) survey.TrueDist.clear();
        if (measured > 1) Calculate_X_Distance(survey);
        if (measured > 2) Calculate_Y_Distance(survey);
        if (measured > 3) survey.TrueDist.resize(3);
        Journal journal = journalOf(survey);
        const Survey before = journal.survey();
        act(journal);
        ASSERT_NE(differences(journal.survey(), before), "");
        expectThereAndBack(journal, before);
    }
}

}  // namespace

TEST(Journal, TakesEveryActBackAndForthToTheBit) {
    using Kind = AdjustmentKind;
    const std::function<void(Journal&)> acts[] = {
        [](Journal& journal) { deleteRow(journal, 1); },
        [](Journal& journal) { deleteRow(journal, 2); },
        [](Journal& journal) { deleteRow(journal, 3); },
        [](Journal& journal) { deletePicked(journal, 1, {2}); },
        [](Journal& journal) {
            deletePicked(journal, 1, {3, 1, 2});
        },
        [](Journal& journal) { deletePicked(journal, 3, {1}); },
        [](Journal& journal) {
            deleteMasked(journal, {1, 0, 1, 0, 0, 0});
        },
        [](Journal& journal) {
            deleteMasked(journal, {0, 0, 0, 1, 1, 0});
        },
        [](Journal& journal) {
            deleteMasked(journal, {1, 1, 1, 1, 1, 1});
        },
        [](Journal& journal) { joinRows(journal, 1); },
        [](Journal& journal) { journal.perform(lossOfRows(), makeOneRow); },
        [](Journal& journal) { findRows(journal, 1, 0.5); },
        [](Journal& journal) { findRows(journal, 2, 0.5); },
        [](Journal& journal) { findRows(journal, 3, 0.5); },
        [](Journal& journal) {
            adjust(journal, {Kind::kAddToEM1, "0.1", "", "", ""});
        },
        [](Journal& journal) {
            adjust(journal, {Kind::kAddToEM2, "", "-2.8", "", ""});
        },
        [](Journal& journal) {
            adjust(journal, {Kind::kScale, "", "", "1.1", "3"});
        }};
    for (const auto& act : acts) {
        SCOPED_TRACE(&act - acts);
        expectThereAndBack(act);
    }
}

TEST(Journal, BringsCountsBackThatADeletedRowHasCountedAnew) {
    Survey survey = threeRows();
    survey.NumPoints.fill(7);
    Journal journal = journalOf(survey);
    const Survey before = journal.survey();
    deleteRow(journal, 2);
    journal.goTo(1);
    EXPECT_EQ(differences(journal.survey(), before), "");
}

TEST(Journal, BringsTheRowsBackThatTooManyRowsHaveSpoilt) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 300; ++i)
        sites.push_back({10.0 * i, 0, 1, 1, 1.0 + i / 100});
    Journal journal = journalOf(madeSurvey(sites));
    const Survey before = journal.survey();
    EXPECT_EQ(findRows(journal, 1, 5), RowDetection::kTooManyRows);
    expectThereAndBack(journal, before);
}

TEST(Journal, BringsBackTheSurveyThatAnImportReplaced) {
    Journal journal = journalOf(threeRows());
    const Survey before = journal.survey();
    journal.replaceSurvey({ActKind::kImport, "import b.dat", "Imported b.dat", {}},
                          surveyOfReadings({1, 2, 3}));
    EXPECT_EQ(journal.survey().NumSites, 3);
    EXPECT_EQ(journal.survey().importNumber, 2);
    expectThereAndBack(journal, before);
}

TEST(Journal, LetsTotalsOfAdjustmentsGoOnAcrossAnImport) {
    Journal journal = journalOf(threeRows());
    adjust(journal, {AdjustmentKind::kAddToEM1, "2", "", "", ""});
    adjust(journal, {AdjustmentKind::kAddToEM2, "", "3", "", ""});
    journal.replaceSurvey(kAnyAct, threeRows());
    EXPECT_EQ(journal.survey().EMAdjustTotalA, 2);
    EXPECT_EQ(journal.survey().EMAdjustTotalB, 3);
}

TEST(Journal, EmptiesDistancesThatWereMeasuredForAPlotSinceTheAct) {
    Journal journal = journalOf(threeRows());
    const Survey before = journal.survey();
    deleteRow(journal, 2);
    journal.remeasure([](const Survey& survey, SurveyCounts& counts, DistanceArrays& distances) {
        measureDistances(survey, 2, counts, distances);
    });
    ASSERT_FALSE(journal.survey().XDist.empty());
    expectThereAndBack(journal, before);
}

TEST(Journal, KeepsWhatWasCountedSinceTheAct) {
    Journal journal = journalOf(threeRows());
    deleteRow(journal, 2);
    journal.recount(findExtents);
    const Survey after = journal.survey();
    journal.goTo(1);
    journal.goTo(2);
    EXPECT_EQ(differences(journal.survey(), after), "");
}

TEST(Journal, LeadsBackToNoParametersOfAnImportThatWasOnlyPrepared) {
    for (const int act : {1, 2, 3}) {
        Journal journal = journalOf(threeRows());
        findRows(journal, 1, 7);
        const Survey before = journal.survey();
        SurveyParameters typed = journal.survey();
        typed.MinDistance = 3;
        typed.EMCutoff = -10;
        journal.setParameters(typed);
        typed.MinDistance = 4;
        journal.setParameters(typed);
        EXPECT_EQ(journal.survey().MinDistance, 4);
        if (act == 1) deleteRow(journal, 2);
        if (act == 2) journal.replaceSurvey(kAnyAct, threeRows());
        if (act == 3) journal.goTo(1), journal.goTo(2);
        if (act < 3)
            expectThereAndBack(journal, before);
        else
            EXPECT_EQ(differences(journal.survey(), before), "");
    }
}

TEST(Journal, SaysOfEachActWhatWhenAndHowMuchWasLeft) {
    Journal journal = journalOf(threeRows());
    const auto start = std::chrono::system_clock::now();
    deleteRow(journal, 2);
    const Act& act = journal.act(1);
    EXPECT_EQ(act.order, "delete row 2");
    EXPECT_EQ(act.words, "Deleted row 2 with its 2 sites");
    EXPECT_EQ(act.sites, 4);
    EXPECT_EQ(act.rows, 2);
    EXPECT_GE(act.time, start);
    EXPECT_LE(act.time, std::chrono::system_clock::now());
}

TEST(Journal, ForgetsWhatWasTakenBackWhenSomethingElseIsDone) {
    Journal journal = journalOf(threeRows());
    deleteRow(journal, 3);
    joinRows(journal, 1);
    journal.goTo(1);
    EXPECT_EQ(journal.positionAfter(), 2U);
    deleteRow(journal, 1);
    EXPECT_EQ(journal.size(), 2U);
    EXPECT_EQ(journal.act(1).order, "delete row 1");
    EXPECT_EQ(journal.positionAfter(), journal.position());
    EXPECT_EQ(journal.bytes(), journal.act(0).difference.bytes() + journal.act(1).difference.bytes());
}

TEST(Journal, KeepsWhatWasTakenBackWhenAnActFails) {
    Journal journal = journalOf(threeRows());
    deleteRow(journal, 3);
    journal.goTo(1);
    const auto fail = [](Survey&) -> Difference { throw RunTimeError::overflow(); };
    EXPECT_THROW(journal.perform(kAnyAct, fail), RunTimeError);
    EXPECT_EQ(journal.size(), 2U);
    EXPECT_EQ(journal.position(), 1U);
    EXPECT_EQ(journal.positionAfter(), 2U);
}

TEST(Journal, KnowsWhetherTheSurveyIsTheExportedOne) {
    Journal journal = journalOf(threeRows());
    EXPECT_FALSE(journal.isExported());
    journal.noteExport();
    EXPECT_TRUE(journal.isExported());
    deleteRow(journal, 2);
    EXPECT_FALSE(journal.isExported());
    journal.goTo(1);
    EXPECT_TRUE(journal.isExported());
    journal.goTo(0);
    EXPECT_FALSE(journal.isExported());
    journal.goTo(2);
    journal.noteExport();
    journal.goTo(1);
    EXPECT_FALSE(journal.isExported());
    deleteRow(journal, 1);
    EXPECT_FALSE(journal.isExported());
}

TEST(Journal, AnActThatChangesNothingInAFileLeavesTheSurveyExported) {
    Journal journal = journalOf(threeRows());
    findRows(journal, 1, 20);
    journal.noteExport();
    findRows(journal, 1, 21);
    EXPECT_TRUE(journal.isExported());
    adjust(journal, {AdjustmentKind::kAddToEM1, "0", "", "", ""});
    EXPECT_TRUE(journal.isExported());
    findRows(journal, 1, 0.5);
    EXPECT_FALSE(journal.isExported());
}

TEST(Journal, PassesStatesInWhichTheSurveyCannotRest) {
    Journal journal = journalOf(threeRows());
    deleteMasked(journal, {0, 0, 0, 1, 1, 0});
    journal.cannotRest();
    deleteMasked(journal, {1, 0, 0, 0});
    journal.cannotRest();
    journal.perform(lossOfRows(), makeOneRow);
    EXPECT_EQ(journal.positionBefore(), 1U);
    journal.goTo(1);
    EXPECT_EQ(journal.positionAfter(), 4U);
    EXPECT_EQ(journal.positionBefore(), 0U);
    journal.goTo(0);
    EXPECT_EQ(journal.positionBefore(), 0U);
}

TEST(Journal, FindsTheNearestStateInWhichTheSurveyCanRest) {
    Journal journal = journalOf(threeRows());
    deleteMasked(journal, {0, 0, 0, 1, 1, 0});
    journal.cannotRest();
    EXPECT_EQ(journal.restNear(2), 1U) << "none behind it";
    journal.perform(lossOfRows(), makeOneRow);
    EXPECT_EQ(journal.restNear(2), 3U);
    EXPECT_EQ(journal.restNear(0), 0U);
}

TEST(Journal, KnowsThatAnActWhichItForgotAtOnceLeftNoRest) {
    Journal journal = journalOf(threeRows(), 10);
    deleteMasked(journal, {0, 0, 0, 1, 1, 0});
    journal.cannotRest();
    EXPECT_FALSE(journal.canRestAt(0));
}

TEST(Journal, SaysThatTheSurveyHasChangedWithEveryStep) {
    Journal journal = journalOf(threeRows());
    const std::uint64_t before = surveyChanges();
    deleteRow(journal, 2);
    journal.goTo(0);
    EXPECT_EQ(surveyChanges(), before + 3);
}

TEST(Journal, GoesNoFurtherThanItsLastAct) {
    Journal journal = journalOf(threeRows());
    deleteRow(journal, 2);
    const Survey last = journal.survey();
    journal.goTo(7);
    EXPECT_EQ(journal.position(), 2U);
    EXPECT_EQ(differences(journal.survey(), last), "");
}

TEST(Journal, KeepsTheSurveysOwnParametersWhereItStaysWhereItIs) {
    Journal journal = journalOf(threeRows());
    deleteRow(journal, 2);
    const double own = journal.survey().MinDistance;
    SurveyParameters typed = journal.survey();
    typed.MinDistance = own + 1;
    journal.setParameters(typed);
    journal.goTo(2);
    deleteRow(journal, 1);
    journal.goTo(2);
    EXPECT_EQ(journal.survey().MinDistance, own);
}

TEST(Journal, CountsTheRowsAfterAnAct) {
    Journal journal = journalOf(threeRows());
    deleteMasked(journal, {1, 1, 1, 1, 1, 1});
    EXPECT_EQ(journal.act(1).rows, 0) << "no site is left";
    journal.goTo(1);
    std::vector<MadeSite> sites;
    for (int i = 0; i < 300; ++i)
        sites.push_back({10.0 * i, 0, 1, 1, 1});
    Journal many = journalOf(madeSurvey(sites));
    findRows(many, 1, 5);
    EXPECT_GT(many.act(1).rows, kMaxRows) << "too many";
}

TEST(Journal, KnowsHowMenusStoodAfterEachAct) {
    Journal journal = journalOf(threeRows());
    journal.noteMenus(5);
    deleteRow(journal, 1);
    EXPECT_EQ(journal.menus(), 5U);
    journal.noteMenus(7);
    journal.goTo(1);
    EXPECT_EQ(journal.menus(), 5U);
    journal.goTo(0);
    EXPECT_EQ(journal.menus(), 0U);
    journal.goTo(2);
    EXPECT_EQ(journal.menus(), 7U);
}

TEST(Journal, ForgetsTheOldestActsAboveItsLimit) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 1000; ++i)
        sites.push_back({1.0 * i, 0, 1, 1, 1});
    Journal journal = journalOf(madeSurvey(sites), 100'000);
    for (int i = 0; i < 20; ++i) {
        adjust(journal, {AdjustmentKind::kAddToEM1, "1", "", "", ""});
        journal.noteMenus(9);
        EXPECT_LE(journal.bytes(), 100'000U);
    }
    EXPECT_GT(journal.forgotten(), 5U);
    EXPECT_EQ(journal.size() + journal.forgotten(), 21U);
    journal.goTo(0);
    EXPECT_EQ(journal.survey().EMAdjustTotalA, static_cast<double>(journal.forgotten()) - 1);
    EXPECT_TRUE(journal.canRestAt(0));
    EXPECT_EQ(journal.menus(), 9U) << "of the last act that is forgotten";
}

TEST(Journal, AnActLargerThanItsLimitIsDoneAndForgotten) {
    Journal journal = journalOf(threeRows(), 10);
    EXPECT_EQ(journal.size(), 0U);
    EXPECT_EQ(journal.forgotten(), 1U);
    EXPECT_EQ(journal.survey().NumSites, 6);
    journal.noteExport();
    EXPECT_TRUE(journal.isExported());
    adjust(journal, {AdjustmentKind::kAddToEM1, "1", "", "", ""});
    EXPECT_FALSE(journal.isExported());
}

TEST(Journal, ActsHoldNoMoreThanWhatTheyChange) {
    constexpr SiteIndex kSites = 100'000;
    Journal journal = journalOf(surveyOfReadings(
        kSites, [](SiteIndex i) { return static_cast<double>(i); }, [](SiteIndex) { return 0.0; }));
    const std::size_t before = journal.bytes();
    adjust(journal, {AdjustmentKind::kAddToEM1, "1", "", "", ""});
    EXPECT_LE(journal.bytes() - before,
              static_cast<std::size_t>(journal.survey().SiteData.capacity()) * 8 + 5000);
    const std::size_t adjusted = journal.bytes();
    SiteMaskArray mask(kSites);
    for (std::size_t i = 0; i < mask.size(); i += 100)
        mask[i] = 1;
    deleteMasked(journal, mask);
    // Eight columns, lines and a run for each, and what does not grow.
    EXPECT_LE(journal.bytes() - adjusted, kSites / 100 * (9 * 8 + 4 + 16 + 3 * 8) + 5000U);
}

TEST(Journal, HoldsTheLinesOfASurveyThatWasReplaced) {
    Survey survey = threeRows();
    Journal journal = journalOf(survey);
    survey.SourceLine.resize(10'000);
    Journal lined = journalOf(survey);
    const std::size_t without = journal.bytes(), with = lined.bytes();
    journal.replaceSurvey(kAnyAct, threeRows());
    lined.replaceSurvey(kAnyAct, threeRows());
    EXPECT_GE(lined.bytes() - with, journal.bytes() - without + 39'000);
}

TEST(Journal, WithoutMemoryOnTheWayTheSurveyReturnsToWhereItCanRest) {
    Journal journal = journalOf(threeRows());
    deleteMasked(journal, {0, 0, 0, 1, 1, 0});
    journal.cannotRest();
    journal.perform(lossOfRows(), makeOneRow);
    journal.goTo(1);
    const Survey before = journal.survey();
    try {
        const FailingAllocations failing(0);
        journal.goTo(3);
        ADD_FAILURE() << "no memory was needed";
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(journal.position(), 1U);
        EXPECT_EQ(differences(journal.survey(), before), "");
    }
}

TEST(Journal, WithoutMemoryForTheWayBackTheSurveyStays) {
    for (const bool masked : {true, false}) {
        bool done = false;
        for (long successes = 0; !done && successes < 100; ++successes) {
            Journal journal = journalOf(threeRows());
            if (masked)
                deleteMasked(journal, {1, 0, 1, 0, 0, 0});
            else
                deleteRow(journal, 2);
            const Survey after = journal.survey();
            try {
                const FailingAllocations failing(successes);
                journal.goTo(1);
                done = !failing.hasFailed();
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(differences(journal.survey(), after), "") << successes;
                EXPECT_EQ(journal.position(), 2U);
            }
        }
        EXPECT_TRUE(done);
    }
}

// Random acts on random surveys, and jumps among the states that they led to.
TEST(Journal, LeadsToEveryStateOfARandomSessionToTheBit) {
    std::mt19937 random(1505);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int session = 0; session < 40; ++session) {
        Journal journal = journalOf(randomRows(random, 8, 30));
        std::vector<Survey> states = {Survey{}, journal.survey()};
        for (int step = 0; step < 40; ++step) {
            const Survey& survey = journal.survey();
            const auto note = [&] {
                states.resize(journal.position());
                states.push_back(survey);
            };
            const int act = below(8);
            if (act < 2 || survey.NumSites == 0 || survey.RowIndex > kMaxRows) {
                const auto to = static_cast<std::size_t>(below(static_cast<int>(states.size())));
                journal.goTo(to);
                ASSERT_EQ(differences(survey, states[to]), "") << session << ", " << step;
                continue;
            }
            journal.recount(countPoints);
            states[journal.position()] = survey;
            if (act == 2) deleteRow(journal, 1 + below(survey.NumRows));
            if (act == 3 && survey.NumRows == 1) continue;
            if (act == 3) joinRows(journal, 1 + below(survey.NumRows - 1));
            if (act == 4) findRows(journal, 1 + below(3), below(40) / 4.0);
            if (act == 5) adjust(journal, {AdjustmentKind::kScale, "", "", "1.01", "0.3"});
            if (act == 6) {
                SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites));
                for (std::uint8_t& mark : mask)
                    mark = below(5) == 0 ? 1 : 0;
                deleteMasked(journal, mask);
                if (survey.NumSites > 0 && !ValidateRowInfo(survey)) {
                    note();
                    journal.perform(lossOfRows(), makeOneRow);
                }
            }
            if (act == 7) deletePicked(journal, 1 + below(survey.NumRows), {1});
            note();
        }
    }
}

}  // namespace tessel
