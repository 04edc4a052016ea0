// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/journal.h"

#include "analysis/em_adjustment.h"
#include "base/run_time_error.h"
#include "base/session.h"
#include "plots/site_masking.h"
#include "rows/row_acts.h"
#include "rows/row_editing.h"
#include "rows/row_selection.h"
#include "support/failing_allocations.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

constexpr std::size_t kRoom = std::size_t{1} << 30;
const ActDescription kAnyAct{ActKind::kAdjust, "do", "Done", {}};

Survey threeRows() {
    return madeSurvey({{0, 0, 10, 1, 1, 1},
                       {1, 0, 11, 2, 1, 2},
                       {2, 0, 12, 3, 1, 3},
                       {40, 5, 13, 4, 2, 4},
                       {41, 5, 14, 5, 2, 5},
                       {80, 9, 15, 6, 3, 6}});
}

struct OneSurvey {
    explicit OneSurvey(Survey survey = threeRows(), std::size_t room = kRoom) : journal(room) {
        journal.replaceSurvey({ActKind::kImport, "import a.dat", "Imported a.dat", {}}, std::move(survey));
    }

    void deleteRow(int row) {
        journal.perform(deletionOfRow(journal.survey(), row),
                        [row](Survey& survey) { return Delete_Row(survey, row); });
    }
    void join(int row) {
        journal.perform(joinOf(row, row + 1),
                        [row](Survey& survey) { return Joint_Row(survey, row, row + 1); });
    }
    RowDetection findRows(int measure, double distance) {
        return journal
            .perform(searchForRows(measure, distance),
                     [=](Survey& survey) { return Recalculate_Rows(survey, measure, distance); })
            .outcome;
    }
    void adjust(const AdjustmentRequest& request) {
        Adjustment done = adjustment(journal.survey(), request);
        ASSERT_TRUE(done.changesReadings());
        journal.perform(describe(done),
                        [&](Survey& survey) { return adjustReadings(survey, std::move(done)); });
    }
    void deletePicked(int row, const std::vector<SiteIndex>& points) {
        RowSelection selection;
        for (const SiteIndex point : points)
            selection.append(point);
        journal.recount(countPoints);
        journal.perform(deletionOfPicked(row, selection),
                        [&](Survey& survey) { return deleteSelectedSites(survey, row, selection); });
    }
    RemovedSites deleteMasked(SiteMaskArray mask) {
        return journal.perform(deletionOfMasked(static_cast<SiteIndex>(mask.size())),
                               [&](Survey& survey) { return deleteMaskedSites(survey, mask); });
    }

    Journal journal;
};

// The last act, to and fro: the survey is what it was before and after it, to the bit.
void expectThereAndBack(OneSurvey& one, const Survey& before) {
    const Survey after = one.journal.survey();
    const std::size_t position = one.journal.position();
    for (int turn = 0; turn < 2; ++turn) {
        one.journal.goTo(position - 1);
        EXPECT_EQ(differences(one.journal.survey(), before), "") << "back, turn " << turn;
        one.journal.goTo(position);
        EXPECT_EQ(differences(one.journal.survey(), after), "") << "forth, turn " << turn;
    }
}

// Each of these on a survey whose distances are measured by none, one or all, or those in force are of other
// sites.
template <typename Act>
void expectThereAndBack(Act act) {
    for (const int measured : {0, 1, 2, 3, 4}) {
        SCOPED_TRACE(measured);
        Survey survey = threeRows();
        if (measured == 0) survey.TrueDist.clear();
        if (measured > 1) Calculate_X_Distance(survey);
        if (measured > 2) Calculate_Y_Distance(survey);
        if (measured > 3) survey.TrueDist.resize(3);
        OneSurvey one(survey);
        const Survey before = one.journal.survey();
        act(one);
        ASSERT_NE(differences(one.journal.survey(), before), "");
        expectThereAndBack(one, before);
    }
}

}  // namespace

TEST(Journal, TakesTheDeletionOfARowBackAndForth) {
    for (const int row : {1, 2, 3})
        expectThereAndBack([row](OneSurvey& one) { one.deleteRow(row); });
}

TEST(Journal, BringsCountsBackThatADeletedRowHasCountedAnew) {
    Survey survey = threeRows();
    survey.NumPoints.fill(7);
    OneSurvey one(survey);
    const Survey before = one.journal.survey();
    one.deleteRow(2);
    one.journal.goTo(1);
    EXPECT_EQ(differences(one.journal.survey(), before), "");
}

