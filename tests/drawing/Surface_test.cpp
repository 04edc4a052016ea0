// SPDX-License-Identifier: GPL-3.0-or-later
// What the user's hand does on every surface, shown on a picture box.
#include "drawing/PictureBox.h"
#include "support/Pixels.h"

namespace tessel {

namespace {

class SurfaceTest : public testing::Test {
  protected:
    SurfaceTest() {
        box.resize(400, 300);
        box.setScale(Rectangle::at(0, 0, 1, 1));
        box.show();
        box.setFocus();
    }
    ~SurfaceTest() override {
        if (menu() != nullptr) menu()->close();
    }
    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    void rightDrag(const QPoint& to) { drag(box, Qt::RightButton, {100, 100}, to); }
    // Chooses the item that begins like this.
    void choose(const QString& text) {
        rightDrag({100, 100});
        ASSERT_NE(menu(), nullptr);
        for (QAction* const item : menu()->actions())
            if (item->text().remove(u'&').startsWith(text)) {
                menu()->setActiveAction(item);
                return QTest::keyClick(menu(), Qt::Key_Return);
            }
        FAIL() << text.toStdString();
    }
    void expectScale(double left, double top, double side) {
        EXPECT_NEAR(box.scale().x.from, left, 1e-9);
        EXPECT_NEAR(box.scale().y.from, top, 1e-9);
        EXPECT_NEAR(box.scale().width(), side, 1e-9);
    }

    PictureBox box;
    QSignalSpy copies{&box, &Surface::copyWanted};
    QSignalSpy pictures{&box, &Surface::pictureWanted};
};

}  // namespace

TEST_F(SurfaceTest, OpensItsMenuWithARightClickAndNotWithADrag) {
    rightDrag({140, 120});
    EXPECT_EQ(menu(), nullptr);
    rightDrag({101, 101});
    EXPECT_NE(menu(), nullptr);
}

TEST_F(SurfaceTest, OpensItsMenuWithTheMenuKey) {
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {50, 50}, box.mapToGlobal(QPoint(50, 50)));
    QApplication::sendEvent(&box, &byMouse);
    EXPECT_EQ(menu(), nullptr) << "the release of the button opens it";
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {50, 50}, box.mapToGlobal(QPoint(50, 50)));
    QApplication::sendEvent(&box, &byKey);
    EXPECT_NE(menu(), nullptr);
}

TEST_F(SurfaceTest, ZoomsMovesAndReturnsByItsMenu) {
    choose(u"Zoom in"_s);
    expectScale(0.1, 0.1, 0.8);
    choose(u"Move right"_s);
    expectScale(0.18, 0.1, 0.8);
    choose(u"Move down"_s);
    expectScale(0.18, 0.18, 0.8);
    choose(u"Move left"_s);
    choose(u"Move up"_s);
    expectScale(0.1, 0.1, 0.8);
    choose(u"Zoom out"_s);
    expectScale(0, 0, 1);
    choose(u"Zoom in"_s);
    choose(u"Whole view"_s);
    expectScale(0, 0, 1);
}

TEST_F(SurfaceTest, ZoomsMovesAndReturnsByKeys) {
    QTest::keyClick(&box, Qt::Key_Plus);
    expectScale(0.1, 0.1, 0.8);
    QTest::keyClick(&box, Qt::Key_Minus);
    expectScale(0, 0, 1);
    QTest::keyClick(&box, Qt::Key_Equal);
    expectScale(0.1, 0.1, 0.8);
    QTest::keyClick(&box, Qt::Key_Right, Qt::ControlModifier);
    expectScale(0.18, 0.1, 0.8);
    QTest::keyClick(&box, Qt::Key_Home);
    expectScale(0, 0, 1);
}

TEST_F(SurfaceTest, ReturnsToTheScaleThatWasSetLast) {
    QTest::keyClick(&box, Qt::Key_Plus);
    box.setScale(Rectangle::at(0.5, 0.5, 0.25, 0.25));
    QTest::keyClick(&box, Qt::Key_Plus);
    QTest::mouseDClick(&box, Qt::LeftButton, Qt::NoModifier, {100, 100});
    EXPECT_NEAR(box.scale().width(), 0.2, 1e-9) << "both clicks may be corners of a rectangle";
    QTest::keyClick(&box, Qt::Key_Home);
    expectScale(0.5, 0.5, 0.25);
}

TEST_F(SurfaceTest, OffersNoOtherViewWhereThereIsNone) {
    box.setZoomable(false);
    rightDrag({100, 100});
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(menu()->actions().size(), 2);
}

TEST_F(SurfaceTest, AsksForItsPictureByItsMenuAndByKey) {
    choose(u"Save the plot as a picture"_s);
    EXPECT_EQ(pictures.count(), 1);
    choose(u"Copy the picture"_s);
    EXPECT_EQ(copies.count(), 1);
    QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copies.count(), 2);
}

}  // namespace tessel
