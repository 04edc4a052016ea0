// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ClipWindow.h"

namespace tessel {

namespace {

const QString kFirst = u"Click the first corner of a rectangle, or drag over it. Finished ends clipping. "_s;
const QString kSecond = u"Click the second corner, or press Esc to give the rectangle up. "_s;
const QString kBegin = u"Clip Grid begins to mask sites in rectangles. "_s;
const QString kFull = u"Shown: full map, max resolution."_s;

void send(QWidget& widget, QEvent::Type type, const QPoint& pixel, Qt::MouseButton button,
          Qt::MouseButtons buttons) {
    QMouseEvent event(type, QPointF(pixel), widget.mapToGlobal(QPointF(pixel)), button, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace

class ClipWindowState : public ClipWindowOnFullMap {
  protected:
    QString line() const { return window->lblState->text(); }

    void pressAt(const QPoint& place) {
        send(*window->picMapZoom, QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton);
    }
    void dragTo(const QPoint& place) {
        send(*window->picMapZoom, QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton);
    }
    void releaseAt(const QPoint& place) {
        send(*window->picMapZoom, QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
    }
    void drag(const QPoint& from, const QPoint& to) {
        moveTo(from);
        pressAt(from);
        dragTo(to);
        releaseAt(to);
    }
};

TEST_F(ClipWindowState, IsToldUnderThePicture) {
    EXPECT_GE(window->lblState->mapTo(window, QPoint()).y(),
              window->mapArea->mapTo(window, QPoint(0, window->mapArea->height())).y());
    EXPECT_EQ(line(), kBegin + kFull);
    click(window->cmdClipOn);
    EXPECT_EQ(line(), kFirst + kFull);
    moveTo(pixel(0.2, 0.2));
    press(pixel(0.2, 0.2));
    EXPECT_EQ(line(), kSecond + kFull);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(line(), kFirst + kFull);
    mask(5, 95, 15, 105);
    EXPECT_EQ(line(), kFirst + kFull);
    click(window->cmdClipOff);
    EXPECT_EQ(line(), kBegin + kFull);
}

TEST_F(ClipWindowState, NamesTheMapThatIsShown) {
    choose(u"mnuFullMapTrue"_s);
    EXPECT_EQ(line(), kBegin + u"Shown: full map, true resolution."_s);
    choose(u"mnuZnw"_s);
    EXPECT_EQ(line(), kBegin + u"Shown: north-west quadrant, true resolution."_s);
    QTest::keyClick(window->picMapZoom, Qt::Key_Plus);
    EXPECT_EQ(line(), kBegin + u"Shown: a view of your own, true resolution."_s);
    choose(u"mnuFullMapMax"_s);
    EXPECT_EQ(line(), kBegin + kFull);
}

TEST_F(ClipWindowState, NeverChangesTheSizeOfTheMap) {
    for (const int width : {window->minimumSizeHint().width(), 640, 800, 980}) {
        window->resize(width, 600);
        QCoreApplication::processEvents();
        choose(u"mnuFullMapMax"_s);
        const QSize map = window->picMapZoom->size();
        choose(u"mnuZc13h"_s);
        click(window->cmdClipOn);
        QCoreApplication::processEvents();
        EXPECT_EQ(window->picMapZoom->size(), map) << width;
        EXPECT_GE(window->lblState->height(), window->lblState->heightForWidth(window->lblState->width()));
        click(window->cmdClipOff);
        expectState(kBrowsing, 0, 0);
    }
}

TEST_F(ClipWindowState, CompletesARectangleThatIsDragged) {
    click(window->cmdClipOn);
    drag(pixelOfSite(5, 105), pixelOfSite(15, 99.2));
    EXPECT_EQ(window->lblMS->text(), u"1"_s);
    EXPECT_TRUE(window->cmdClipOff->isEnabled());
    EXPECT_TRUE(shows(kLightYellow));
    EXPECT_EQ(line(), kFirst + kFull);
    moveTo(pixel(0.9, 0.9));
    EXPECT_FALSE(shows(kGreen));
    drag(pixelOfSite(31, 120.8), pixelOfSite(15, 115));
    EXPECT_EQ(window->lblMS->text(), u"3"_s);
    click(window->cmdClipOff);
}

TEST_F(ClipWindowState, WaitsForTheSecondClickAfterAPressThatHardlyMoved) {
    click(window->cmdClipOn);
    const QPoint from = pixelOfSite(5, 105);
    drag(from, from + QPoint(6, 8));
    EXPECT_FALSE(window->cmdClipOff->isEnabled());
    EXPECT_EQ(line(), kSecond + kFull);
    QTest::keyClick(window, Qt::Key_Escape);
    drag(from, from + QPoint(7, 8));
    EXPECT_TRUE(window->cmdClipOff->isEnabled());
    EXPECT_EQ(line(), kFirst + kFull);
}

TEST_F(ClipWindowState, TakesTheCornerOfTheLastMoveWhereADragEnds) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(5, 105));
    pressAt(pixelOfSite(5, 105));
    dragTo(pixelOfSite(15, 99.2));
    releaseAt(pixelOfSite(31, 99.2));
    EXPECT_EQ(window->lblMS->text(), u"1"_s);
    pressAt(pixelOfSite(5, 115));
    releaseAt(pixelOfSite(31, 99.2));
    EXPECT_FALSE(window->cmdClipOff->isEnabled());
    QTest::keyClick(window, Qt::Key_Escape);
}

TEST_F(ClipWindowState, CompletesWithTheSecondClickAndNotWithItsRelease) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(5, 105));
    press(pixelOfSite(5, 105));
    moveTo(pixelOfSite(15, 99.2));
    pressAt(pixelOfSite(15, 99.2));
    EXPECT_EQ(window->lblMS->text(), u"1"_s);
    dragTo(pixelOfSite(31, 120));
    releaseAt(pixelOfSite(31, 120));
    EXPECT_EQ(window->lblMS->text(), u"1"_s);
    EXPECT_TRUE(window->cmdClipOff->isEnabled());
}

TEST_F(ClipWindowState, GivesUpARectangleThatIsBeingDragged) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(5, 105));
    pressAt(pixelOfSite(5, 105));
    dragTo(pixelOfSite(15, 99.2));
    QTest::keyClick(window, Qt::Key_Escape);
    releaseAt(pixelOfSite(15, 99.2));
    EXPECT_EQ(window->lblMS->text(), u"0"_s);
    EXPECT_EQ(line(), kFirst + kFull);
}

TEST_F(ClipWindowState, MasksNothingOutOfSightWhereADragLeavesTheMap) {
    choose(u"mnuZnw"_s);
    click(window->cmdClipOn);
    // From between the first two columns of sites beyond the right and the lower edge of the quadrant.
    const QPoint from = pixelOfSite(5, 120.8);
    drag(from, QPoint(window->picMapZoom->width() + 900, window->picMapZoom->height() + 900));
    EXPECT_EQ(window->lblMS->text(), u"1"_s);
}

}  // namespace tessel
