// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/OpenBox.h"

#include "desktop/FileDialogs.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"

namespace tessel {

namespace {

// Longer than the tenth of a second by which a mnemonic's click is late.
constexpr int kLate = 300;

// A window with a button that closes it, beside a window that owns it.
class WindowBeneathABox : public testing::Test {
  protected:
    WindowBeneathABox() {
        owner.show();
        auto* const column = new QVBoxLayout(window);
        column->addWidget(closing);
        closing->setAutoDefault(false);
        QObject::connect(closing, &QPushButton::clicked, window, [this] { window->close(); });
        showModal(window);
    }

    void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowActive(window)); }
    ~WindowBeneathABox() override { delete window; }

    // Looks at the window beneath the box that comes, then closes the box.
    template <typename Look>
    void beneathTheBox(Look look) {
        const auto later = [this, look] {
            auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            ASSERT_NE(box, window);
            ++boxes;
            look();
            box->reject();
        };
        QTimer::singleShot(kLate, qApp, later);
    }

    void keepsAClickUntilClosed(const std::function<void()>& showBox) {
        QTest::keyClick(window, Qt::Key_F, Qt::AltModifier);
        beneathTheBox([this] { EXPECT_TRUE(window && window->isVisible()); });
        showBox();
        EXPECT_EQ(boxes, 1);
        EXPECT_TRUE(window && window->isVisible());
        EXPECT_TRUE(isGone(window));
    }

    static bool isGone(const QPointer<QDialog>& window) {
        return QTest::qWaitFor([&] { return window.isNull(); });
    }

    QWidget owner;
    QPointer<QDialog> window = new QDialog(&owner);
    QPushButton* const closing = new QPushButton(u"&Finished"_s);
    int boxes = 0;
};

}  // namespace

TEST_F(WindowBeneathABox, KeepsAClickThatWasUnderWayUntilTheBoxIsClosed) {
    keepsAClickUntilClosed([this] { tell(window, u"Invalid Input"_s); });
}

TEST_F(WindowBeneathABox, KeepsAClickUntilTheFileDialogIsClosed) {
    keepsAClickUntilClosed(
        [this] { EXPECT_EQ(askOpenFile(window, u"Open"_s, u"All Files (*.*)|*"_s), QString()); });
}

TEST_F(WindowBeneathABox, KeepsAClickThatComesWhileTheBoxIsBeingClosed) {
    closing->animateClick();
    beneathTheBox([this] {
        QApplication::activeModalWidget()->hide();
        ASSERT_EQ(QApplication::activeModalWidget(), window);
        QTest::qWait(kLate);
        EXPECT_TRUE(window && window->isVisible());
    });
    tell(window, u"Invalid Input"_s);
    EXPECT_TRUE(window && window->isVisible());
    EXPECT_TRUE(isGone(window));
}

TEST_F(WindowBeneathABox, RefusesToCloseAndSoDoesItsOwner) {
    beneathTheBox([this] {
        EXPECT_FALSE(window->close());
        EXPECT_FALSE(owner.close());
    });
    EXPECT_FALSE(ask(window, u"Really?"_s));
    EXPECT_EQ(boxes, 1);
    EXPECT_TRUE(window && window->isVisible());
    EXPECT_TRUE(owner.isVisible());
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(isGone(window));
}

TEST_F(WindowBeneathABox, IsDestroyedAfterTheBoxWhenItWasTakenAway) {
    beneathTheBox([this] {
        takeAway(window);
        QTest::qWait(0);
        EXPECT_TRUE(window);
    });
    tell(window, u"one"_s);
    EXPECT_TRUE(window);
    EXPECT_FALSE(window->isVisible());
    beneathTheBox([] {});
    tell(window, u"two"_s);
    EXPECT_EQ(boxes, 2);
    EXPECT_TRUE(window);
    EXPECT_TRUE(isGone(window));
}

TEST_F(WindowBeneathABox, StaysWhenItIsAcceptedBeneathTheBox) {
    beneathTheBox([this] {
        window->accept();
        QTest::qWait(0);
    });
    tell(window, u"Invalid Input"_s);
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->isVisible());
    window->accept();
    EXPECT_TRUE(isGone(window));
}