TEST(Journal, TakesSitesPickedOnARowBackAndForth) {
    expectThereAndBack([](OneSurvey& one) { one.deletePicked(1, {2}); });
    expectThereAndBack([](OneSurvey& one) { one.deletePicked(1, {3, 1, 2}); });
    expectThereAndBack([](OneSurvey& one) { one.deletePicked(3, {1}); });
}

TEST(Journal, TakesSitesMaskedOnTheMapBackAndForthWithTheStorage) {
    expectThereAndBack([](OneSurvey& one) { one.deleteMasked({1, 0, 1, 0, 0, 0}); });
    expectThereAndBack([](OneSurvey& one) { one.deleteMasked({0, 0, 0, 1, 1, 0}); });
    expectThereAndBack([](OneSurvey& one) { one.deleteMasked({1, 1, 1, 1, 1, 1}); });
}

TEST(Journal, TakesJoinedRowsAndLostRowsBackAndForth) {
    expectThereAndBack([](OneSurvey& one) { one.join(1); });
    expectThereAndBack([](OneSurvey& one) { one.journal.perform(lossOfRows(), makeOneRow); });
}

TEST(Journal, TakesASearchForRowsBackAndForth) {
    for (const int measure : {1, 2, 3})
        expectThereAndBack([measure](OneSurvey& one) { one.findRows(measure, 0.5); });
}

TEST(Journal, BringsTheRowsBackThatTooManyRowsHaveSpoilt) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 300; ++i)
        sites.push_back({10.0 * i, 0, 1, 1, 1.0 + i / 100});
    OneSurvey one(madeSurvey(sites));
    const Survey before = one.journal.survey();
    EXPECT_EQ(one.findRows(1, 5), RowDetection::kTooManyRows);
    expectThereAndBack(one, before);
}

TEST(Journal, TakesAdjustmentsBackAndForthToTheLastDigit) {
    expectThereAndBack([](OneSurvey& one) { one.adjust({AdjustmentKind::kAddToEM1, "0.1", "", "", ""}); });
    expectThereAndBack([](OneSurvey& one) { one.adjust({AdjustmentKind::kAddToEM2, "", "-2.8", "", ""}); });
    expectThereAndBack([](OneSurvey& one) { one.adjust({AdjustmentKind::kScale, "", "", "1.1", "3"}); });
}

TEST(Journal, BringsBackTheSurveyThatAnImportReplaced) {
    OneSurvey one;
    const Survey before = one.journal.survey();
    one.journal.replaceSurvey({ActKind::kImport, "import b.dat", "Imported b.dat", {}},
                              surveyOfReadings({1, 2, 3}));
    EXPECT_EQ(one.journal.survey().NumSites, 3);
    EXPECT_EQ(one.journal.survey().importNumber, 2);
    expectThereAndBack(one, before);
}

TEST(Journal, LetsTotalsOfAdjustmentsGoOnAcrossAnImport) {
    OneSurvey one;
    one.adjust({AdjustmentKind::kAddToEM1, "2", "", "", ""});
    one.adjust({AdjustmentKind::kAddToEM2, "", "3", "", ""});
    one.journal.replaceSurvey(kAnyAct, threeRows());
    EXPECT_EQ(one.journal.survey().EMAdjustTotalA, 2);
    EXPECT_EQ(one.journal.survey().EMAdjustTotalB, 3);
}

TEST(Journal, EmptiesDistancesThatWereMeasuredForAPlotSinceTheAct) {
    OneSurvey one;
    const Survey before = one.journal.survey();
    one.deleteRow(2);
    one.journal.remeasure([](const Survey& survey, SurveyCounts& counts, DistanceArrays& distances) {
        measureDistances(survey, 2, counts, distances);
    });
    ASSERT_FALSE(one.journal.survey().XDist.empty());
    expectThereAndBack(one, before);
}

TEST(Journal, KeepsWhatWasCountedSinceTheAct) {
    OneSurvey one;
    one.deleteRow(2);
    one.journal.recount(findExtents);
    const Survey after = one.journal.survey();
    one.journal.goTo(1);
    one.journal.goTo(2);
    EXPECT_EQ(differences(one.journal.survey(), after), "");
}

