// SPDX-License-Identifier: GPL-3.0-or-later
// Small displays, and long days of work.
#include "desktop/FileDialogs.h"
#include "journal/journal.h"
#include "support/RunningProgram.h"

namespace tessel {

namespace {

class OddMachines : public testing::Test, protected RunningProgram {
  protected:
    OddMachines()
        : RunningProgram(
              madeSurvey({{1, 2, 30, 40, 1}, {2, 2, 31, 41, 1}, {3, 90, 32, 42, 2}, {4, 91, 33, 43, 2}})) {
        theSession().AppDir = TESSEL_SOURCE_DIR;
    }
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
    writeFile(folder / "survey.dat", sensorLines(20'000));
    theJournal() = Journal(4 << 20);  // holds one or two of the surveys that were replaced
    std::int64_t afterFour = 0;
    for (int survey = 1; survey <= 64; ++survey) {
        expectTrimbleReport(20000, 0);
        importTrimbleFile(*main, sensorEntries(folder / "survey.dat"));
        chooseItem(*main, u"mnuX"_s);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (survey == 4) afterFour = residentBytes();
    }
    EXPECT_LT(residentBytes() - afterFour, kMayGrow);
}

}  // namespace tessel
