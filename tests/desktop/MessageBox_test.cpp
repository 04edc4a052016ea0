// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/MessageBox.h"

namespace tessel {

namespace {

// Waits for the real box and hands it over.
void onBox(const std::function<void(QMessageBox*)>& act) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) return;
        timer->deleteLater();
        timer->stop();
        act(box);
    });
    timer->start(5);
}

// The answer to a question when this is done to its box.
bool answerTo(const std::function<void(QMessageBox*)>& act) {
    onBox(act);
    return ask(nullptr, u"Really?"_s);
}

}  // namespace

TEST(TheMessageBox, ShowsTitlePlainTextAndOneButton) {
    onBox([](QMessageBox* box) {
        EXPECT_EQ(box->windowTitle(), u"VARN-Tessel"_s);
        EXPECT_EQ(box->text(), u"<b>one</b>\ntwo"_s);
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
        QTest::keyClick(box, Qt::Key_Return);
    });
    tell(nullptr, u"<b>one</b>\ntwo"_s);
}

TEST(TheMessageBox, BreaksNoLineThatTheScreenHasRoomFor) {
    const QString text =
        u"one line that stays in one piece, however long such a line of a message may be\ntwo"_s;
    onBox([text](QMessageBox* box) {
        const auto* const label = box->findChild<QLabel*>(u"qt_msgbox_label"_s);
        const QSize lines = label->fontMetrics().size(0, text);
        ASSERT_LT(lines.width(), label->screen()->availableSize().width() * 2 / 3);
        EXPECT_GE(label->width(), lines.width());
        EXPECT_LT(label->height(), lines.height() + label->fontMetrics().height());
        QTest::keyClick(box, Qt::Key_Return);
    });
    tell(nullptr, text);
}

TEST(TheMessageBox, OfFewWordsHasRoomForItsTitle) {
    onBox([](QMessageBox* box) {
        EXPECT_GT(box->width(), box->fontMetrics().horizontalAdvance(box->windowTitle()) * 3 / 2);
        QTest::keyClick(box, Qt::Key_Return);
    });
    tell(nullptr, u"No"_s, u"A title that is longer than what the box says"_s);
}

TEST(TheMessageBox, IsNeverWiderThanTheScreen) {
    onBox([](QMessageBox* box) {
        EXPECT_LE(box->width(), box->screen()->availableSize().width());
        QTest::keyClick(box, Qt::Key_Return);
    });
    tell(nullptr, QString(2000, u'x').replace(50, 1, u' '));
}

TEST(TheMessageBox, TakesOnlyYesForYes) {
    EXPECT_TRUE(answerTo([](QMessageBox* box) {
        EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    }));
    EXPECT_TRUE(answerTo([](QMessageBox* box) {
        box->button(QMessageBox::Yes)->setFocus();
        QTest::keyClick(box->button(QMessageBox::Yes), Qt::Key_Return);
    }));
    EXPECT_FALSE(answerTo([](QMessageBox* box) {
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
        QTest::keyClick(box, Qt::Key_Return);
    }));
    EXPECT_FALSE(
        answerTo([](QMessageBox* box) { QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton); }));
    EXPECT_FALSE(answerTo([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); }));
    EXPECT_FALSE(answerTo([](QMessageBox* box) { box->close(); }));
}

}  // namespace tessel