TEST(Journal, LeadsBackToNoParametersOfAnImportThatWasOnlyPrepared) {
    for (const int act : {1, 2, 3}) {
        OneSurvey one;
        one.findRows(1, 7);
        const Survey before = one.journal.survey();
        SurveyParameters typed = one.journal.survey();
        typed.MinDistance = 3;
        typed.EMCutoff = -10;
        one.journal.setParameters(typed);
        typed.MinDistance = 4;
        one.journal.setParameters(typed);
        EXPECT_EQ(one.journal.survey().MinDistance, 4);
        if (act == 1) one.deleteRow(2);
        if (act == 2) one.journal.replaceSurvey(kAnyAct, threeRows());
        if (act == 3) one.journal.goTo(1), one.journal.goTo(2);
        if (act < 3)
            expectThereAndBack(one, before);
        else
            EXPECT_EQ(differences(one.journal.survey(), before), "");
    }
}

TEST(Journal, SaysOfEachActWhatWhenAndHowMuchWasLeft) {
    OneSurvey one;
    const auto start = std::chrono::system_clock::now();
    one.deleteRow(2);
    const Act& act = one.journal.act(1);
    EXPECT_EQ(act.order, "delete row 2");
    EXPECT_EQ(act.words, "Deleted row 2 with its 2 sites");
    EXPECT_EQ(act.sites, 4);
    EXPECT_EQ(act.rows, 2);
    EXPECT_GE(act.time, start);
    EXPECT_LE(act.time, std::chrono::system_clock::now());
}

TEST(Journal, ForgetsWhatWasTakenBackWhenSomethingElseIsDone) {
    OneSurvey one;
    one.deleteRow(3);
    one.join(1);
    one.journal.goTo(1);
    EXPECT_EQ(one.journal.positionAfter(), 2U);
    one.deleteRow(1);
    EXPECT_EQ(one.journal.size(), 2U);
    EXPECT_EQ(one.journal.act(1).order, "delete row 1");
    EXPECT_EQ(one.journal.positionAfter(), one.journal.position());
    EXPECT_EQ(one.journal.bytes(),
              one.journal.act(0).difference.bytes() + one.journal.act(1).difference.bytes());
}

TEST(Journal, KeepsWhatWasTakenBackWhenAnActFails) {
    OneSurvey one;
    one.deleteRow(3);
    one.journal.goTo(1);
    const auto fail = [](Survey&) -> Difference { throw RunTimeError::overflow(); };
    EXPECT_THROW(one.journal.perform(kAnyAct, fail), RunTimeError);
    EXPECT_EQ(one.journal.size(), 2U);
    EXPECT_EQ(one.journal.position(), 1U);
    EXPECT_EQ(one.journal.positionAfter(), 2U);
}

TEST(Journal, KnowsWhetherTheSurveyIsTheExportedOne) {
    OneSurvey one;
    EXPECT_FALSE(one.journal.isExported());
    one.journal.noteExport();
    EXPECT_TRUE(one.journal.isExported());
    one.deleteRow(2);
    EXPECT_FALSE(one.journal.isExported());
    one.journal.goTo(1);
    EXPECT_TRUE(one.journal.isExported());
    one.journal.goTo(0);
    EXPECT_FALSE(one.journal.isExported());
    one.journal.goTo(2);
    one.journal.noteExport();
    one.journal.goTo(1);
    EXPECT_FALSE(one.journal.isExported());
    one.deleteRow(1);
    EXPECT_FALSE(one.journal.isExported());
}

TEST(Journal, AnActThatChangesNothingInAFileLeavesTheSurveyExported) {
    OneSurvey one;
    one.findRows(1, 20);
    one.journal.noteExport();
    one.findRows(1, 21);
    EXPECT_TRUE(one.journal.isExported());
    one.adjust({AdjustmentKind::kAddToEM1, "0", "", "", ""});
    EXPECT_TRUE(one.journal.isExported());
    one.findRows(1, 0.5);
    EXPECT_FALSE(one.journal.isExported());
}

TEST(Journal, PassesStatesInWhichTheSurveyCannotRest) {
    OneSurvey one;
    one.deleteMasked({0, 0, 0, 1, 1, 0});
    one.journal.cannotRest();
    one.deleteMasked({1, 0, 0, 0});
    one.journal.cannotRest();
    one.journal.perform(lossOfRows(), makeOneRow);
    EXPECT_EQ(one.journal.positionBefore(), 1U);
    one.journal.goTo(1);
    EXPECT_EQ(one.journal.positionAfter(), 4U);
    EXPECT_EQ(one.journal.positionBefore(), 0U);
    one.journal.goTo(0);
    EXPECT_EQ(one.journal.positionBefore(), 0U);
}

