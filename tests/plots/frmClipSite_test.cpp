// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ClipWindow.h"

namespace tessel {

namespace {

const QString kSiteAt10And110 = u"Row #2, Site # 1005\nEM1 = 35.00 mS/m\nEM2 = 65.00 mS/m"_s;

}  // namespace

TEST_F(ClipWindow, ReadsOutTheSiteUnderThePointer) {
    openOnFullMap();
    moveTo(pixelOfSite(10, 110) + QPoint(2, 1));
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
    moveTo(pixelOfSite(10, 110) + QPoint(8, 0));
    EXPECT_EQ(window->lblSite->text(), QString());
    moveTo(pixelOfSite(10, 110));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(window->picMapZoom, &leave);
    EXPECT_EQ(window->lblSite->text(), QString());
}

TEST_F(ClipWindow, ReadsOutASiteOnACloserLookAndUnderTheCross) {
    openOnFullMap();
    choose(u"mnuZc13v"_s);
    window->picMapZoom->setFocus();
    moveTo(pixelOfSite(10, 110));
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
    QTest::keyClick(window->picMapZoom, Qt::Key_Right);
    EXPECT_EQ(window->lblSite->text(), QString());
    QTest::keyClick(window->picMapZoom, Qt::Key_Left);
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
}

TEST_F(ClipWindow, ReadsOutNoSiteThatIsMaskedOrDeleted) {
    openOnFullMap();
    maskAndFinish(5, 105, 15, 115);
    moveTo(pixelOfSite(10, 110));
    EXPECT_EQ(window->lblSite->text(), QString());
    boxes.ask(true,
              u"This action will restore (i.e., unmask) all currently masked site.\n"
              u"Are you sure you wish to restore these sites?"_s);
    boxes.tell(u"All masked sites have been recovered."_s);
    choose(u"mnuRecover"_s);
    moveTo(pixelOfSite(10, 110) + QPoint(1, 0));
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
    maskAndDelete(5, 105, 15, 115);
    moveTo(pixelOfSite(10, 110));
    EXPECT_EQ(window->lblSite->text(), QString());
    moveTo(pixelOfSite(20, 110));
    EXPECT_EQ(window->lblSite->text(), u"Row #2, Site # 1006\nEM1 = 36.00 mS/m\nEM2 = 66.00 mS/m"_s);
}

}  // namespace tessel
