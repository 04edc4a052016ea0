// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "plots/ClipWindow.h"
#include "plots/map_zones.h"
#include "support/survey_under_test.h"

namespace tessel {

TEST_F(ClipWindow, OpensWithWhitePaperThatCannotBeZoomed) {
    open();
    expectState(kNotShown, 0, 0);
    EXPECT_TRUE(window->txtXloc->text().isEmpty());
    EXPECT_TRUE(window->txtYloc->text().isEmpty());
    EXPECT_TRUE(window->optUTM->isChecked());
    QStringList rows;
    for (int i = 0; i < window->comboRow->count(); ++i)
        rows << window->comboRow->itemText(i);
    EXPECT_EQ(rows, (QStringList{u"none"_s, u"1"_s, u"2"_s, u"3"_s}));
    moveTo({100, 100});
    EXPECT_EQ(window->picMapZoom->cursor().shape(), Qt::CrossCursor);
    turnWheel(*window->picMapZoom, {50, 50}, 120);
    QTest::keyClick(window, Qt::Key_Plus);
    EXPECT_EQ(window->picMapZoom->scale(), (Rectangle{}));
    EXPECT_TRUE(window->txtXloc->text().isEmpty());
    const QImage paper = picture();
    EXPECT_EQ(countColour(paper, Qt::white), paper.width() * paper.height());
    EXPECT_TRUE(window->picMapZoom->findChildren<QWidget*>().isEmpty());
}

TEST_F(ClipWindow, ShowsTheFullMapInTrueResolutionOnASquare) {
    open();
    choose(u"mnuFullMapTrue"_s);
    mapIsTrue = true;
    expectState(kBrowsing, 0, 0);
    EXPECT_EQ(window->picMapZoom->scale(), (Rectangle::at(-0.05, -0.05, 1.1, 1.1)));
    EXPECT_EQ(window->picMapZoom->width(), window->picMapZoom->height());
    expectBlueDots();
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
    expectBlueDots();
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

TEST_F(ClipWindowOnFullMap, ShowsEachZoneWithoutComputingTheExtentAnew) {
    for (const MapZone& zone : kMapZones) {
        const QString item = QString::fromLatin1(zone.item.data(), qsizetype(zone.item.size()));
        choose(item);
        EXPECT_EQ(window->picMapZoom->scale(), zone.window) << item.toStdString();
        const QString caption = window->findChild<QAction*>(item)->text().remove(u'&');
        EXPECT_TRUE(window->lblState->text().endsWith(u" Shown: %1, max resolution."_s.arg(caption)));
        expectState(kBrowsing, 0, 0);
        int inSight = 0;
        for (const MadeSite& site : expected) {
            const QPoint place = pixelOfSite(site.x, site.y);
            if (!window->picMapZoom->rect().adjusted(2, 2, -2, -2).contains(place)) continue;
            ++inSight;
            EXPECT_EQ(dotAt(site.x, site.y), colour(kBlue)) << item.toStdString();
        }
        EXPECT_EQ(inSight > 0, shows(kBlue)) << item.toStdString();
    }
}

TEST_F(ClipWindow, ShowsTheSelectedFormatLightBlue) {
    open();
    choose(u"mnuFullMapMax"_s);
    const auto expectSelected = [this](const QRadioButton* selected) {
        for (const QRadioButton* option : {window->optUTM, window->optLL})
            EXPECT_EQ(inkOf(*option), captionColour(option == selected ? kLightBlue : kBlack, *option))
                << option->objectName().toStdString();
    };
    expectSelected(window->optUTM);
    QTest::mouseClick(window->optLL, Qt::LeftButton, Qt::NoModifier, {8, window->optLL->height() / 2});
    expectSelected(window->optLL);
    QTest::mouseClick(window->optUTM, Qt::LeftButton, Qt::NoModifier, {8, window->optUTM->height() / 2});
    expectSelected(window->optUTM);
}

TEST_F(ClipWindowOnFullMap, DrawsDotsTwoPixelsWide) {
    const QImage image = picture();
    const QPoint place = pixelOfSite(10, 110);
    int blue = 0;
    for (int row = place.y() - 6; row <= place.y() + 6; ++row)
        for (int column = place.x() - 6; column <= place.x() + 6; ++column)
            blue += (image.pixel(column, row) & 0xFFFFFFU) == colour(kBlue) ? 1 : 0;
    EXPECT_EQ(blue, 4 * image.devicePixelRatio() * image.devicePixelRatio());
}

TEST_F(ClipWindowOnFullMap, HighlightsTheRowOfTheChosenNumber) {
    pickItem(*window, u"comboRow"_s, 3);
    EXPECT_EQ(window->comboRow->currentText(), u"3"_s);
    for (const MadeSite& site : expected)
        EXPECT_EQ(dotAt(site.x, site.y), site.row == 3 ? colour(kRed) : colour(kBlue));
    maskAndFinish(5, 125, 15, 115);
    choose(u"mnuFullMapMax"_s);
    EXPECT_EQ(dotAt(10, 120), 0xFFFFFFU);
    EXPECT_EQ(dotAt(20, 120), colour(kRed));
    pickItem(*window, u"comboRow"_s, 0);
    EXPECT_FALSE(shows(kRed));
}

TEST_F(ClipWindowOnFullMap, DrawsTheMapAtItsNewSizeWhenTheWindowGrows) {
    window->resize(window->size() + QSize(120, 60));
    QTest::qWait(1);
    expectBlueDots();
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
    surveyUnderTest() = surveyOfReadings(
        3000000, [](SiteIndex) { return 1.0; }, [](SiteIndex) { return 2.0; });
    for (SiteIndex i = 0; i < theSurvey().NumSites; ++i) {
        surveyUnderTest().SiteData(kX, i) = static_cast<double>(i % 1000);
        surveyUnderTest().SiteData(kY, i) = static_cast<double>(i / 1000);
    }
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
}

TEST_F(ClipWindowOnFullMap, ShowsTheZoomThatWasChosenBeforeACopy) {
    window->picMapZoom->setFocus();
    QTest::keyClick(window->picMapZoom, Qt::Key_Plus);
    QTest::keyClick(window->picMapZoom, Qt::Key_C, Qt::ControlModifier);
    QCoreApplication::processEvents();
    const QImage shown = picture();
    window->DisplayMap();
    EXPECT_EQ(shown, picture());
}

}  // namespace tessel
