// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/journal.h"
#include "plots/RowPlotEditor.h"
#include "support/RowPlots.h"

namespace tessel {

using Point = Chart2D::Point;

TEST_F(OpenRowPlots, SelectPointsOnBothChartsInTheOrderOfPicking) {
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

TEST_F(OpenRowPlots, SelectThreePixelsBesideAPointAndNothingFourPixelsBesideIt) {
    for (const QPoint beside : {QPoint(4, 0), QPoint(-4, 0), QPoint(0, 4), QPoint(0, -4)})
        for (Chart2D* const chart : {&profile, &map})
            expectNothingAt(*chart, pixelOf(*chart, Chart2D::kData, 1, 3) + beside);
    clickAt(profile, pixelOf(profile, Chart2D::kData, 1, 2) + QPoint(3, 0));
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
}

TEST_F(OpenRowPlots, SelectNothingAtAPointOfTheSecondReading) {
    const QPoint second = pixelOf(profile, Chart2D::kData, 2, 2);
    ASSERT_EQ(profile.nearestPoint(Chart2D::kData, second).series, 2);
    expectNothingAt(profile, second);
}

TEST_F(OpenRowPlots, SelectNothingOutsideThePlotAreaHoweverNearAPoint) {
    profile.setAxisRange(Chart2D::Axis::kX, 100, 142);
    const QPoint beside = pixelOf(profile, Chart2D::kData, 1, 1) - QPoint(2, 0);
    ASSERT_FALSE(profile.pixelToData(beside).inPlotArea);
    ASSERT_LE(profile.nearestPoint(Chart2D::kData, beside).distance, 3);
    expectNothingAt(profile, beside);
}

TEST_F(OpenRowPlots, PointWithACrossAtAPointAndPlainlyElsewhere) {
    const QPoint point = pixelOf(profile, Chart2D::kData, 1, 2);
    pointAt(profile, point);
    EXPECT_EQ(profile.cursor().shape(), Qt::CrossCursor);
    main.setCursor(Qt::WaitCursor);
    pointAt(profile, point + QPoint(0, 12));
    EXPECT_EQ(profile.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(main.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(OpenRowPlots, KeepTheSelectionWhenANumberIsToBeTypedAndDeleteItOnlyWhenNoneIs) {
    clickPoint(profile, 1, 4);
    click("Option2");
    EXPECT_FALSE(editor.Command5->isEnabled());
    EXPECT_EQ(editor.selection().SelCount, 1);
    click("Option1");
    EXPECT_TRUE(editor.Command5->isEnabled());
    click("Option2");
    clickPoint(profile, 1, 2);
    EXPECT_TRUE(editor.Command5->isEnabled());
    EXPECT_EQ(editor.selection().SelCount, 2);
    for (const qsizetype point : {4, 2})
        clickPoint(profile, 1, point);
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
    PlainSurvey expected = plainSurveyOf(longRowSurvey(120));
    deletePlainPoints(expected, 1, before);
    click("Command5");
    expectAsPlain(theSurvey(), expected);
}

TEST_F(OpenRowPlots, ShowTheWholeRowAgainForACursorOutsideTheView) {
    QTest::keyClick(&profile, Qt::Key_Right);
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(&profile, Qt::Key_Plus);
    ASSERT_TRUE(profile.isZoomed());
    QTest::keyClick(&profile, Qt::Key_Right);
    EXPECT_FALSE(profile.isZoomed());
    EXPECT_EQ(profile.footerText(), u"UTM X = 110.00, ECa = 30.00"_s);
}

}  // namespace tessel
