// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ClipWindow.h"

namespace tessel {

namespace {

const QString kNoMorePoint = u"There is no more point left in the file!"_s;
const QString kRowsLost =
    u"Warning!  The sites which you have deleted have resulted in the complete\n"
    u"annihilation of 1 or more rows.  Due to this, all row information has been lost.\n"
    u"\n"
    u"In order to fix this problem, you will need to recalculate the row numbering\n"
    u"information.  This can be done using the Delete / Join / Recalculate Rows menu\n"
    u"option (by choosing the recalculate row numbering sub-option procedure).\n"
    u"\n"
    u"To avoid this problem in the future, you should avoid deleted entire rows\n"
    u"when clipping a survey grid."_s;

}  // namespace

TEST_F(ClipWindowOnFullMap, RestoresOnYesOnly) {
    maskAndFinish(5, 125, 15, 95);
    expectState(kBrowsingMasked, 3, 0);
    boxes.ask(false, kRestoreQuestion);
    choose(u"mnuRecover"_s);
    expectState(kBrowsingMasked, 3, 0);
    EXPECT_EQ(dotAt(10, 110), 0xFFFFFFU);  // drawn again: the yellow is gone
    restore();
    expectState(kRestored, 0, 0);
    EXPECT_EQ(dotAt(10, 110), colour(kBlue));
    closeWindow();
    EXPECT_TRUE(window.isNull());
}

TEST_F(ClipWindowOnFullMap, KeepsTheExtentOfTheMapWhenSitesAtItsEdgeAreDeleted) {
    maskAndDelete(-1, 125, 15, 95);
    EXPECT_EQ(dotAt(20, 110), colour(kBlue));
    EXPECT_EQ(dotAt(30, 110), colour(kBlue));
    choose(u"mnuZe13"_s);
    EXPECT_EQ(dotAt(30, 110), colour(kBlue));
    choose(u"mnuFullMapMax"_s);  // takes the extent of the sites that are left: X from 20 to 30
    for (const double mapX : {0.0, 1.0})
        EXPECT_EQ(picture().pixel(pixel(mapX, 0.5)) & 0xFFFFFFU, colour(kBlue));
    moveTo(pixel(0.5, 0.5));
    EXPECT_NEAR(window->txtXloc->text().toDouble(), 25, 0.1);
}

TEST_F(ClipWindowOnFullMap, DeletesOnYesOnly) {
    maskAndFinish(5, 125, 15, 95);
    boxes.ask(false, kDeleteQuestion);
    click(window->cmdDelete);
    expectState(kBrowsingMasked, 3, 0);
    EXPECT_EQ(dotAt(10, 110), 0xFFFFFFU);
    EXPECT_EQ(changes->count(), 0);
    deleteMasked();
    std::erase_if(expected, [](const MadeSite& site) { return site.x == 10; });
    expectState(kBrowsing, 0, 3);
    EXPECT_EQ(dotAt(10, 110), 0xFFFFFFU);
    EXPECT_EQ(dotAt(20, 110), colour(kBlue));
    EXPECT_EQ(changes->count(), 1);
    EXPECT_EQ(theSurvey().NumPoints[2], 3);
    maskAndDelete(25, 105, 35, 95);
    expectState(kBrowsing, 0, 4);
}

TEST_F(ClipWindowOnFullMap, DeletingWithNothingMaskedKeepsEverySiteAndSaysThatAllAreDeleted) {
    boxes.ask(true, kDeleteQuestion);
    boxes.tell(kDeleted);
    window->cmdDelete_Click();
    expectState(kBrowsing, 0, 0);
    EXPECT_EQ(changes->count(), 0);
    closeWindow();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(theSurvey().NumRows, 3);
}

TEST_F(ClipWindow, LeavesRowNumbersWithAGapAloneWhenNothingWasDeleted) {
    for (SiteIndex i = 4; i < 8; ++i)
        surveyUnderTest().SiteData(kRow, i) = 7;
    openOnFullMap();
    maskAndFinish(5, 125, 15, 95);
    boxes.ask(true, kExitQuestion);
    closeWindow();
    EXPECT_TRUE(window.isNull());
    expectSurvey();
    EXPECT_EQ(theSurvey().NumRows, 3);
}

TEST_F(ClipWindowOnFullMap, AsksBeforeItClosesWithMaskedSites) {
    maskAndFinish(5, 125, 15, 95);
    boxes.ask(false, kExitQuestion);
    closeWindow();
    ASSERT_FALSE(window.isNull());
    EXPECT_TRUE(window->isVisible());
    expectState(kBrowsingMasked, 3, 0);
    boxes.ask(true, kExitQuestion);
    closeWindow();
    EXPECT_TRUE(window.isNull());
    expectSurvey();
}

TEST_F(ClipWindow, DeclaresTheRowsLostWhenAnyOfThemIsGone) {
    for (const double row : {100.0, 110.0, 120.0}) {
        surveyUnderTest() = threeRows();
        main.menusFollow(MenuEvent::kFewerThanTwoRows);
        openOnFullMap();
        maskAndDelete(-1, row - 5, 35, row + 5);
        expectState(kBrowsing, 0, 4);
        EXPECT_EQ(theSurvey().NumRows, 3);
        EXPECT_FALSE(main.mnuData->isEnabled());
        const int before = beepCount();
        boxes.tell(kRowsLost);
        QSignalSpy& changed = *changes;
        changed.clear();
        window->close();
        EXPECT_EQ(changed.count(), 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(window.isNull());
        EXPECT_EQ(beepCount(), before + 1);
        EXPECT_EQ(boxes.pending(), 0);
        expectOneRow();
        for (const QString& item :
             QStringList{u"mnuData"_s, u"mnuRow"_s, u"mnuStat"_s, u"mnuDistance"_s, u"mnuGrid"_s})
            EXPECT_TRUE(main.menuItem(item)->isEnabled()) << item.toStdString();
    }
}

TEST_F(ClipWindowOnFullMap, DeclaresTheRowsLostEvenWhenTheClosingIsCancelled) {
    maskAndDelete(-1, 105, 35, 95);
    maskAndFinish(-5, 125, 5, 115);
    pickItem(*window, u"comboRow"_s, 3);
    boxes.ask(false, kExitQuestion);
    boxes.tell(kRowsLost);
    closeWindow();
    ASSERT_FALSE(window.isNull());
    expectOneRow();
    expectState(kBrowsingMasked, 1, 4);
    EXPECT_EQ(window->comboRow->count(), 2);
    EXPECT_EQ(window->comboRow->currentText(), u"none"_s);
    EXPECT_FALSE(shows(kRed));
    boxes.ask(true, kExitQuestion);  // and of the rows, nothing more
    closeWindow();
    EXPECT_TRUE(window.isNull());
}

TEST_F(ClipWindowOnFullMap, SaysThatNoPointIsLeftWhenEverySiteWasDeleted) {
    maskAndDelete(-1, 121, 31, 99);
    expectState(kBrowsing, 0, 12);
    EXPECT_FALSE(shows(kBlue));
    choose(u"mnuFullMapTrue"_s);
    choose(u"mnuZnw"_s);
    expectState(kBrowsing, 0, 12);
    const int before = beepCount();
    boxes.tell(kNoMorePoint);
    closeWindow();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(boxes.pending(), 0);
    EXPECT_EQ(beepCount(), before);
    EXPECT_EQ(theSurvey().NumRows, 0);
    EXPECT_EQ(theSurvey().RowIndex, 0);
    for (const QString& item :
         QStringList{u"mnuSave"_s, u"mnuInvokeIDE"_s, u"mnuIDEW"_s, u"mnuRow"_s, u"mnuData"_s, u"mnuStat"_s,
                     u"mnuDistance"_s, u"mnuGrid"_s, u"mnuSigCorr"_s, u"mnuHist"_s, u"mnuClear"_s,
                     u"mnuRecord"_s, u"mnuSaveTable"_s, u"mnuCoordinates"_s})
        EXPECT_FALSE(main.menuItem(item)->isEnabled()) << item.toStdString();
}

}  // namespace tessel
