// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/em_adjustment.h"
#include "plots/site_masking.h"
#include "rows/row_editing.h"
#include "rows/row_selection.h"
#include "support/failing_allocations.h"
#include "support/made_survey.h"
#include "support/survey_bits.h"

namespace tessel {

// An act for which memory runs out is not done at all: the survey is the one before it, to the last entry.

namespace {

// Three rows; the distances of the measure in force have just enough room, as after an import, or none.
Survey madeSurvey(bool withDistances) {
    Survey survey = surveyWithRows({{0, 0, 10, 1, 1},
                                    {1, 0, 11, 2, 1},
                                    {2, 0, 12, 3, 1},
                                    {20, 5, 13, 4, 2},
                                    {21, 5, 14, 5, 2},
                                    {40, 9, 15, 6, 3}});
    survey.chooseDistance(1);
    Calculate_NumPoints(survey);
    if (withDistances)
        Calculate_Distance(survey);
    else
        survey.TrueDist = std::vector<double>();
    return survey;
}

// Runs the act with memory for no allocation, for one, for two, ... until it is done.
void expectWholeOrNotAtAll(const std::function<void(Survey&)>& act) {
    for (const bool withDistances : {true, false}) {
        bool done = false;
        for (long successes = 0; !done && successes < 100; ++successes) {
            Survey survey = madeSurvey(withDistances);
            const Survey before = survey;
            try {
                const FailingAllocations failing(successes);
                act(survey);
                done = !failing.hasFailed();
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(differences(survey, before), "") << "after " << successes << " allocations";
            }
        }
        EXPECT_TRUE(done);
    }
}

}  // namespace

TEST(OutOfMemory, LeavesTheSurveyAsItWasBeforeAnyAct) {
    const auto deletePoints = [](Survey& survey, int row, const std::vector<SiteIndex>& points) {
        RowSelection selection;
        for (const SiteIndex point : points)
            selection.append(point);
        deleteSelectedSites(survey, row, selection);
    };
    const std::pair<const char*, std::function<void(Survey&)>> acts[] = {
        {"a row is deleted", [](Survey& survey) { Delete_Row(survey, 2); }},
        {"sites of a row",
         [&](Survey& survey) {
             deletePoints(survey, 1, {1, 3});
         }},
        {"the last site of a row", [&](Survey& survey) { deletePoints(survey, 3, {1}); }},
        {"masked sites",
         [](Survey& survey) {
             SiteMaskArray SiteMask{0, 1, 0, 1, 0, 0};
             deleteMaskedSites(survey, SiteMask);
         }},
        {"rows are found anew", [](Survey& survey) { Recalculate_Rows(survey, 1, 0.5); }},
        {"by X", [](Survey& survey) { Recalculate_Rows(survey, 2, 0.5); }},
        {"by Y", [](Survey& survey) { Recalculate_Rows(survey, 3, 0.5); }},
        {"rows are joined", [](Survey& survey) { Joint_Row(survey, 1, 2); }}};
    for (const auto& [what, act] : acts) {
        SCOPED_TRACE(what);
        expectWholeOrNotAtAll(act);
    }
}

}  // namespace tessel
