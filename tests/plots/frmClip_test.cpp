// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "plots/ClipWindow.h"

#include <QMap>
#include <QSet>

namespace tessel {

TEST_F(ClipWindow, BearsTheNamesAndCaptionsOfItsControls) {
    open();
    EXPECT_EQ(window->windowTitle(), u"Full Survey Grid Data Removal Window"_s);
    const QMap<QString, QString> items = {
        {u"mnuV"_s, u"View"_s},
        {u"mnuFullMapTrue"_s, u"display full map (using true resolution)"_s},
        {u"mnuFullMapMax"_s, u"display full map (using max resolution)"_s},
        {u"mnuZ"_s, u"Zoom"_s},
        {u"mnuZnorth"_s, u"northern edge of field"_s},
        {u"mnuZsouth"_s, u"southern edge of field"_s},
        {u"mnuZwest"_s, u"western edge of field"_s},
        {u"mnuZeast"_s, u"eastern edge of field"_s},
        {u"mnuZnw"_s, u"north-west quadrant"_s},
        {u"mnuZne"_s, u"north-east quadrant"_s},
        {u"mnuZsw"_s, u"south-west quadrant"_s},
        {u"mnuZse"_s, u"south-east quadrant"_s},
        {u"mnuZw13"_s, u"western 1/3 of field"_s},
        {u"mnuZc13v"_s, u"center 1/3 of field (vertical)"_s},
        {u"mnuZe13"_s, u"eastern 1/3 of field"_s},
        {u"mnuZn13"_s, u"northern 1/3 of field"_s},
        {u"mnuZc13h"_s, u"center 1/3 of field (horizontal)"_s},
        {u"mnuZs13"_s, u"southern 1/3 of field"_s},
        {u"mnuR"_s, u"Restore"_s},
        {u"mnuRecover"_s, u"Recover (unmask) all masked sites"_s},
        {u"mnuGDRH"_s, u"Help"_s},
        {u"mnuGDRH1"_s, u"How to use the GDR window"_s},
        {u"mnuGDRH2"_s, u"Navigating the GDR menu bar"_s},
        {u"mnuGDRH3"_s, u"Using the on-screen GDR controls"_s},
        {u"mnuExit"_s, u"Exit"_s},
        {u"mnuDone"_s, u"Return to main program window"_s}};
    for (const auto& [name, caption] : items.asKeyValueRange()) {
        ASSERT_NE(window->findChild<QAction*>(name), nullptr) << name.toStdString();
        EXPECT_EQ(plainText(window->findChild<QAction*>(name)->text()), caption);
    }
    EXPECT_EQ(plainText(window->frameClipC->title()), u"Data Removal Controls:"_s);
    EXPECT_EQ(plainText(window->frameHLR->title()), u"High-light Row: "_s);
    EXPECT_EQ(plainText(window->frameLoc->title()), u"Cursor Location: "_s);
    EXPECT_EQ(plainText(window->cmdClipOn->text()), u"Clip Grid"_s);
    EXPECT_EQ(plainText(window->cmdClipOff->text()), u"Finished"_s);
    EXPECT_EQ(plainText(window->cmdDelete->text()), u"Delete all Masked Sites"_s);
    EXPECT_EQ(plainText(window->optUTM->text()), u"1 ddp"_s);
    EXPECT_EQ(plainText(window->optLL->text()), u"5 ddp"_s);
    EXPECT_EQ(window->lblMSCaption->text(), u"Masked Sites:"_s);
    EXPECT_EQ(window->lblVSCaption->text(), u"Valid Sites:"_s);
    EXPECT_EQ(window->lblDSCaption->text(), u"Deleted Sites:"_s);
    EXPECT_EQ(window->txtXlocCaption->text(), u"X-loc:"_s);
    EXPECT_EQ(window->txtYlocCaption->text(), u"Y-loc:"_s);
}

TEST_F(ClipWindow, GivesEveryItemOfAMenuALetterOfItsOwn) {
    open();
    for (QMenu* menu : window->findChildren<QMenu*>()) {
        QSet<QChar> letters;
        for (const QAction* item : menu->actions()) {
            if (item->isSeparator()) continue;
            const qsizetype mark = item->text().indexOf(u'&');
            ASSERT_GE(mark, 0) << item->text().toStdString();
            const QChar letter = item->text().at(mark + 1).toLower();
            EXPECT_FALSE(letters.contains(letter)) << item->text().toStdString();
            letters << letter;
        }
    }
}

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
    EXPECT_EQ(window->picMapZoom->scale(), (PictureBox::Scale{-0.05, -0.05, 1.1, 1.1}));
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
    EXPECT_EQ(window->picMapZoom->scale(), (PictureBox::Scale{-0.05, -0.05, 1.1, 1.1}));
    EXPECT_EQ(window->picMapZoom->size(), window->mapArea->size() - QSize(2, 2));
    for (const Record& site : expected)
        EXPECT_EQ(dotAt(site[0], site[1]), colour(kBlue));
    EXPECT_EQ(pixelOfSite(0, 120), pixel(0, 0));
    EXPECT_EQ(pixelOfSite(30, 100), pixel(1, 1));
}

