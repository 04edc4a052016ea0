// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RowPlots.h"
#include "support/survey_under_test.h"

namespace tessel {

TEST_F(OpenRowPlots, DivideARowBeforeTheSiteThatIsSelected) {
    const Survey before = theSurvey();
    clickPoint(profile, 1, 3);
    click("cmdSplit");
    EXPECT_EQ(readingsOf(theSurvey(), kRow), (std::vector<double>{1, 1, 2, 2, 2, 3, 4, 4, 4, 4}));
    EXPECT_EQ(theSurvey().NumRows, 4);
    expectRowShown(1);
    expectNothingSelected();
    expectSteps(false, true);
    EXPECT_EQ(main.focusWidget(), &profile);
    EXPECT_FALSE(editor.cmdSplit->isEnabled());
    click("Command2");
    expectRowShown(2);
    EXPECT_EQ(main.mnuUndo->text(), u"&Undo: split row 1"_s);
    EXPECT_EQ(theJournal().act(0).words, "Split row 1 before its site 3");
    main.mnuUndo->trigger();
    expectSameSurvey(theSurvey(), before);
    expectRowShown(2);
}

TEST_F(OpenRowPlots, CanBeDividedWithExactlyOneSiteThatIsNotTheFirst) {
    EXPECT_FALSE(editor.cmdSplit->isEnabled());
    clickPoint(profile, 1, 1);
    EXPECT_FALSE(editor.cmdSplit->isEnabled()) << "the first";
    clickPoint(profile, 1, 4);
    EXPECT_FALSE(editor.cmdSplit->isEnabled()) << "two";
    clickPoint(profile, 1, 1);
    EXPECT_TRUE(editor.cmdSplit->isEnabled());
    click("Command2");
    EXPECT_FALSE(editor.cmdSplit->isEnabled()) << "the selection has gone";
}

TEST_F(RowPlots, OfASingleRowAreTwoOnceItIsDivided) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}, {3, 90, 7, 7, 2}}));
    click("Command2");
    deletePoints({1});
    EXPECT_FALSE(main.menuItem(u"mnuRow"_s)->isEnabled());
    typeRow(u"1"_s);
    click("Command3");
    clickPoint(profile, 1, 2);
    click("cmdSplit");
    EXPECT_TRUE(main.menuItem(u"mnuRow"_s)->isEnabled());
    EXPECT_TRUE(main.menuItem(u"mnuStat"_s)->isEnabled());
    EXPECT_EQ(theSurvey().NumRows, 2);
    expectSteps(false, true);
}

}  // namespace tessel