TEST(Journal, FindsTheNearestStateInWhichTheSurveyCanRest) {
    OneSurvey one;
    one.deleteMasked({0, 0, 0, 1, 1, 0});
    one.journal.cannotRest();
    EXPECT_EQ(one.journal.restNear(2), 1U) << "none behind it";
    one.journal.perform(lossOfRows(), makeOneRow);
    EXPECT_EQ(one.journal.restNear(2), 3U);
    EXPECT_EQ(one.journal.restNear(0), 0U);
}

TEST(Journal, KnowsThatAnActWhichItForgotAtOnceLeftNoRest) {
    OneSurvey one(threeRows(), 10);
    one.deleteMasked({0, 0, 0, 1, 1, 0});
    one.journal.cannotRest();
    EXPECT_FALSE(one.journal.canRestAt(0));
}

TEST(Journal, SaysThatTheSurveyHasChangedWithEveryStep) {
    OneSurvey one;
    const std::uint64_t before = surveyChanges();
    one.deleteRow(2);
    one.journal.goTo(0);
    EXPECT_EQ(surveyChanges(), before + 3);
}

TEST(Journal, GoesNoFurtherThanItsLastAct) {
    OneSurvey one;
    one.deleteRow(2);
    const Survey last = one.journal.survey();
    one.journal.goTo(7);
    EXPECT_EQ(one.journal.position(), 2U);
    EXPECT_EQ(differences(one.journal.survey(), last), "");
}

TEST(Journal, KeepsTheSurveysOwnParametersWhereItStaysWhereItIs) {
    OneSurvey one;
    one.deleteRow(2);
    const double own = one.journal.survey().MinDistance;
    SurveyParameters typed = one.journal.survey();
    typed.MinDistance = own + 1;
    one.journal.setParameters(typed);
    one.journal.goTo(2);
    one.deleteRow(1);
    one.journal.goTo(2);
    EXPECT_EQ(one.journal.survey().MinDistance, own);
}

TEST(Journal, CountsTheRowsAfterAnAct) {
    OneSurvey one;
    one.deleteMasked({1, 1, 1, 1, 1, 1});
    EXPECT_EQ(one.journal.act(1).rows, 0) << "no site is left";
    one.journal.goTo(1);
    std::vector<MadeSite> sites;
    for (int i = 0; i < 300; ++i)
        sites.push_back({10.0 * i, 0, 1, 1, 1});
    OneSurvey many(madeSurvey(sites));
    many.findRows(1, 5);
    EXPECT_GT(many.journal.act(1).rows, kMaxRows) << "too many";
}

TEST(Journal, KnowsHowMenusStoodAfterEachAct) {
    OneSurvey one;
    one.journal.noteMenus(5);
    one.deleteRow(1);
    EXPECT_EQ(one.journal.menus(), 5U);
    one.journal.noteMenus(7);
    one.journal.goTo(1);
    EXPECT_EQ(one.journal.menus(), 5U);
    one.journal.goTo(0);
    EXPECT_EQ(one.journal.menus(), 0U);
    one.journal.goTo(2);
    EXPECT_EQ(one.journal.menus(), 7U);
}

