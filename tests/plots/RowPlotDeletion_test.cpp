// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"
#include "support/RowPlots.h"
#include "support/survey_under_test.h"

namespace tessel {

using Axis = Chart2D::Axis;

TEST_F(OpenRowPlots, ShowAnEmptiedRowInTheMiddleAndStepOnToTheRowThatMovedUp) {
    click("Command2");
    PlainSurvey expected = plainSurveyOf(threeRowSurvey());
    deletePlainPoints(expected, 2, {1});
    deletePoints({1});
    expectAsPlain(theSurvey(), expected);
    expectEmptied(2);
    EXPECT_EQ(theSurvey().NumRows, 2);
    expectRange(map, Axis::kX, -100, 360);
    expectRange(map, Axis::kY, -190, 313);
    expectRange(profile, Axis::kX, -100, 360);
    expectSteps(true, false);
    click("Command1");
    expectRowShown(1);
    click("Command2");
    expectRowShown(2);
    EXPECT_EQ(theSurvey().SiteData(kEM1, 5), 12);
}

TEST_F(OpenRowPlots, StepOnFromAnEmptiedRowToTheOneWithItsNumber) {
    deletePoints({1, 2, 3, 4, 5});
    expectEmptied(1);
    click("Command2");
    expectRowShown(1);
    EXPECT_EQ(theSurvey().SiteData(kEM1, 0), 33);
}

TEST_F(OpenRowPlots, LeaveTheEmptyStateAloneUnderThePointer) {
    click("Command2");
    deletePoints({1});
    clickAt(profile, profile.rect().center());
    QTest::keyClick(&profile, Qt::Key_Right);
    QTest::keyClick(&profile, Qt::Key_Space);
    expectEmptied(2);
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
}

TEST_F(RowPlots, GiveTheRowDialogBackToASingleRowHoweverTheyAreLeft) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}, {3, 90, 7, 7, 2}}));
    click("Command2");
    deletePoints({1});
    EXPECT_FALSE(main.menuItem(u"mnuData"_s)->isEnabled());
    main.mnuClear->trigger();
    EXPECT_TRUE(main.menuItem(u"mnuData"_s)->isEnabled());
    EXPECT_FALSE(main.menuItem(u"mnuRow"_s)->isEnabled());
}

TEST_F(RowPlots, GiveNothingBackToASurveyWithoutSites) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}}));
    surveyUnderTest().NumSites = 0;
    main.menuItem(u"mnuData"_s)->setEnabled(false);
    main.mnuClear->trigger();
    EXPECT_FALSE(main.menuItem(u"mnuData"_s)->isEnabled());
}

TEST_F(RowPlots, EmptyTheOnlyRow) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}}));
    expectSteps(false, false);
    deletePoints({2, 1});
    EXPECT_EQ(theSurvey().NumSites, 0);
    EXPECT_EQ(theSurvey().NumRows, 0);
    expectEmptied(1);
    expectSteps(false, false);
    boxes.tell(u"Invalid Input: row number out of range"_s);
    typeRow(u"1"_s);
    QTest::keyClick(editor.Text1, Qt::Key_Return);
    EXPECT_EQ(boxes.pending(), 0);
    expectEmptied(1);
}

TEST_F(OpenRowPlots, DeleteTextAndNotSitesWhileANumberIsTyped) {
    clickPoint(profile, 1, 2);
    editor.Text1->setFocus();
    QTest::keyClick(editor.Text1, Qt::Key_Delete);
    EXPECT_EQ(theSurvey().NumSites, 10);
}

TEST_F(RowPlots, NameTheAxesOfAnEmptiedRowForWhatTheyShow) {
    openByY(threeRowSurvey());
    click("Command2");
    deletePoints({1});
    expectRange(map, Chart2D::Axis::kX, -100, 360);
    expectRange(profile, Chart2D::Axis::kX, -100, 360);
    EXPECT_EQ(map.axisTitle(Chart2D::Axis::kX), u"X (meters)"_s);
    EXPECT_EQ(map.axisTitle(Chart2D::Axis::kY), u"Y (meters)"_s);
    EXPECT_EQ(profile.axisTitle(Chart2D::Axis::kX), u"X (meters)"_s);
    click("Command1");
    EXPECT_EQ(map.axisTitle(Chart2D::Axis::kX), u"Y (meters)"_s);
    EXPECT_EQ(map.axisTitle(Chart2D::Axis::kY), u"X (meters)"_s);
    EXPECT_EQ(profile.axisTitle(Chart2D::Axis::kX), u"Y (meters)"_s);
}

}  // namespace tessel
