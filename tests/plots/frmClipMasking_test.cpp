// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ClipWindow.h"
#include "support/TextAtPaint.h"

namespace tessel {

TEST_F(ClipWindowOnFullMap, LeavesTheKeyboardOnTheMapWhenClippingEnds) {
    maskAndFinish(-5, 95, 35, 105);
    EXPECT_TRUE(window->picMapZoom->hasFocus());
    deleteMasked();
    EXPECT_TRUE(window->picMapZoom->hasFocus());
}

TEST_F(ClipWindowOnFullMap, IgnoresClicksWhileBrowsing) {
    drawRectangle(pixelOfSite(-1, 99.2), pixelOfSite(15, 115));
    expectState(kBrowsing, 0, 0);
    EXPECT_FALSE(shows(kLightYellow));
    EXPECT_FALSE(shows(kGreen));
}

TEST_F(ClipWindowOnFullMap, TakesTheSecondCornerFromTheLastMoveNotFromTheClick) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(-1, 120.8));
    press(pixelOfSite(-1, 120.8));
    moveTo(pixelOfSite(5, 115));
    // A press that no move precedes, as a touch screen sends it.
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(pixelOfSite(31, 99.2)),
                      window->picMapZoom->mapToGlobal(QPointF(pixelOfSite(31, 99.2))), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window->picMapZoom, &event);
    expectState(kClipping, 1, 0);
}

TEST_F(ClipWindowOnFullMap, MasksNothingWithTwoPressesThatNoMoveDivides) {
    click(window->cmdClipOn);
    mask(-1, 121, 5, 115);  // its corners must not be those of the next one
    expectState(kClipping, 1, 0);
    const QPointF place = window->picMapZoom->toScale(pixelOfSite(31, 120.8));
    window->picMapZoom_MouseDown(place.x(), place.y());
    window->picMapZoom_MouseDown(place.x(), place.y());
    expectState(kClipping, 1, 0);
}

TEST_F(ClipWindowOnFullMap, ShowsTheOpenRectangleGreenAndTheMaskedOneYellow) {
    click(window->cmdClipOn);
    const QPoint from = pixelOfSite(5, 115), to = pixelOfSite(15, 105), between = pixelOfSite(12, 107);
    // An outline lies on the pixels of its coordinate or right beside them.
    const auto isNear = [this](const QPoint& place, int wanted) {
        const QImage image = picture();
        for (int row = place.y() - 1; row <= place.y() + 1; ++row)
            if ((image.pixel(place.x(), row) & 0xFFFFFFU) == colour(wanted)) return true;
        return false;
    };
    moveTo(from);
    press(from);
    moveTo(between);
    const QPoint edge((from.x() + between.x()) / 2, between.y());
    EXPECT_TRUE(isNear(edge, kGreen));
    moveTo(to);
    EXPECT_FALSE(isNear(edge, kGreen));
    EXPECT_TRUE(isNear({edge.x(), to.y()}, kGreen));
    expectState(kRectangleOpen, 0, 0);
    press(to);
    EXPECT_FALSE(shows(kGreen));
    EXPECT_TRUE(isNear(edge, kLightYellow));
    EXPECT_EQ(dotAt(10, 110), colour(kLightYellow));
    click(window->cmdClipOff);
    EXPECT_TRUE(shows(kLightYellow));  // until the map is drawn again
    choose(u"mnuFullMapMax"_s);
    EXPECT_FALSE(shows(kLightYellow));
}

TEST_F(ClipWindowOnFullMap, ShowsTheRectangleBeforeItsSitesAreMasked) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(5, 115));
    press(pixelOfSite(5, 115));
    moveTo(pixelOfSite(15, 105));
    QCoreApplication::processEvents();
    const TextAtPaint paints(*window->picMapZoom, *window->lblMS);
    press(pixelOfSite(15, 105));
    EXPECT_EQ(paints.texts, QStringList{u"0"_s});
    expectState(kClipping, 1, 0);
}

