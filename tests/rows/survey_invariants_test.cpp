// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/survey_invariants.h"

#include "support/made_survey.h"

namespace tessel {

namespace {

Survey sound() {
    return madeSurvey({{1, 2, 30, 40, 1}, {2, 2, 31, 41, 1}, {9, 2, 32, 42, 2}});
}

}  // namespace

TEST(SurveyInvariants, HoldForASoundSurveyAndForNone) {
    EXPECT_EQ(brokenInvariant(sound()), "");
    EXPECT_EQ(brokenInvariant(Survey{}), "");
}

TEST(SurveyInvariants, DoNotHoldForASurveyThatIsDamaged) {
    const std::pair<std::function<void(Survey&)>, const char*> damages[] = {
        {[](Survey& s) { s.NumSites = s.SiteData.capacity() + 1; }, "NumSites"},
        {[](Survey& s) { s.SiteID.pop_back(); }, "SiteID"},
        {[](Survey& s) { s.SourceLine.pop_back(); }, "SourceLine"},
        {[](Survey& s) { s.TrueDist.resize(1); }, "distances"},
        {[](Survey& s) { s.XDist.resize(5); }, "out of step"},
        {[](Survey& s) { s.SiteData(kEM1, 1) = std::numeric_limits<double>::quiet_NaN(); }, "column 2"},
        {[](Survey& s) { s.SiteData(kRow, 1) = 2; }, "row 1"},
        {[](Survey& s) { s.NumPoints[2] = 0; }, "row 2"},
        {[](Survey& s) { s.NumRows = s.RowIndex = 1; }, "behind"},
        {[](Survey& s) { s.NumRows = -1; }, "NumRows"},
        {[](Survey& s) { s.NumRows = s.RowIndex = 7, s.NumPoints[7] = 1; }, "row 7"},
    };
    for (const auto& [damage, part] : damages) {
        Survey survey = sound();
        damage(survey);
        EXPECT_NE(brokenInvariant(survey).find(part), std::string::npos) << part;
    }
}

}  // namespace tessel
