// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/em_adjustment.h"

#include "base/run_time_error.h"
#include "support/made_survey.h"
#include "support/printed_number.h"

namespace tessel {

namespace {

using Readings = std::vector<double>;

AdjustmentRequest addToEM1(const std::string& text) {
    return {AdjustmentKind::kAddToEM1, text, "", "", ""};
}

AdjustmentRequest addToEM2(const std::string& text) {
    return {AdjustmentKind::kAddToEM2, "", text, "", ""};
}

AdjustmentRequest scaleBy(const std::string& factor1, const std::string& factor2) {
    return {AdjustmentKind::kScale, "", "", factor1, factor2};
}

struct Adjusted {
    Survey survey = surveyOfReadings({10, 20, 0, -4}, {1, 2, 3, 4});
    Adjustment outcome;

    void apply(const AdjustmentRequest& request) {
        outcome = adjustment(survey, request);
        if (outcome.changesReadings()) adjustReadings(survey, outcome);
        if (outcome.failure) std::rethrow_exception(outcome.failure);
    }
    Readings em1() const { return readingsOf(survey, kEM1); }
    Readings em2() const { return readingsOf(survey, kEM2); }
    bool untouched() const {
        return !outcome.changesReadings() && em1() == Readings{10, 20, 0, -4} &&
               em2() == Readings{1, 2, 3, 4} && survey.EMAdjustTotalA == 0 && survey.EMAdjustTotalB == 0;
    }
};

void expectRefused(const AdjustmentRequest& request, const std::string& message) {
    Adjusted adjusted;
    adjusted.apply(request);
    EXPECT_EQ(adjusted.outcome.refusal, message);
    EXPECT_TRUE(adjusted.untouched());
}

}  // namespace

TEST(Adjustment, AddsAConstantToOneColumnAndItsTotalOrScalesBoth) {
    const std::tuple<AdjustmentRequest, Readings, Readings, double, double> cases[] = {
        {addToEM1(" -2.5 "), {7.5, 17.5, -2.5, -6.5}, {1, 2, 3, 4}, -2.5, 0},
        {addToEM2("1e1"), {10, 20, 0, -4}, {11, 12, 13, 14}, 0, 10},
        {scaleBy("2.0", ".5"), {20, 40, 0, -8}, {0.5, 1, 1.5, 2}, 0, 0},
        {scaleBy("0.01", "0.01"),
         {10 * 0.01, 20 * 0.01, 0, -4 * 0.01},
         {0.01, 2 * 0.01, 3 * 0.01, 4 * 0.01},
         0,
         0}};
    for (const auto& [request, em1, em2, totalA, totalB] : cases) {
        Adjusted adjusted;
        adjusted.apply(request);
        EXPECT_EQ(adjusted.em1(), em1);
        EXPECT_EQ(adjusted.em2(), em2);
        EXPECT_EQ(adjusted.survey.EMAdjustTotalA, totalA);
        EXPECT_EQ(adjusted.survey.EMAdjustTotalB, totalB);
        EXPECT_TRUE(adjusted.outcome.changesReadings());
        EXPECT_TRUE(adjusted.outcome.refusal.empty());
    }
}

TEST(Adjustment, TotalsRunOnFromOneAdjustmentToTheNext) {
    Adjusted adjusted;
    adjusted.apply(addToEM1("3"));
    adjusted.apply(addToEM1("3"));
    adjusted.apply(addToEM2("-1"));
    adjusted.apply(scaleBy("2", "2"));
    EXPECT_EQ(adjusted.survey.EMAdjustTotalA, 6);
    EXPECT_EQ(adjusted.survey.EMAdjustTotalB, -1);
}

TEST(Adjustment, ScalesEM1OnlyOnASurveyWithOneReadingWhateverTheOtherFactorSays) {
    Adjusted adjusted;
    adjusted.survey.TwoEMColumns = false;
    adjusted.apply(scaleBy("2", "abc"));
    EXPECT_EQ(adjusted.em1(), (Readings{20, 40, 0, -8}));
    EXPECT_EQ(adjusted.em2(), (Readings{1, 2, 3, 4}));
    EXPECT_TRUE(adjusted.outcome.refusal.empty());
}

TEST(Adjustment, RefusesAShiftThatIsNoNumberInTheSameWordsForBothColumns) {
    for (const char* text : {"abc", "", " ", "1,5", "nan", "inf", "1e400", "0x10", "2.5 mS"}) {
        SCOPED_TRACE(text);
        expectRefused(addToEM1(text), "Error! Non-numeric shift factor detected.");
        expectRefused(addToEM2(text), "Error! Non-numeric shift factor detected.");
    }
}

TEST(Adjustment, RefusesAFactorOfEM1ThatIsNoNumberOrTooSmall) {
    expectRefused(scaleBy("abc", "1"), "Error! Non-numeric EM1 scale factor detected.");
    expectRefused(scaleBy("", "abc"), "Error! Non-numeric EM1 scale factor detected.");
    for (const char* small : {"0.0099", "0", "-1", "-1e300"})
        expectRefused(scaleBy(small, "abc"), "Error! EM1 Scale factor must be >= 0.01");
}

TEST(Adjustment, KeepsEM1ScaledWhenTheFactorOfEM2IsRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {"abc", "Error! Non-numeric EM2 scale factor detected."},
        {"", "Error! Non-numeric EM2 scale factor detected."},
        {"0", "Error! EM2 Scale factor must be >= 0.01"},
        {"0.0099", "Error! EM2 Scale factor must be >= 0.01"},
        {"-2", "Error! EM2 Scale factor must be >= 0.01"}};
    for (const auto& [text, message] : cases) {
        SCOPED_TRACE(text);
        Adjusted adjusted;
        adjusted.apply(scaleBy("2", text));
        EXPECT_EQ(adjusted.outcome.refusal, message);
        EXPECT_TRUE(adjusted.outcome.changesReadings());
        EXPECT_EQ(adjusted.em1(), (Readings{20, 40, 0, -8}));
        EXPECT_EQ(adjusted.em2(), (Readings{1, 2, 3, 4}));
    }
}