TEST_F(ClipWindowOnFullMap, EscapeAbandonsAnOpenRectangleAndOnlyThenClosesTheWindow) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(-1, 120.8));
    press(pixelOfSite(-1, 120.8));
    moveTo(pixelOfSite(15, 105));
    EXPECT_TRUE(shows(kGreen));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(shows(kGreen));
    expectState(kClipping, 0, 0);
    moveTo(pixelOfSite(20, 115));
    EXPECT_FALSE(shows(kGreen));
    mask(5, 115, 15, 105);  // begins with a first corner again
    expectState(kClipping, 1, 0);
    click(window->cmdClipOff);
    boxes.ask(true, kExitQuestion);
    QTest::keyClick(window, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

TEST_F(ClipWindowOnFullMap, CanBeClippedByKeyboardAlone) {
    QTest::keyClick(window, Qt::Key_C, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return window->cmdClipOff->isEnabled(); }));
    const auto key = [this](Qt::Key k, Qt::KeyboardModifiers m = {}, int times = 1) {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(window->picMapZoom, k, m);
    };
    const auto x = [this] { return window->txtXloc->text().toDouble(); };
    const auto y = [this] { return window->txtYloc->text().toDouble(); };
    key(Qt::Key_Return);  // shows the cross, in the middle
    expectState(kClipping, 0, 0);
    EXPECT_EQ(window->txtXloc->text() + u' ' + window->txtYloc->text(), u"15.0 110.0"_s);
    while (x() > 9)
        key(Qt::Key_Left);
    while (y() < 111)
        key(Qt::Key_Up);
    key(Qt::Key_Return);
    expectState(kRectangleOpen, 0, 0);
    while (x() < 21)
        key(Qt::Key_Right);
    while (y() > 109)
        key(Qt::Key_Down);
    key(Qt::Key_Enter);
    expectState(kClipping, 2, 0);
    const double before = x();
    key(Qt::Key_Right);
    EXPECT_NEAR(x() - before, 10 * window->picMapZoom->pixelSize().width() * 30, 0.11);
    key(Qt::Key_Left, Qt::ShiftModifier, 10);
    EXPECT_NEAR(x(), before, 0.01);
    key(Qt::Key_Right, {}, 300);  // no further than the edge of the box
    EXPECT_EQ(window->txtXloc->text(), u"31.5"_s);
}

TEST_F(ClipWindowOnFullMap, ZoomsWithTheWheelAndMovesByDraggingWhileARectangleIsOpen) {
    click(window->cmdClipOn);
    moveTo(pixelOfSite(5, 115));
    press(pixelOfSite(5, 115));
    const QPoint pointer = pixelOfSite(8, 112);
    moveTo(pointer);
    const QPointF place = window->picMapZoom->toScale(pointer);
    turnWheel(*window->picMapZoom, pointer, 240);
    EXPECT_LT(window->picMapZoom->scale().width(), 1.1);
    EXPECT_NEAR(window->picMapZoom->toScale(pointer).x(), place.x(), 1e-12);
    EXPECT_NEAR(window->picMapZoom->toScale(pointer).y(), place.y(), 1e-12);
    EXPECT_EQ(dotAt(10, 110), colour(kBlue));  // the sites are drawn at their new places
    EXPECT_TRUE(shows(kGreen));
    const QPoint by(-30, -20);
    const QPoint site = pixelOfSite(10, 110);
    drag(*window->picMapZoom, Qt::RightButton, pointer, pointer + by);
    EXPECT_EQ(pixelOfSite(10, 110), site + by);
    EXPECT_EQ(dotAt(10, 110), colour(kBlue));
    expectState(kRectangleOpen, 0, 0);
    moveTo(pixelOfSite(12, 108));
    press(pixelOfSite(12, 108));
    expectState(kClipping, 1, 0);
}

}  // namespace tessel
