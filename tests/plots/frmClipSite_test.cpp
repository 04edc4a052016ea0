// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ClipWindow.h"

namespace tessel {

namespace {

const QString kSiteAt10And110 = u"Row #2, Site # 1005\nEM1 = 35.00 mS/m\nEM2 = 65.00 mS/m"_s;

}  // namespace

TEST_F(ClipWindowOnFullMap, ReadsOutTheSiteUnderThePointer) {
    moveTo(pixelOfSite(10, 110) + QPoint(2, 1));
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
    moveTo(pixelOfSite(10, 110) + QPoint(8, 0));
    EXPECT_EQ(window->lblSite->text(), QString());
    moveTo(pixelOfSite(10, 110));
    leave(*window->picMapZoom);
    EXPECT_EQ(window->lblSite->text(), QString());
}

TEST_F(ClipWindowOnFullMap, ReadsOutASiteOnACloserLookAndUnderTheCross) {
    choose(u"mnuZc13v"_s);
    window->picMapZoom->setFocus();
    moveTo(pixelOfSite(10, 110));
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
    QTest::keyClick(window->picMapZoom, Qt::Key_Right);
    EXPECT_EQ(window->lblSite->text(), QString());
    QTest::keyClick(window->picMapZoom, Qt::Key_Left);
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
}

TEST_F(ClipWindowOnFullMap, ReadsOutNoSiteThatIsMaskedOrDeleted) {
    maskAndFinish(5, 105, 15, 115);
    moveTo(pixelOfSite(10, 110));
    EXPECT_EQ(window->lblSite->text(), QString());
    restore();
    moveTo(pixelOfSite(10, 110) + QPoint(1, 0));
    EXPECT_EQ(window->lblSite->text(), kSiteAt10And110);
    maskAndDelete(15, 105, 5, 115);
    moveTo(pixelOfSite(10, 110));
    EXPECT_EQ(window->lblSite->text(), QString());
    moveTo(pixelOfSite(20, 110));
    EXPECT_EQ(window->lblSite->text(), u"Row #2, Site # 1006\nEM1 = 36.00 mS/m\nEM2 = 66.00 mS/m"_s);
}

}  // namespace tessel
