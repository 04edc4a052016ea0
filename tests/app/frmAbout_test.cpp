// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmAbout.h"

#include "app/frmMain.h"
#include "base/program_version.h"
#include "support/temporary_folder.h"

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

TEST(ProgramVersion, IsTheSameWhereverItStands) {
    const QString version = QString::fromLatin1(kProgramVersion);
    EXPECT_EQ(frmAbout().lblVersion->text(), u"Version "_s + version);
    EXPECT_EQ(frmAbout().lblName->text(), QString::fromLatin1(kProgramName));
    EXPECT_TRUE(frmMain().windowTitle().endsWith(u"Version "_s + version));
    const QString package = QString::fromStdString(readFile(TESSEL_SOURCE_DIR "/packaging/CMakeLists.txt"));
    EXPECT_TRUE(package.contains(u"set(TESSEL_RELEASE %1)"_s.arg(version)));
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