TEST_F(ClipWindow, ShowsASingleSiteInTheMiddle) {
    theSurvey().SiteData.resize(1);
    theSurvey().SiteID.resize(1);
    theSurvey().NumSites = theSurvey().NumRows = 1;
    Calculate_Distance(theSurvey());
    open();
    for (const QString& item : {u"mnuFullMapTrue"_s, u"mnuFullMapMax"_s}) {
        choose(item);
        EXPECT_EQ(picture().pixel(pixel(0.5, 0.5)) & 0xFFFFFFU, colour(kBlue));
    }
    expectState(kBrowsing, 0, 0);
}

TEST_F(ClipWindow, ShowsEachZoneWithoutComputingTheExtentAnew) {
    const QMap<QString, PictureBox::Scale> zones = {
        {u"mnuZnorth"_s, {-0.05, -0.05, 1.1, 0.2}}, {u"mnuZsouth"_s, {-0.05, 0.85, 1.1, 0.2}},
        {u"mnuZwest"_s, {-0.05, -0.05, 0.2, 1.1}},  {u"mnuZeast"_s, {0.85, -0.05, 0.2, 1.1}},
        {u"mnuZnw"_s, {-0.05, -0.05, 0.55, 0.55}},  {u"mnuZne"_s, {0.5, -0.05, 0.55, 0.55}},
        {u"mnuZsw"_s, {-0.05, 0.5, 0.55, 0.55}},    {u"mnuZse"_s, {0.5, 0.5, 0.55, 0.55}},
        {u"mnuZw13"_s, {-0.05, -0.05, 0.35, 1.1}},  {u"mnuZc13v"_s, {0.3, -0.05, 0.4, 1.1}},
        {u"mnuZe13"_s, {0.7, -0.05, 0.35, 1.1}},    {u"mnuZn13"_s, {-0.05, -0.05, 1.1, 0.35}},
        {u"mnuZc13h"_s, {-0.05, 0.3, 1.1, 0.4}},    {u"mnuZs13"_s, {-0.05, 0.7, 1.1, 0.35}}};
    openOnFullMap();
    for (const auto& [item, scale] : zones.asKeyValueRange()) {
        choose(item);
        EXPECT_EQ(window->picMapZoom->scale(), scale) << item.toStdString();
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

TEST_F(ClipWindow, ReadsOutThePlaceBelowThePointer) {
    openOnFullMap();
    const QPoint place(123, 77);
    const QPointF map = window->picMapZoom->toScale(place);
    const double x = map.x() * 30;
    const double y = (1 - map.y()) * 20 + 100;
    moveTo(place);
    EXPECT_EQ(window->txtXloc->text(), QString::number(x, 'f', 1));
    EXPECT_EQ(window->txtYloc->text(), QString::number(y, 'f', 1));
    EXPECT_EQ(window->picMapZoom->cursor().shape(), Qt::CrossCursor);
    QTest::mouseClick(window->optLL, Qt::LeftButton, Qt::NoModifier, {8, window->optLL->height() / 2});
    EXPECT_EQ(window->txtXloc->text(), QString::number(x, 'f', 1));  // until the pointer moves again
    moveTo({10, 10});
    moveTo(place);
    EXPECT_EQ(window->txtXloc->text(), QString::number(x, 'f', 5));
    EXPECT_EQ(window->txtYloc->text(), QString::number(y, 'f', 5));
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

TEST_F(ClipWindow, DrawsTheMapAnewWhenTheSameRowIsChosenOnceMore) {
    openOnFullMap();
    maskAndFinish(5, 125, 15, 95);
    for (const int row : {0, 2, 2}) {
        window->picMapZoom->fillRectangle(0.4, 0.4, 0.6, 0.6, kLightYellow);
        ASSERT_TRUE(shows(kLightYellow));
        pickItem(*window, u"comboRow"_s, row);
        EXPECT_FALSE(shows(kLightYellow)) << row;
    }
}

TEST_F(ClipWindow, HighlightsNothingWithNoneNotEvenSitesWithoutARow) {
    for (SiteIndex i = 4; i < 8; ++i)
        theSurvey().SiteData(kRow, i) = 0;
    openOnFullMap();
    EXPECT_FALSE(shows(kRed));
    pickItem(*window, u"comboRow"_s, 0);
    EXPECT_FALSE(shows(kRed));
}

TEST_F(ClipWindow, PutsTheHighlightedRowOnTopOfTheOthers) {
    for (SiteIndex i = 0; i < 4; ++i)
        theSurvey().SiteData(kY, i + 4) = 100;
    Calculate_Distance(theSurvey());
    openOnFullMap();
    pickItem(*window, u"comboRow"_s, 1);
    EXPECT_EQ(dotAt(10, 100), colour(kRed));
    pickItem(*window, u"comboRow"_s, 2);
    EXPECT_EQ(dotAt(10, 100), colour(kRed));
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
    theSurvey() = manySites(3000000);
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

TEST_F(ClipWindow, OpensItsThreeHelpDocumentsAndTheFirstWithF1) {
    open();
    theSession().AppDir = "/no/such/directory";
    const auto expectDocument = [this](int number) {
        boxes.tell(
            u"Warning!  File resource error.  VARN can not find the following file:\n"
            u"/no/such/directory/helpdocs/hdoc%1.rtf"_s.arg(number));
    };
    expectDocument(108);
    choose(u"mnuGDRH1"_s);
    expectDocument(109);
    choose(u"mnuGDRH2"_s);
    expectDocument(110);
    choose(u"mnuGDRH3"_s);
    expectDocument(108);
    QTest::keyClick(window, Qt::Key_F1);
    EXPECT_EQ(boxes.pending(), 0);
}

}  // namespace tessel
