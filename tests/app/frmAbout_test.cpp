// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmAbout.h"

#include "base/session.h"
#include "support/ExpectedBoxes.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tessel {

TEST(AboutWindow, SaysNameVersionAndLicence) {
    frmAbout window;
    EXPECT_EQ(window.objectName(), u"frmAbout"_s);
    EXPECT_EQ(window.lblName->text(), u"VARN-Tessel"_s);
    EXPECT_EQ(window.lblVersion->text(), u"Version 2.35R"_s);
    EXPECT_TRUE(window.lblLicence->text().contains(u"GPL-3.0-or-later"_s));
    EXPECT_FALSE(window.lblPurpose->text().isEmpty());
}

TEST(AboutWindow, ClosesWithItsButton) {
    frmAbout window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(window.Command1, Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}

TEST(AboutWindow, ClosesWithEnterAndEscape) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        frmAbout window;
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, key);
        EXPECT_FALSE(window.isVisible());
    }
}

TEST(AboutWindow, OpensWhatTheProgramIsWithF1) {
    const Session before = theSession();
    theSession().AppDir = "/nowhere";
    frmAbout window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    ExpectedBoxes boxes;
    boxes.tell(
        u"Warning!  File resource error.  VARN can not find the following file:\n"
        u"/nowhere/helpdocs/hdoc101.rtf"_s);
    QTest::keyClick(&window, Qt::Key_F1);
    theSession() = before;
}

TEST(AboutWindow, ShowsEveryTextWhole) {
    frmAbout window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    for (const QLabel* label : window.findChildren<QLabel*>())
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->objectName().toStdString();
}

}  // namespace tessel