TEST(Journal, ForgetsTheOldestActsAboveItsLimit) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 1000; ++i)
        sites.push_back({1.0 * i, 0, 1, 1, 1});
    OneSurvey one(madeSurvey(sites), 100'000);
    for (int i = 0; i < 20; ++i) {
        one.adjust({AdjustmentKind::kAddToEM1, "1", "", "", ""});
        one.journal.noteMenus(9);
        EXPECT_LE(one.journal.bytes(), 100'000U);
    }
    EXPECT_GT(one.journal.forgotten(), 5U);
    EXPECT_EQ(one.journal.size() + one.journal.forgotten(), 21U);
    one.journal.goTo(0);
    EXPECT_EQ(one.journal.survey().EMAdjustTotalA, static_cast<double>(one.journal.forgotten()) - 1);
    EXPECT_TRUE(one.journal.canRestAt(0));
    EXPECT_EQ(one.journal.menus(), 9U) << "of the last act that is forgotten";
}

TEST(Journal, AnActLargerThanItsLimitIsDoneAndForgotten) {
    OneSurvey one(threeRows(), 10);
    EXPECT_EQ(one.journal.size(), 0U);
    EXPECT_EQ(one.journal.forgotten(), 1U);
    EXPECT_EQ(one.journal.survey().NumSites, 6);
    one.journal.noteExport();
    EXPECT_TRUE(one.journal.isExported());
    one.adjust({AdjustmentKind::kAddToEM1, "1", "", "", ""});
    EXPECT_FALSE(one.journal.isExported());
}

TEST(Journal, ActsHoldNoMoreThanWhatTheyChange) {
    constexpr SiteIndex kSites = 100'000;
    OneSurvey one(surveyOfReadings(
        kSites, [](SiteIndex i) { return static_cast<double>(i); }, [](SiteIndex) { return 0.0; }));
    const std::size_t before = one.journal.bytes();
    one.adjust({AdjustmentKind::kAddToEM1, "1", "", "", ""});
    EXPECT_LE(one.journal.bytes() - before,
              static_cast<std::size_t>(one.journal.survey().SiteData.capacity()) * 8 + 5000);
    const std::size_t adjusted = one.journal.bytes();
    SiteMaskArray mask(kSites);
    for (std::size_t i = 0; i < mask.size(); i += 100)
        mask[i] = 1;
    one.deleteMasked(mask);
    // Eight columns, lines and a run for each, and what does not grow.
    EXPECT_LE(one.journal.bytes() - adjusted, kSites / 100 * (9 * 8 + 4 + 16 + 3 * 8) + 5000U);
}

TEST(Journal, HoldsTheLinesOfASurveyThatWasReplaced) {
    Survey survey = threeRows();
    OneSurvey one(survey);
    survey.SourceLine.resize(10'000);
    OneSurvey lined(survey);
    const std::size_t without = one.journal.bytes(), with = lined.journal.bytes();
    one.journal.replaceSurvey(kAnyAct, threeRows());
    lined.journal.replaceSurvey(kAnyAct, threeRows());
    EXPECT_GE(lined.journal.bytes() - with, one.journal.bytes() - without + 39'000);
}

TEST(Journal, WithoutMemoryOnTheWayTheSurveyReturnsToWhereItCanRest) {
    OneSurvey one;
    one.deleteMasked({0, 0, 0, 1, 1, 0});
    one.journal.cannotRest();
    one.journal.perform(lossOfRows(), makeOneRow);
    one.journal.goTo(1);
    const Survey before = one.journal.survey();
    try {
        const FailingAllocations failing(0);
        one.journal.goTo(3);
        ADD_FAILURE() << "no memory was needed";
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(one.journal.position(), 1U);
        EXPECT_EQ(differences(one.journal.survey(), before), "");
    }
}

TEST(Journal, WithoutMemoryForTheWayBackTheSurveyStays) {
    for (const bool masked : {true, false}) {
        bool done = false;
        for (long successes = 0; !done && successes < 100; ++successes) {
            OneSurvey one;
            if (masked)
                one.deleteMasked({1, 0, 1, 0, 0, 0});
            else
                one.deleteRow(2);
            const Survey after = one.journal.survey();
            try {
                const FailingAllocations failing(successes);
                one.journal.goTo(1);
                done = !failing.hasFailed();
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(differences(one.journal.survey(), after), "") << successes;
                EXPECT_EQ(one.journal.position(), 2U);
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
        OneSurvey one(randomRows(random, 8, 30));
        std::vector<Survey> states = {Survey{}, one.journal.survey()};
        for (int step = 0; step < 40; ++step) {
            const Survey& survey = one.journal.survey();
            const auto note = [&] {
                states.resize(one.journal.position());
                states.push_back(survey);
            };
            const int act = below(8);
            if (act < 2 || survey.NumSites == 0 || survey.RowIndex > kMaxRows) {
                const auto to = static_cast<std::size_t>(below(static_cast<int>(states.size())));
                one.journal.goTo(to);
                ASSERT_EQ(differences(survey, states[to]), "") << session << ", " << step;
                continue;
            }
            one.journal.recount(countPoints);
            states[one.journal.position()] = survey;
            if (act == 2) one.deleteRow(1 + below(survey.NumRows));
            if (act == 3 && survey.NumRows == 1) continue;
            if (act == 3) one.join(1 + below(survey.NumRows - 1));
            if (act == 4) one.findRows(1 + below(3), below(40) / 4.0);
            if (act == 5) one.adjust({AdjustmentKind::kScale, "", "", "1.01", "0.3"});
            if (act == 6) {
                SiteMaskArray mask(static_cast<std::size_t>(survey.NumSites));
                for (std::uint8_t& mark : mask)
                    mark = below(5) == 0 ? 1 : 0;
                one.deleteMasked(mask);
                if (survey.NumSites > 0 && !ValidateRowInfo(survey)) {
                    note();
                    one.journal.perform(lossOfRows(), makeOneRow);
                }
            }
            if (act == 7) one.deletePicked(1 + below(survey.NumRows), {1});
            note();
        }
    }
}

}  // namespace tessel
