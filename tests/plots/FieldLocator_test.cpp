// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/FieldLocator.h"

#include "base/palette16.h"
#include "plots/plot_limits.h"
#include "support/RowPlots.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

constexpr QRgb kFieldGrey = 0xFFCDCDCD;

class Locator : public OpenRowPlots {
  protected:
    // Where the locator draws a place: the whole field in the middle, as large as its frame allows.
    QPoint pixelAt(double x, double y) const {
        const Rectangle inner{{6.5, locator.width() - 6.5}, {6.5, locator.height() - 6.5}};
        const PixelMap pixels = fittedMap(inner, field);
        return {static_cast<int>(pixels.pixelX(x)), static_cast<int>(pixels.pixelY(y))};
    }
    QRgb colourAt(double x, double y) const { return locator.grab().toImage().pixel(pixelAt(x, y)); }
    static QRgb colour(int number) { return 0xFF000000U | kBasicPalette[static_cast<std::size_t>(number)]; }
    void clickPlace(double x, double y) { QTest::mouseClick(&locator, Qt::LeftButton, {}, pixelAt(x, y)); }

    FieldLocator& locator = *editor.picLocator;
    Rectangle field{{100, 160}, {10, 113}};  // of the three rows
};

}  // namespace

TEST_F(Locator, ShowsTheFieldInGreyAndTheRowInItsColour) {
    EXPECT_EQ(colourAt(120, 10), colour(kBlue));
    EXPECT_EQ(colourAt(140, 60), kFieldGrey);
    EXPECT_EQ(colourAt(150, 111), kFieldGrey);
    click("Command2");
    EXPECT_EQ(colourAt(120, 10), kFieldGrey);
    EXPECT_EQ(colourAt(140, 60), colour(kGreen));
}

TEST_F(Locator, HasNorthAtTheTopHoweverRowsArePlotted) {
    openByY(threeRowSurvey());
    EXPECT_LT(pixelAt(140, 112).y(), pixelAt(140, 10).y());
    EXPECT_EQ(colourAt(140, 112), kFieldGrey);
    EXPECT_EQ(colourAt(120, 10), colour(kBlue));
}

TEST_F(Locator, OutlinesARowOfAPaleColour) {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 14; ++i)
        sites.push_back({10.0 * i, 20.0 * i, 30, 40, double(i + 1)});
    field = {{0, 130}, {0, 260}};
    openByX(madeSurvey(sites));
    typeRow(u"14"_s);
    click("Command3");
    EXPECT_EQ(colourAt(130, 260), colour(kLightYellow));
    const QImage image = locator.grab().toImage();
    int dark = 0;
    for (int x = -4; x <= 4; ++x)
        dark += qGray(image.pixel(pixelAt(130, 260) + QPoint(x, 0))) < 100;
    EXPECT_GE(dark, 2);
}

TEST_F(Locator, GoesToTheRowThatIsClicked) {
    clickPoint(profile, 1, 2);
    clickPlace(150, 111);
    expectRowShown(3);
    expectNothingSelected();
    expectSteps(true, false);
    EXPECT_TRUE(editor.Command6->isEnabled());
    EXPECT_TRUE(profile.hasFocus());
    clickPlace(140, 60);
    expectRowShown(2);
    expectSteps(true, true);
    QTest::mouseClick(&locator, Qt::RightButton, {}, pixelAt(150, 111));
    expectRowShown(2);
}

TEST_F(Locator, KeepsTheSelectionWhereTheRowShownIsClicked) {
    clickPoint(profile, 1, 2);
    clickPlace(130, 12);
    EXPECT_EQ(selected(), std::vector<SiteIndex>{2});
    clickPlace(100, 80);
    EXPECT_EQ(editor.CurrentRow, 1) << "no site is there";
}

TEST_F(Locator, GoesToTheRowThatHasMovedUpIntoTheNumberOfAnEmptiedOne) {
    clickPlace(140, 60);
    deletePoints({1});
    expectEmptied(2);
    EXPECT_EQ(colourAt(150, 111), kFieldGrey);
    clickPlace(150, 111);
    expectRowShown(2);
}

