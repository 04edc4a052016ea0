// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ClipWindow.h"

namespace tessel {

namespace {

// The readings of the twelve sites are 30 to 41 and 60 to 71; so are the percentiles of so few.
class ClipColours : public ClipWindowOnFullMap {
  protected:
    QRgb colourOf(double reading) const {
        const Shade shade = shadesOf(std::span(&reading, 1), window->scaleReadings->range()).front();
        return colourMap()[shade];
    }
    void expectColours(double MadeSite::*reading) {
        for (const MadeSite& site : expected)
            EXPECT_EQ(dotAt(site.x, site.y), colourOf(site.*reading)) << site.x << "," << site.y;
    }
    void dragScale(int from, int to) {
        drag(*window->scaleReadings, Qt::LeftButton, {15, from}, {15, to});
        QCoreApplication::processEvents();  // other numbers may need more room
    }
};

}  // namespace

TEST_F(ClipColours, AreNoneAtStart) {
    EXPECT_TRUE(window->mnuColourNone->isChecked());
    EXPECT_FALSE(window->scaleReadings->isVisible());
    expectBlueDots();
}

TEST_F(ClipColours, AreThoseOfTheReadingChosenWithTheirScaleBesideTheMap) {
    choose(u"mnuColourEM1"_s);
    EXPECT_TRUE(window->mnuColourEM1->isChecked());
    EXPECT_FALSE(window->mnuColourNone->isChecked());
    EXPECT_TRUE(window->scaleReadings->isVisible());
    EXPECT_GT(window->scaleReadings->geometry().left(), window->mapArea->geometry().right());
    EXPECT_EQ(window->scaleReadings->range(), (Interval{30, 41}));
    EXPECT_EQ(window->scaleReadings->title(), u"1st EM reading (mS/m)"_s);
    expectColours(&MadeSite::em1);
    choose(u"mnuColourEM2"_s);
    EXPECT_EQ(window->scaleReadings->range(), (Interval{60, 71}));
    EXPECT_EQ(window->scaleReadings->title(), u"2nd EM reading (mS/m)"_s);
    expectColours(&MadeSite::em2);
    choose(u"mnuColourNone"_s);
    EXPECT_FALSE(window->scaleReadings->isVisible());
    expectBlueDots();
}

TEST_F(ClipColours, WaitForTheMap) {
    open();
    choose(u"mnuColourEM1"_s);
    EXPECT_FALSE(window->scaleReadings->isVisible());
    choose(u"mnuFullMapMax"_s);
    EXPECT_TRUE(window->scaleReadings->isVisible());
    expectColours(&MadeSite::em1);
}

TEST_F(ClipColours, OfASecondReadingNeedOne) {
    surveyUnderTest().TwoEMColumns = false;
    open();
    EXPECT_TRUE(window->mnuColourEM1->isEnabled());
    EXPECT_FALSE(window->mnuColourEM2->isEnabled());
}

TEST_F(ClipColours, AreSpreadOverThePartOfTheScaleThatIsDragged) {
    choose(u"mnuColourEM1"_s);
    const int height = window->scaleReadings->height();
    dragScale(height / 4, height / 2);
    EXPECT_GT(window->scaleReadings->range().from, 34);
    EXPECT_LT(window->scaleReadings->range().to, 40);
    expectColours(&MadeSite::em1);
    EXPECT_EQ(dotAt(0, 100), colourMap()[0]);
    EXPECT_EQ(dotAt(30, 120), colourMap()[kShades - 1]);
    QTest::mouseDClick(window->scaleReadings, Qt::LeftButton, Qt::NoModifier, {15, height / 2});
    expectColours(&MadeSite::em1);
}

TEST_F(ClipColours, AreLeftOutWhereSitesAreMasked) {
    choose(u"mnuColourEM1"_s);
    maskAndFinish(-5, 95, 15, 105);
    window->DisplayMap();
    EXPECT_EQ(dotAt(0, 100), 0xFFFFFFU);
    EXPECT_EQ(dotAt(10, 100), 0xFFFFFFU);
    EXPECT_EQ(dotAt(20, 100), colourOf(32));
}

TEST_F(ClipColours, OfAHighlightedRowStandLargerOnRed) {
    choose(u"mnuColourEM1"_s);
    window->comboRow->setCurrentIndex(2);
    window->DisplayMap();
    expectColours(&MadeSite::em1);
    const QImage map = picture();
    const auto besideSite = [&](double y) {
        return map.pixel(pixelOfSite(10, y) + QPoint(4, 0)) & 0xFFFFFFU;
    };
    EXPECT_EQ(besideSite(110), colour(kRed));
    EXPECT_EQ(besideSite(100), 0xFFFFFFU);
    EXPECT_EQ(besideSite(120), 0xFFFFFFU);
}

TEST_F(ClipColours, FollowTheSitesThatAreLeftUnlessARangeHasBeenChosen) {
    choose(u"mnuColourEM1"_s);
    maskAndDelete(-5, 95, 15, 105);
    EXPECT_EQ(window->scaleReadings->range(), (Interval{32, 41}));
    expectColours(&MadeSite::em1);
    const int height = window->scaleReadings->height();
    dragScale(height / 4, height / 2);
    const Interval chosen = window->scaleReadings->range();
    maskAndDelete(25, 115, 35, 125);
    EXPECT_EQ(window->scaleReadings->range(), chosen);
    expectColours(&MadeSite::em1);
}

}  // namespace tessel
