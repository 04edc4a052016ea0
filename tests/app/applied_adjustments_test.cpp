// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/applied_adjustments.h"

namespace tessel {

namespace {

AppliedAdjustments added(double toEM1, double toEM2) {
    return {{1, toEM1}, {1, toEM2}};
}

}  // namespace

TEST(AppliedAdjustments, AreOneFactorAndOneConstantHoweverManySteps) {
    AppliedAdjustment applied;
    for (const AppliedAdjustment step : {AppliedAdjustment{1, 2}, {1.5, 0}, {1, 1}})
        applied = applied.then(step);
    EXPECT_EQ(applied, (AppliedAdjustment{1.5, 4}));
    // What they say is what has become of a reading of 10.
    EXPECT_EQ(applied.factor * 10 + applied.shift, (10 + 2) * 1.5 + 1);
}

TEST(AppliedAdjustments, AreToldForEachReading) {
    EXPECT_EQ(totalsText({}, true), "Since the import: EM1 unchanged, EM2 unchanged");
    EXPECT_EQ(totalsText(added(2.5, -0.25), true), "Since the import: EM1 + 2.5, EM2 - 0.25");
    EXPECT_EQ(totalsText({{2, -3}, {}}, false), "Since the import: EM1 x 2 - 3");
}

TEST(AppliedAdjustments, AreToldWithoutTheRoundingOfDoubles) {
    const auto applied = added(0.1, 0).then(added(0.2, 0));
    EXPECT_EQ(totalsText(applied, false), "Since the import: EM1 + 0.3");
}

TEST(AppliedAdjustments, SayWhatAStepHasDone) {
    EXPECT_EQ(stepText({}), "");
    EXPECT_EQ(stepText(added(0, -2.5)), "-2.5 has been added to every EM2 reading.");
    EXPECT_EQ(stepText({{2, 0}, {0.5, 0}}),
              "Every EM1 reading has been multiplied by 2. Every EM2 reading has been multiplied by 0.5.");
}

}  // namespace tessel