TEST_F(Locator, RingsTheSelectedSites) {
    QCoreApplication::processEvents();
    const QImage without = locator.grab().toImage();
    clickPoint(map, 1, 1);
    const QImage with = locator.grab().toImage();
    EXPECT_NE(with, without);
    int red = 0;
    for (int x = -5; x <= 5; ++x) {
        const QColor seen = with.pixelColor(pixelAt(100, 10) + QPoint(x, 0));
        red += seen.red() > 200 && seen.green() < 150;
    }
    EXPECT_GE(red, 2);
    clickPoint(map, 1, 1);
    EXPECT_EQ(locator.grab().toImage(), without);
}

TEST_F(Locator, DrawsAllSitesOnceForEachSurvey) {
    QCoreApplication::processEvents();
    ASSERT_EQ(colourAt(150, 111), kFieldGrey);
    for (const SiteIndex site : {6, 7, 8, 9})
        surveyUnderTest().SiteData(kY, site) = 60;
    click("Command2");
    clickPoint(map, 1, 1);
    EXPECT_EQ(colourAt(150, 111), kFieldGrey) << "the picture that was kept";
    editor.redraw();
    field = {{100, 160}, {10, 60}};
    EXPECT_EQ(colourAt(150, 60), kFieldGrey) << "the survey as it is";
}

TEST_F(Locator, FollowsTheSitesThatAreDeleted) {
    ASSERT_EQ(colourAt(120, 10), colour(kBlue));
    deletePoints({3});
    EXPECT_EQ(colourAt(120, 10), 0xFFFFFFFFU);
    main.mnuUndo->trigger();
    EXPECT_EQ(colourAt(120, 10), colour(kBlue));
}

TEST_F(Locator, TakesTheFreeRoomOfTheFrameUpToItsOwnHeight) {
    for (const int height : {600, 1100}) {
        main.resize(1100, height);
        QCoreApplication::processEvents();
        const int below = editor.Command6->y() - locator.geometry().bottom();
        EXPECT_EQ(locator.height() == locator.maximumHeight() || below < 20, true) << below;
    }
    EXPECT_EQ(locator.height(), locator.maximumHeight());
}

TEST_F(Locator, ShowsNothingWhereItHasHardlyAnyRoom) {
    QWidget box;
    locator.setParent(&box);
    for (const int height : {55, 56}) {
        locator.setGeometry(0, 0, 120, height);
        locator.show();
        box.resize(120, height);
        const QImage image = locator.grab().toImage();
        QImage plain = image;
        plain.fill(image.pixel(0, 0));
        EXPECT_EQ(image == plain, height == 55);
        QSignalSpy clicked(&locator, &FieldLocator::rowClicked);
        QTest::mouseClick(&locator, Qt::LeftButton, {}, pixelAt(140, 60));
        EXPECT_EQ(clicked.count(), height == 55 ? 0 : 1);
        clicked.clear();
    }
    locator.setParent(&editor);
}

TEST(FittedMap, HasAsManyPixelsToAMetreInBothDirections) {
    const PixelMap map = fittedMap(Rectangle::at(10, 20, 200, 100), {{1000, 1100}, {500, 600}});
    EXPECT_DOUBLE_EQ(map.pixelX(1050), 110);
    EXPECT_DOUBLE_EQ(map.pixelY(550), 70);
    EXPECT_DOUBLE_EQ(map.pixelX(1100), 160);
    EXPECT_DOUBLE_EQ(map.pixelY(600), 20);
}

TEST(FittedMap, HasAPlaceInTheMiddleHoweverSmallOrLargeTheExtent) {
    const Rectangle area = Rectangle::at(0, 0, 100, 100);
    const PixelMap point = fittedMap(area, {{7, 7}, {9, 9}});
    EXPECT_DOUBLE_EQ(point.pixelX(7), 50);
    EXPECT_DOUBLE_EQ(point.pixelY(9), 50);
    const PixelMap line = fittedMap(area, {{7, 7}, {0, 50}});
    EXPECT_DOUBLE_EQ(line.pixelY(50), 0);
    const PixelMap vast = fittedMap(area, {{-1e308, 1e308}, {0, 1}});
    EXPECT_DOUBLE_EQ(vast.pixelX(1e308), 100);
}

}  // namespace tessel
