// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Windows.h"

namespace tessel {

namespace {

// A box above three option buttons, beside a window that owns it.
class ShownWindow : public testing::Test {
  protected:
    ShownWindow() {
        owner.move(600, 0);
        owner.show();
        auto* const column = new QVBoxLayout(window);
        column->addWidget(box);
        for (QRadioButton*& option : options)
            column->addWidget(option = new QRadioButton(u"one of them"_s));
    }

    void show() {
        showBeside(window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        box->setFocus();
    }

    void pressTab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }

    QWidget owner;
    QWidget* const window = new QWidget(&owner, Qt::Window);
    QLineEdit* const box = new QLineEdit;
    std::array<QRadioButton*, 3> options{};
};

}  // namespace

TEST_F(ShownWindow, IsReachedWithTabAtTheChosenOptionAndGoesOnWithArrows) {
    options[1]->setChecked(true);
    show();
    pressTab();
    EXPECT_TRUE(options[1]->hasFocus());
    QTest::keyClick(options[1], Qt::Key_Down);
    EXPECT_TRUE(options[2]->hasFocus());
    EXPECT_TRUE(options[2]->isChecked());
}

TEST_F(ShownWindow, IsReachedWithTabAtTheFirstOptionOrTheOneThatTheProgramHasChosenSince) {
    show();
    pressTab();
    EXPECT_TRUE(options[0]->hasFocus());
    box->setFocus();
    options[1]->setChecked(true);
    options[2]->setChecked(true);
    pressTab();
    EXPECT_TRUE(options[2]->hasFocus());
    pressTab();
    EXPECT_TRUE(box->hasFocus());
}

TEST_F(ShownWindow, LeavesTheKeyboardToItsOwnerWhenItCloses) {
    show();
    const QPointer<QWidget> closed(window);
    window->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return closed.isNull(); }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&owner));
}

TEST_F(ShownWindow, DoesNotTakeTheKeyboardFromTheWindowThatFollowsIt) {
    show();
    auto* const next = new QWidget(&owner, Qt::Window);
    next->move(0, 400);
    const QPointer<QWidget> closed(window);
    window->close();
    showModal(next);
    ASSERT_TRUE(QTest::qWaitFor([&] { return closed.isNull(); }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(next));
}

TEST_F(ShownWindow, LiesOverItsOwnerAndOnTheScreenWithItsFrame) {
    const QRect screen = owner.screen()->availableGeometry();
    for (const QPoint corner : {screen.topLeft(), screen.bottomRight() - QPoint(300, 200)}) {
        owner.setGeometry(QRect(corner, QSize(300, 200)));
        auto* const table = new QWidget(&owner, Qt::Window);
        table->resize(700, 500);
        showBeside(table);
        EXPECT_TRUE(screen.marginsRemoved(QMargins(0, 24, 0, 0)).contains(table->geometry()));
        EXPECT_EQ(table->size(), QSize(700, 500));
        EXPECT_TRUE(table->geometry().intersects(owner.geometry()));
        delete table;
    }
}

TEST_F(ShownWindow, StaysOnTheScreenWithItsFrameWhereItHasAPlaceOfItsOwn) {
    const QRect screen = owner.screen()->availableGeometry();
    for (const QSize size : {QSize(300, 200), screen.size()}) {
        auto* const table = new QWidget(&owner, Qt::Window);
        table->resize(size);
        table->move(screen.bottomRight() - QPoint(50, 50));
        showBeside(table);
        EXPECT_TRUE(screen.marginsRemoved(QMargins(0, 0, 0, 8)).contains(table->frameGeometry()));
        // Frames of most window systems are thicker than this one's.
        EXPECT_LE(table->pos().y() + table->height() + 40, screen.bottom() + 1);
        delete table;
    }
}

TEST_F(ShownWindow, StaysAboveTheWindowThatItBlocks) {
    showModal(window);
    EXPECT_EQ(window->windowHandle()->transientParent(), owner.windowHandle());
    EXPECT_EQ(window->windowType(), Qt::Dialog);
    EXPECT_TRUE(window->windowFlags() & Qt::WindowMaximizeButtonHint);
}

TEST(PlacedAtRight, HidesOnlyWhatTheScreenMakesIt) {
    const QRect large(0, 0, 1920, 1080), main(50, 60, 1100, 750);
    const QRect free = placedAtRight(main, QSize(650, 322), large);
    EXPECT_FALSE(free.intersects(main));
    EXPECT_TRUE(large.contains(free));
    EXPECT_EQ(free.bottom(), main.bottom());
    const QRect small(0, 0, 1366, 768);
    const QRect place = placedAtRight({130, 30, 1100, 700}, QSize(650, 322), small);
    EXPECT_TRUE(small.contains(place));
    EXPECT_GE(place.right(), small.right() - 10);
    EXPECT_EQ(place.size(), QSize(650, 322));
}

}  // namespace tessel
