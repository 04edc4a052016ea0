// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"
#include "support/RowPlots.h"

using namespace Qt::StringLiterals;

namespace tessel {

using Point = Chart2D::Point;

TEST_F(RowPlots, ReadOutTheProfileUnderThePointer) {
    openByX(threeRowSurvey());
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 2));
    EXPECT_EQ(profile.footerText(), u"UTM X = 110.00, ECa = 30.00"_s);
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(0, 12));
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    pointAt(profile, pixelOf(profile, Chart2D::kData, 2, 2));
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    pointAt(profile, QPoint(2, 2));
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    main.mnuY->trigger();
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 4));
    EXPECT_EQ(profile.footerText(), u"UTM Y = 12.00, ECa = 28.00"_s);
}

TEST_F(RowPlots, ReadOutTheMapUnderThePointer) {
    openByX(threeRowSurvey());
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    EXPECT_EQ(map.footerText(), u"UTM X = 130.00, UTM Y = 12.00"_s);
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4) + QPoint(9, 0));
    EXPECT_EQ(map.footerText(), u"No Point Selected"_s);
    main.mnuY->trigger();
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 4));
    EXPECT_EQ(map.footerText(), u"UTM Y = 12.00, UTM X = 130.00"_s);
}

TEST_F(RowPlots, SelectPointsOnBothChartsInTheOrderOfPicking) {
    openByX(threeRowSurvey());
    EXPECT_TRUE(editor.Command6->isEnabled());
    clickPoint(profile, 1, 4);
    EXPECT_TRUE(editor.Command5->isEnabled());
    EXPECT_FALSE(editor.Command6->isEnabled());
    clickPoint(map, 1, 2);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{4, 2}));
    EXPECT_EQ(editor.lblSelected->text(), u"Sites selected: 2"_s);
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 28}, {110, 30}}));
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 2) == std::vector<Point>({{130, 55}, {110, 45}}));
    EXPECT_TRUE(pointsOf(map, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 12}, {110, 11}}));
}

TEST_F(RowPlots, LeaveAPointThatIsPickedTwiceUnselected) {
    openByX(threeRowSurvey());
    for (const qsizetype point : {4, 2, 5})
        clickPoint(profile, 1, point);
    clickPoint(map, 1, 2);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{4, 5}));
    EXPECT_TRUE(pointsOf(profile, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 28}, {140, 22}}));
    EXPECT_TRUE(pointsOf(map, Chart2D::kHighlight, 1) == std::vector<Point>({{130, 12}, {140, 10}}));
    EXPECT_TRUE(editor.Command5->isEnabled());
    clickPoint(profile, 1, 5);
    clickPoint(profile, 1, 4);
    expectNothingSelected();
    EXPECT_FALSE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, TakeSitesAtTheSameCoordinateForOne) {
    openByX(madeSurvey({{1, 1, 5, 5, 1}, {2, 1, 6, 6, 1}, {2, 9, 15, 15, 1}, {3, 1, 8, 8, 1}}));
    clickPoint(map, 1, 2);
    clickPoint(map, 1, 3);
    expectNothingSelected();
    clickPoint(map, 1, 3);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{3});
}

TEST_F(RowPlots, SelectNothingBesideThePoints) {
    openByX(threeRowSurvey());
    clickAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(0, 5));
    clickPoint(profile, 2, 2);
    clickAt(profile, QPoint(1, 1));
    clickAt(map, QPoint(1, 1));
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, SelectThreePixelsBesideAPoint) {
    openByX(threeRowSurvey());
    clickAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(3, 0));
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
}

TEST_F(RowPlots, SelectNothingFourPixelsBesideAPoint) {
    openByX(threeRowSurvey());
    for (const QPoint beside : {QPoint(4, 0), QPoint(-4, 0), QPoint(0, 4), QPoint(0, -4)})
        for (Chart2D* const chart : {&profile, &map}) {
            pointAt(*chart, pixelOf(*chart, Chart2D::kData, 1, 3) + beside);
            EXPECT_EQ(chart->footerText(), u"No Point Selected"_s);
            clickAt(*chart, pixelOf(*chart, Chart2D::kData, 1, 3) + beside);
            expectNothingSelected();
        }
}