TEST(Adjustment, AnOverflowOfReadingsOrOfTheTotalChangesNothing) {
    Adjusted adjusted;
    adjusted.survey.SiteData(kEM1, 3) = 1.5e308;
    adjusted.survey.EMAdjustTotalB = 1.7e308;
    for (const auto& request : {addToEM1("1.5e308"), scaleBy("2", "1"), addToEM2("1e308")})
        EXPECT_THROW(adjusted.apply(request), RunTimeError);
    EXPECT_EQ(adjusted.em1(), (Readings{10, 20, 0, 1.5e308}));
    EXPECT_EQ(adjusted.em2(), (Readings{1, 2, 3, 4}));
    EXPECT_EQ(adjusted.survey.EMAdjustTotalA, 0);
    EXPECT_EQ(adjusted.survey.EMAdjustTotalB, 1.7e308);
    EXPECT_FALSE(adjusted.outcome.changesReadings());
}

TEST(Adjustment, AnOverflowInEM2IsKnownToHaveScaledEM1) {
    Adjusted adjusted;
    EXPECT_THROW(adjusted.apply(scaleBy("2", "1e308")), RunTimeError);
    EXPECT_TRUE(adjusted.outcome.changesReadings());
    EXPECT_EQ(adjusted.em1(), (Readings{20, 40, 0, -8}));
    EXPECT_EQ(adjusted.em2(), (Readings{1, 2, 3, 4}));
}

// What the help document on adjustments warns of.
TEST(Adjustment, ConstantTakenAwayAgainMayLeaveALastDigit) {
    Survey survey = surveyOfReadings({.05, 34.49});
    adjustReadings(survey, adjustment(survey, addToEM1("-2.8")));
    adjustReadings(survey, adjustment(survey, addToEM1("2.8")));
    EXPECT_EQ(printedNumber(survey.SiteData(kEM1, 0)), " .0499999999999998 ");
    EXPECT_EQ(printedNumber(survey.SiteData(kEM1, 1)), " 34.49 ");
}

}  // namespace tessel
