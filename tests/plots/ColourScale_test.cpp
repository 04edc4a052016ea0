// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ColourScale.h"

#include "drawing/colour_map.h"
#include "support/Pixels.h"

namespace tessel {

namespace {

// From 20 to 60 mS/m over 400 pixels.
class ColourScaleTest : public testing::Test {
  protected:
    ColourScaleTest() {
        scale.setRange({20, 60});
        scale.resize(scale.sizeHint().width(), 460);
        scale.alignWith(30, 430);
        scale.show();
    }
    static QPoint at(double reading) { return {15, static_cast<int>(430 - (reading - 20) * 10)}; }
    void dragBetween(double from, double to) { drag(scale, Qt::LeftButton, at(from), at(to)); }
    void expectRange(double from, double to) {
        EXPECT_NEAR(scale.range().from, from, 0.2);
        EXPECT_NEAR(scale.range().to, to, 0.2);
    }
    QRgb colourAt(int height) { return scale.grab().toImage().pixel(15, height) & 0xFFFFFFU; }

    ColourScale scale;
    QSignalSpy chosen{&scale, &ColourScale::rangeChosen};
};

}  // namespace

TEST_F(ColourScaleTest, ShowsTheHighestReadingsAboveAndTheLowestBelow) {
    EXPECT_EQ(colourAt(431), 0xFFFFFFU) << "below the strip";
    EXPECT_EQ(colourAt(28), 0xFFFFFFU);
    EXPECT_EQ(colourAt(32), colourMap()[kShades - 2]);
    EXPECT_EQ(colourAt(428), colourMap()[0]);
    EXPECT_EQ(colourAt(230), colourMap()[kShades / 2 - 1]);
}

TEST_F(ColourScaleTest, IsNarrowedByADragInEitherDirection) {
    dragBetween(30, 50);
    expectRange(30, 50);
    EXPECT_TRUE(scale.isChosen());
    EXPECT_EQ(chosen.count(), 1) << "while the pointer moves nothing is drawn anew";
    scale.setRange({20, 60});
    dragBetween(55, 25);
    expectRange(25, 55);
}

TEST_F(ColourScaleTest, TakesADragBeyondItsEndsToTheEnd) {
    drag(scale, Qt::LeftButton, at(40), {15, -50});
    expectRange(40, 60);
}

TEST_F(ColourScaleTest, ReturnsWithADoubleClickOrHome) {
    dragBetween(30, 50);
    QTest::mouseDClick(&scale, Qt::LeftButton, Qt::NoModifier, at(35));
    QTest::mouseRelease(&scale, Qt::LeftButton, Qt::NoModifier, at(35));
    EXPECT_EQ(scale.range(), (Interval{20, 60}));
    EXPECT_FALSE(scale.isChosen());
    dragBetween(30, 50);
    QTest::keyClick(&scale, Qt::Key_Home);
    EXPECT_EQ(scale.range(), (Interval{20, 60}));
    EXPECT_EQ(chosen.count(), 4);
}

TEST_F(ColourScaleTest, IsNotChangedByAClick) {
    QTest::mouseClick(&scale, Qt::LeftButton, Qt::NoModifier, at(40));
    EXPECT_EQ(scale.range(), (Interval{20, 60}));
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(ColourScaleTest, IsZoomedAndMovedAsEverySurface) {
    QTest::keyClick(&scale, Qt::Key_Plus);
    expectRange(24, 56);
    QTest::keyClick(&scale, Qt::Key_Up, Qt::ControlModifier);
    expectRange(27.2, 59.2);
    QTest::keyClick(&scale, Qt::Key_Home);
    turnWheel(scale, at(60), 120);
    expectRange(28, 60);
}

TEST_F(ColourScaleTest, KeepsTheRangeOfTheUserWhileTheSurveyChanges) {
    scale.followRange({10, 70});
    EXPECT_EQ(scale.range(), (Interval{10, 70}));
    QTest::keyClick(&scale, Qt::Key_Plus);
    const Interval range = scale.range();
    scale.followRange({0, 100});
    EXPECT_EQ(scale.range(), range);
    QTest::keyClick(&scale, Qt::Key_Home);
    EXPECT_EQ(scale.range(), (Interval{0, 100}));
}

TEST_F(ColourScaleTest, StaysARangeHoweverOftenItIsNarrowed) {
    for (int i = 0; i < 60; ++i)
        drag(scale, Qt::LeftButton, {15, 200}, {15, 205});
    EXPECT_LT(scale.range().from, scale.range().to);
    EXPECT_FALSE(scale.grab().isNull());
}

TEST_F(ColourScaleTest, ShowsEqualReadingsInTheMiddle) {
    scale.setRange({40, 40});
    EXPECT_LT(scale.range().from, 40);
    EXPECT_GT(scale.range().to, 40);
}

TEST_F(ColourScaleTest, HasRoomForItsNumbersAndItsTitle) {
    const int narrow = scale.sizeHint().width();
    scale.setRange({2000000, 6000000});
    EXPECT_GT(scale.sizeHint().width(), narrow);
    const int wide = scale.sizeHint().width();
    scale.setTitle(QString());
    EXPECT_LT(scale.sizeHint().width(), wide);
}

TEST_F(ColourScaleTest, ForgetsARangeThatMeansNothingToTheSurveyAnyMore) {
    scale.followRange({10, 70});
    QTest::keyClick(&scale, Qt::Key_Plus);
    scale.followRange({1000, 1060});
    EXPECT_EQ(scale.range(), (Interval{1000, 1060}));
}

}  // namespace tessel