TEST_F(RowPlots, SelectNothingMoreBesideThePointsOnceSomeAreSelected) {
    openByX(threeRowSurvey());
    clickPoint(profile, 1, 4);
    clickPoint(profile, 2, 2);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{4});
    for (Chart2D* const chart : {&profile, &map})
        for (const int pixels : {4, 10, 29})
            for (const QPoint side : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
                clickAt(*chart, pixelOf(*chart, Chart2D::kData, 1, 3) + pixels * side);
                EXPECT_EQ(selected(), std::vector<SiteIndex>{4});
            }
}

TEST_F(RowPlots, SelectNothingOutsideThePlotAreaHoweverNearAPoint) {
    openByX(threeRowSurvey());
    profile.setAxisRange(Chart2D::Axis::X, 100, 142);
    const QPoint beside = pixelOf(profile, Chart2D::kData, 1, 1) - QPoint(2, 0);
    ASSERT_FALSE(profile.pixelToData(beside).inPlotArea);
    ASSERT_LE(profile.nearestPoint(Chart2D::kData, beside).distance, 3);
    pointAt(profile, beside);
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    clickAt(profile, beside);
    expectNothingSelected();
}

TEST_F(RowPlots, PointWithACrossAtAPointAndPlainlyElsewhere) {
    openByX(threeRowSurvey());
    const QPoint point = pixelOf(profile, Chart2D::kData, 1, 2);
    pointAt(profile, point);
    EXPECT_EQ(profile.cursor().shape(), Qt::CrossCursor);
    main.setCursor(Qt::WaitCursor);
    pointAt(profile, point + QPoint(0, 12));
    EXPECT_EQ(profile.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(RowPlots, ReadOutNothingOfARowThatHasJustBeenDrawn) {
    openByX(threeRowSurvey());
    pointAt(profile, pixelOf(profile, Chart2D::kData, 1, 2));
    pointAt(map, pixelOf(map, Chart2D::kData, 1, 2));
    click("Command2");
    EXPECT_EQ(profile.footerText(), u"No Point Selected"_s);
    EXPECT_EQ(map.footerText(), u"No Point Selected"_s);
}

TEST_F(RowPlots, ForgetTheSelectionWithEveryNewRow) {
    openByX(threeRowSurvey());
    clickPoint(profile, 1, 4);
    click("Command2");
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
    click("Command1");
    clickPoint(profile, 1, 4);
    main.mnuY->trigger();
    expectNothingSelected();
    EXPECT_TRUE(editor.Command6->isEnabled());
}

TEST_F(RowPlots, KeepTheSelectionWhenANumberIsToBeTypedButNotItsDeletion) {
    openByX(threeRowSurvey());
    clickPoint(profile, 1, 4);
    click("Option2");
    EXPECT_FALSE(editor.Command5->isEnabled());
    EXPECT_EQ(editor.selection().SelCount, 1);
    clickPoint(profile, 1, 2);
    EXPECT_TRUE(editor.Command5->isEnabled());
    EXPECT_EQ(editor.selection().SelCount, 2);
}

TEST_F(RowPlots, DeleteWhatStaysSelectedWhenNoNumberIsTypedAfterAll) {
    openByX(threeRowSurvey());
    clickPoint(profile, 1, 4);
    click("Option2");
    click("Option1");
    EXPECT_TRUE(editor.Command5->isEnabled());
    clickPoint(profile, 1, 4);
    click("Option2");
    click("Option1");
    EXPECT_FALSE(editor.Command5->isEnabled());
}

TEST_F(RowPlots, Refuse102SelectedPoints) {
    openByX(longRowSurvey(120));
    for (qsizetype point = 1; point <= 101; ++point)
        clickPoint(profile, 1, point);
    ASSERT_EQ(editor.selection().SelCount, 101);
    const auto before = selected();
    boxes.tell(
        u"Subscript out of range\nNo more than 101 sites can be selected at a time. Delete these first, "
        u"then select the others."_s);
    clickPoint(profile, 1, 110);
    EXPECT_EQ(boxes.pending(), 0);
    EXPECT_EQ(selected(), before);
    EXPECT_EQ(profile.pointCount(Chart2D::kHighlight, 1), 101);
    EXPECT_EQ(map.pointCount(Chart2D::kHighlight, 1), 101);
    Survey expected = longRowSurvey(120);
    deleteOneByOne(expected, 1, before);
    click("Command5");
    expectSameSurvey(theSurvey(), expected);
}

TEST_F(RowPlots, AreEditedByKeyboardAlone) {
    openByX(threeRowSurvey());
    EXPECT_TRUE(profile.hasFocus());
    QTest::keyClick(&profile, Qt::Key_Right);
    EXPECT_EQ(profile.footerText(), u"UTM X = 100.00, ECa = 20.00"_s);
    EXPECT_EQ(map.footerText(), u"UTM X = 100.00, UTM Y = 10.00"_s);
    QTest::keyClick(&profile, Qt::Key_Right);
    QTest::keyClick(&profile, Qt::Key_Up);
    QTest::keyClick(&profile, Qt::Key_Left);
    EXPECT_EQ(profile.footerText(), u"UTM X = 110.00, ECa = 30.00"_s);
    QTest::keyClick(&profile, Qt::Key_Space);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
    QTest::keyClick(&profile, Qt::Key_Space);
    expectNothingSelected();
    QTest::keyClick(&profile, Qt::Key_Delete);
    EXPECT_EQ(theSurvey().NumSites, 10);
    QTest::keyClick(&map, Qt::Key_Space);
    QTest::keyClick(&map, Qt::Key_Delete);
    Survey expected = threeRowSurvey();
    deleteOneByOne(expected, 1, {2});
    expectSameSurvey(theSurvey(), expected);
    QTest::keyClick(&profile, Qt::Key_Left);
    EXPECT_EQ(profile.footerText(), u"UTM X = 140.00, ECa = 22.00"_s);
}

TEST_F(RowPlots, GoOnByKeyboardWhereTheMousePicked) {
    openByX(threeRowSurvey());
    clickPoint(map, 1, 3);
    QTest::keyClick(&map, Qt::Key_Right);
    EXPECT_EQ(map.footerText(), u"UTM X = 130.00, UTM Y = 12.00"_s);
    QTest::keyClick(&map, Qt::Key_Space);
    EXPECT_EQ(selected(), (std::vector<SiteIndex>{3, 4}));
}

TEST_F(RowPlots, ShowTheWholeRowAgainForACursorOutsideTheView) {
    openByX(threeRowSurvey());
    QTest::keyClick(&profile, Qt::Key_Right);
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(&profile, Qt::Key_Plus);
    ASSERT_TRUE(profile.isZoomed());
    QTest::keyClick(&profile, Qt::Key_Right);
    EXPECT_FALSE(profile.isZoomed());
    EXPECT_EQ(profile.footerText(), u"UTM X = 110.00, ECa = 30.00"_s);
}

TEST_F(RowPlots, LookCloserWithoutChangingTheLimits) {
    openByX(threeRowSurvey());
    const PlotLimits shared = thePlotLimits();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&profile, Qt::Key_Plus);
    EXPECT_TRUE(profile.isZoomed());
    expectRange(profile, Chart2D::Axis::X, 98, 142);
    EXPECT_EQ(thePlotLimits(), shared);
    clickPoint(profile, 1, 2);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
    EXPECT_TRUE(profile.isZoomed());
    click("Command2");
    EXPECT_FALSE(profile.isZoomed());
}

}  // namespace tessel
