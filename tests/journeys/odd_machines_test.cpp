// SPDX-License-Identifier: GPL-3.0-or-later
// Small displays, and long days of work.
#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

#include <QApplication>
#include <QScreen>
#include <gtest/gtest.h>

#include <fstream>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

class OddMachines : public testing::Test {
  protected:
    OddMachines() {
        theSurvey() =
            madeSurvey({{1, 2, 30, 40, 1}, {2, 2, 31, 41, 1}, {3, 90, 32, 42, 2}, {4, 91, 33, 43, 2}});
        theSession() = Session{};
        theSession().AppDir = TESSEL_SOURCE_DIR;
        theSession().DataDir = folder.path();
        main = createProgram();
        main->menusFollow(MenuEvent::SitesImported);
        main->show();
    }
    ~OddMachines() override { setFileResponder({}); }

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
};

// What a display of 800x600 leaves to a window between a title bar and a panel.
constexpr QSize kSmallDisplay(796, 540);

void expectFits(const QWidget& window) {
    const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize());
    EXPECT_LE(least.width(), kSmallDisplay.width()) << window.objectName().toStdString();
    EXPECT_LE(least.height(), kSmallDisplay.height()) << window.objectName().toStdString();
}

void expectWithinItsScreen(const QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(window.frameGeometry()))
        << window.objectName().toStdString() << " is " << window.width() << 'x' << window.height() << " at "
        << window.x() << ", " << window.y() << " on " << screen.width() << 'x' << screen.height();
}

std::int64_t residentBytes() {
    std::ifstream statistics("/proc/self/statm");
    std::int64_t all = 0, resident = 0;
    statistics >> all >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

#ifdef __SANITIZE_ADDRESS__
constexpr std::int64_t kMayGrow = 512 << 20;  // what is freed is kept, to find its use
#else
constexpr std::int64_t kMayGrow = 6 << 20;
#endif

}  // namespace

TEST_F(OddMachines, OfSmallDisplaysHaveRoomForEveryWindow) {
    expectFits(*main);
    expectWithinItsScreen(*main);
    for (const QString& item :
         {u"mnuOpen"_s, u"mnuOpen2"_s, u"mnuSave"_s, u"mnuIDEW"_s, u"mnuData"_s, u"mnuAdjust"_s, u"mnuStat"_s,
          u"mnuSigCorr"_s, u"mnuHist"_s, u"mnuHelpAbout"_s, u"mnuHmain1"_s}) {
        SCOPED_TRACE(item.toStdString());
        chooseItem(*main, item);
        int opened = 0;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || window == main.get() || !window->isWindow()) continue;
            expectFits(*window);
            expectWithinItsScreen(*window);
            ++opened;
            window->close();
        }
        EXPECT_GE(opened, 1);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    for (const QString& item : {u"mnuX"_s, u"mnuGrid"_s, u"mnuTrue_Dis"_s}) {
        SCOPED_TRACE(item.toStdString());
        chooseItem(*main, item);
        expectFits(*main);
    }
}

TEST_F(OddMachines, DoNotRunOutOfMemoryBySixtyFourSurveys) {
    std::string bytes;
    for (int i = 0; i < 20'000; ++i)
        bytes += std::to_string(1'000'000 + i) + " 2000000      12\r\n";
    writeFile(folder / "survey.dat", bytes);
    const TrimbleEntries entries{fromPath(folder / "survey.dat"),
                                 u"20"_s,
                                 {},
                                 {u"1"_s, u"7"_s},
                                 {u"9"_s, u"15"_s},
                                 {u"17"_s, u"24"_s},
                                 {}};
    std::int64_t afterFour = 0;
    for (int survey = 1; survey <= 64; ++survey) {
        boxes.tell(
            u"There are  20000 valid records in this file.\n\nThere are  0 records in this file\n"
            u"containing non-numeric or invalid numeric values."_s,
            u"VARN-Tesl File Import Message"_s);
        importTrimbleFile(*main, entries);
        chooseItem(*main, u"mnuX"_s);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (survey == 4) afterFour = residentBytes();
    }
    EXPECT_LT(residentBytes() - afterFour, kMayGrow);
}

}  // namespace tessel