TEST_F(WindowBeneathABox, CanBeDestroyedByItsOwnerAndTheBoxIsGone) {
    QPointer<QMessageBox> box;
    QTimer::singleShot(kLate, qApp, [&] {
        box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        delete window;
    });
    EXPECT_FALSE(ask(window, u"Really?"_s));
    EXPECT_TRUE(box.isNull());
}

TEST_F(WindowBeneathABox, LosesAClickThatIsLateWhenItHasBeenHidden) {
    int clicks = 0;
    QObject::connect(closing, &QPushButton::clicked, window, [&clicks] { ++clicks; });
    closing->animateClick();
    window->hide();
    QTest::qWait(kLate);
    window->show();
    QTest::qWait(kLate);
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(closing->isDown());
    closing->click();
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowBeneathABox, LosesATickThatIsLateWhenItHasBeenHidden) {
    QCheckBox tick(window);
    QRadioButton first(window), second(window);
    first.setChecked(true);
    int signals = 0;
    for (QAbstractButton* button :
         {static_cast<QAbstractButton*>(&tick), static_cast<QAbstractButton*>(&first),
          static_cast<QAbstractButton*>(&second)}) {
        button->show();
        QObject::connect(button, &QAbstractButton::toggled, window, [&signals] { ++signals; });
        QObject::connect(button, &QAbstractButton::clicked, window, [&signals] { ++signals; });
    }
    tick.animateClick();
    second.animateClick();
    window->hide();
    QTest::qWait(kLate);
    EXPECT_EQ(signals, 0);
    EXPECT_FALSE(tick.isChecked());
    EXPECT_TRUE(first.isChecked());
    EXPECT_FALSE(second.isChecked());
    window->show();
    second.click();
    EXPECT_FALSE(first.isChecked());
    EXPECT_TRUE(second.isChecked());
    EXPECT_EQ(signals, 3);
}

TEST_F(WindowBeneathABox, LosesAClickThatIsLateWhenItsButtonHasBeenDisabled) {
    closing->animateClick();
    closing->setEnabled(false);
    QTest::qWait(kLate);
    ASSERT_TRUE(window && window->isVisible());
    closing->setEnabled(true);
    QTest::qWait(kLate);
    ASSERT_TRUE(window && window->isVisible());
    closing->click();
    EXPECT_TRUE(isGone(window));
}

TEST_F(WindowBeneathABox, LeavesTheButtonsOfTheBoxAlone) {
    QTimer::singleShot(0, qApp, [] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        box->button(QMessageBox::Yes)->animateClick();
    });
    EXPECT_TRUE(ask(window, u"Really?"_s));
}

// As in the running program, whose windows all live in an event loop.
TEST_F(WindowBeneathABox, OutlivesAMenuThatRunsALoopOfItsOwn) {
    QEventLoop program;
    QTimer::singleShot(0, qApp, [&] {
        QMenu menu(window);
        menu.addAction(u"Copy"_s);
        QTimer::singleShot(kLate, qApp, [&] {
            window->close();
            QTest::qWait(0);
        });
        menu.exec(window->geometry().center());
        EXPECT_TRUE(window);
        EXPECT_FALSE(menu.isVisible());
    });
    QTimer wait;
    QObject::connect(&wait, &QTimer::timeout, &program, [&] {
        if (!window) program.quit();
    });
    wait.start(10);
    QTimer::singleShot(5000, &program, &QEventLoop::quit);
    program.exec();
    EXPECT_FALSE(window);
}

TEST(AQuestion, ThatEndsWithTheProgramIsAnsweredWithNo) {
    bool answer = true;
    QTimer::singleShot(0, qApp, [&] {
        QTimer::singleShot(0, qApp, [] { QApplication::exit(); });
        answer = ask(nullptr, u"Really?"_s);
    });
    QApplication::exec();
    EXPECT_FALSE(answer);
}

}  // namespace tessel
