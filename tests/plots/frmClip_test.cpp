// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "plots/ClipWindow.h"
#include "plots/map_zones.h"
#include "support/survey_under_test.h"

namespace tessel {

TEST_F(ClipWindow, OpensWithNothingDrawn) {
    open();
    expectState(kNotShown, 0, 0);
    EXPECT_TRUE(window->txtXloc->text().isEmpty());
    EXPECT_TRUE(window->txtYloc->text().isEmpty());
    EXPECT_TRUE(window->optUTM->isChecked());
    QStringList rows;
    for (int i = 0; i < window->comboRow->count(); ++i)
        rows << window->comboRow->itemText(i);
    EXPECT_EQ(rows, (QStringList{u"none"_s, u"1"_s, u"2"_s, u"3"_s}));
    EXPECT_FALSE(shows(kBlue));
    moveTo({50, 50});
    EXPECT_TRUE(window->txtXloc->text().isEmpty());
}

TEST_F(ClipWindow, ShowsTheFullMapInTrueResolutionOnASquare) {
    open();
    choose(u"mnuFullMapTrue"_s);
    mapIsTrue = true;
    expectState(kBrowsing, 0, 0);
    EXPECT_EQ(window->picMapZoom->scale(), (Rectangle::at(-0.05, -0.05, 1.1, 1.1)));
    EXPECT_EQ(window->picMapZoom->width(), window->picMapZoom->height());
    for (const Record& site : expected)
        EXPECT_EQ(dotAt(site[0], site[1]), colour(kBlue));
    // As long one way as the other.
    EXPECT_NEAR(pixelOfSite(30, 100).x() - pixelOfSite(0, 100).x(),
                1.5 * (pixelOfSite(0, 100).y() - pixelOfSite(0, 120).y()), 2);
}

TEST_F(ClipWindow, ShowsTheFullMapInMaxResolutionOverAllOfItsArea) {
    open();
    choose(u"mnuFullMapTrue"_s);
    choose(u"mnuFullMapMax"_s);
    expectState(kBrowsing, 0, 0);
    EXPECT_EQ(window->picMapZoom->scale(), (Rectangle::at(-0.05, -0.05, 1.1, 1.1)));
    EXPECT_EQ(window->picMapZoom->size(), window->mapArea->size() - QSize(2, 2));
    for (const Record& site : expected)
        EXPECT_EQ(dotAt(site[0], site[1]), colour(kBlue));
    EXPECT_EQ(pixelOfSite(0, 120), pixel(0, 0));
    EXPECT_EQ(pixelOfSite(30, 100), pixel(1, 1));
}

TEST_F(ClipWindow, ShowsASingleSiteInTheMiddle) {
    surveyUnderTest().SiteData.resize(1);
    surveyUnderTest().SiteID.resize(1);
    surveyUnderTest().NumSites = surveyUnderTest().NumRows = 1;
    Calculate_Distance(surveyUnderTest());
    open();
    for (const QString& item : {u"mnuFullMapTrue"_s, u"mnuFullMapMax"_s}) {
        choose(item);
        EXPECT_EQ(picture().pixel(pixel(0.5, 0.5)) & 0xFFFFFFU, colour(kBlue));
    }
    expectState(kBrowsing, 0, 0);
}

TEST_F(ClipWindow, ShowsEachZoneWithoutComputingTheExtentAnew) {
    openOnFullMap();
    for (const MapZone& zone : kMapZones) {
        const QString item = QString::fromLatin1(zone.item.data(), qsizetype(zone.item.size()));
        choose(item);
        EXPECT_EQ(window->picMapZoom->scale(), zone.window) << item.toStdString();
        expectState(kBrowsing, 0, 0);
        int inSight = 0;
        for (const Record& site : expected) {
            const QPoint place = pixelOfSite(site[0], site[1]);
            if (!window->picMapZoom->rect().adjusted(2, 2, -2, -2).contains(place)) continue;
            ++inSight;
            EXPECT_EQ(dotAt(site[0], site[1]), colour(kBlue)) << item.toStdString();
        }
        EXPECT_EQ(inSight > 0, shows(kBlue)) << item.toStdString();
    }
}

TEST_F(ClipWindow, ShowsTheSelectedFormatLightBlue) {
    open();
    choose(u"mnuFullMapMax"_s);
    const auto expectSelected = [this](const QRadioButton* selected) {
        for (const QRadioButton* option : {window->optUTM, window->optLL})
            EXPECT_EQ(option->palette().color(QPalette::Active, QPalette::WindowText),
                      captionColour(option == selected ? kLightBlue : kBlack, *option))
                << option->objectName().toStdString();
    };
    expectSelected(window->optUTM);
    QTest::mouseClick(window->optLL, Qt::LeftButton, Qt::NoModifier, {8, window->optLL->height() / 2});
    expectSelected(window->optLL);
    QTest::mouseClick(window->optUTM, Qt::LeftButton, Qt::NoModifier, {8, window->optUTM->height() / 2});
    expectSelected(window->optUTM);
}

TEST_F(ClipWindow, DrawsDotsTwoPixelsWide) {
    openOnFullMap();
    const QImage image = picture();
    const QPoint place = pixelOfSite(10, 110);
    int blue = 0;
    for (int row = place.y() - 6; row <= place.y() + 6; ++row)
        for (int column = place.x() - 6; column <= place.x() + 6; ++column)
            blue += (image.pixel(column, row) & 0xFFFFFFU) == colour(kBlue) ? 1 : 0;
    EXPECT_EQ(blue, 4 * image.devicePixelRatio() * image.devicePixelRatio());
}

TEST_F(ClipWindow, HighlightsTheRowOfTheChosenNumber) {
    openOnFullMap();
    pickItem(*window, u"comboRow"_s, 3);
    EXPECT_EQ(window->comboRow->currentText(), u"3"_s);
    for (const Record& site : expected)
        EXPECT_EQ(dotAt(site[0], site[1]), site[4] == 3 ? colour(kRed) : colour(kBlue));
    maskAndFinish(5, 125, 15, 115);
    choose(u"mnuFullMapMax"_s);
    EXPECT_EQ(dotAt(10, 120), 0xFFFFFFU);
    EXPECT_EQ(dotAt(20, 120), colour(kRed));
    pickItem(*window, u"comboRow"_s, 0);
    EXPECT_FALSE(shows(kRed));
}

TEST_F(ClipWindow, DrawsTheMapAtItsNewSizeWhenTheWindowGrows) {
    openOnFullMap();
    window->resize(window->size() + QSize(120, 60));
    QTest::qWait(1);
    for (const Record& site : expected)
        EXPECT_EQ(dotAt(site[0], site[1]), colour(kBlue));
    EXPECT_EQ(window->picMapZoom->size(), window->mapArea->size() - QSize(2, 2));
}

namespace {

class PaintCounter : public QObject {
  public:
    int paints = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

}  // namespace

TEST_F(ClipWindow, LetsTheMapGrowBeforeTheEyesButNotFasterThanTheyFollow) {
    surveyUnderTest() = manySites(3000000);
    openOnFullMap();
    PaintCounter counter;
    window->picMapZoom->installEventFilter(&counter);
    QElapsedTimer time;
    time.start();
    window->DisplayMap();
    EXPECT_LE(counter.paints, time.elapsed() / 33 + 1);
    if (time.elapsed() > 100) {
        EXPECT_GE(counter.paints, 2);
    }
}

TEST_F(ClipWindow, OpensItsThreeHelpDocuments) {
    open();
    theSession().AppDir = "/no/such/directory";
    for (const int number : {1, 2, 3}) {
        boxes.tell(
            u"Warning!  File resource error.  VARN can not find the following file:\n"
            u"/no/such/directory/helpdocs/hdoc%1.rtf"_s.arg(107 + number));
        choose(u"mnuGDRH%1"_s.arg(number));
    }
    EXPECT_EQ(boxes.pending(), 0);
}

TEST_F(ClipWindow, ShowsTheZoomThatWasChosenBeforeACopy) {
    openOnFullMap();
    window->picMapZoom->setFocus();
    QTest::keyClick(window->picMapZoom, Qt::Key_Plus);
    QTest::keyClick(window->picMapZoom, Qt::Key_C, Qt::ControlModifier);
    QCoreApplication::processEvents();
    const QImage shown = picture();
    window->DisplayMap();
    EXPECT_EQ(shown, picture());
}

}  // namespace tessel
