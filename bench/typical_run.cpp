// SPDX-License-Identifier: GPL-3.0-or-later
// A typical run through the real windows on a made-up field, act by act:
//     tessel_typical_run SITES
// prints how long each act kept the user waiting, from the click until the screen is drawn and what was done
// is in the recovery file, and how much memory the program had at most.
#include "app/frmMain.h"
#include "base/session.h"
#include "bench/made_field.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "drawing/PictureBox.h"
#include "plots/Chart2D.h"
#include "program/Program.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

double cpuMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

template <typename Act>
void timed(const char* name, const Act& act) {
    QElapsedTimer wall;
    wall.start();
    const double before = cpuMilliseconds();
    act();
    QApplication::processEvents();
    std::printf("%-44s %9.1f ms CPU %9.1f ms\n", name, cpuMilliseconds() - before,
                static_cast<double>(wall.nsecsElapsed()) * 1e-6);
    std::fflush(stdout);
}

// Straight to the widget: without a screen a move would find the main window at the same place.
void movePointer(QWidget& widget, QPointF pixel) {
    QMouseEvent move(QEvent::MouseMove, pixel, widget.mapToGlobal(pixel), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
}

void importField(frmMain& main, SiteIndex sites) {
    const TrimbleEntries entries{trimbleFile(sites), u"5"_s, {1, 8}, {10, 21}, {23, 34}, {36, 43}, {45, 52}};
    timed("read and report (mnuOpen)", [&] { importTrimbleFile(main, entries); });
}

void review(frmMain& main) {
    timed("row statistics", [&] { chooseItem(main, u"mnuStat"_s); });
    shownWindow(u"frmStat"_s).close();
    timed("lag distance plot", [&] { chooseItem(main, u"mnuTrue_Dis"_s); });
    timed("survey grid plot", [&] { chooseItem(main, u"mnuGrid"_s); });
}

void editOnTheMap(frmMain& main) {
    timed("open the map's window", [&] { chooseItem(main, u"mnuIDEW"_s); });
    QWidget& map = shownWindow(u"frmClip"_s);
    timed("full map", [&] { chooseItem(map, u"mnuFullMapMax"_s); });
    timed("a quadrant", [&] { chooseItem(map, u"mnuZnw"_s); });
    timed("full map again", [&] { chooseItem(map, u"mnuFullMapMax"_s); });
    clickOn(map, u"cmdClipOn"_s);
    auto& box = controlAs<PictureBox>(map, u"picMapZoom"_s);
    const auto at = [&box](double x, double y) {
        return QPoint(static_cast<int>(box.width() * x), static_cast<int>(box.height() * y));
    };
    timed("first corner", [&] { QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, at(0.4, 0.4)); });
    timed("move the rectangle", [&] { movePointer(box, at(0.45, 0.46)); });
    timed("mask the rectangle",
          [&] { QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, at(0.45, 0.46)); });
    clickOn(map, u"cmdClipOff"_s);
    timed("delete the masked sites", [&] { clickOn(map, u"cmdDelete"_s); });
    timed("leave the map", [&] { chooseItem(map, u"mnuDone"_s); });
}

// A row of many sites lies on top of itself: a pixel where a site of the first profile is the nearest.
QPoint pixelOfASite(const Chart2D& profile) {
    for (qsizetype i = profile.pointCount(Chart2D::kData, 1) / 2; i > 0; --i) {
        const auto point = profile.point(Chart2D::kData, 1, i);
        const QPointF place = profile.dataToPixel(point.x, point.y);
        const QPoint pixel(static_cast<int>(place.x()), static_cast<int>(place.y()));
        if (profile.nearestPoint(Chart2D::kData, pixel).series == 1) return pixel;
    }
    throw DriverError("no site can be picked");
}

void editARow(frmMain& main) {
    QWidget& window = main;
    timed("row plots", [&] { chooseItem(main, u"mnuY"_s); });
    clickOn(window, u"Option2"_s);
    typeInto(window, u"Text1"_s, u"4"_s);
    timed("plot row 4", [&] { clickOn(window, u"Command3"_s); });
    auto& profile = controlAs<Chart2D>(window, u"Chart2D3"_s);
    const QPoint pixel = pixelOfASite(profile);
    timed("pick a site", [&] { QTest::mouseClick(&profile, Qt::LeftButton, Qt::NoModifier, pixel); });
    timed("delete the picked site", [&] { clickOn(window, u"Command5"_s); });
    timed("leave the row plots", [&] { clickOn(window, u"Command4"_s); });
}

void editRows(frmMain& main) {
    chooseItem(main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, u"Option3"_s);
    typeInto(dialog, u"Text1"_s, u"5"_s);
    timed("find the rows anew", [&] { clickOn(dialog, u"Command1"_s); });
}

void takeBack(frmMain& main) {
    timed("undo the search for rows", [&] { chooseItem(main, u"mnuUndo"_s); });
    timed("undo the deletion on the row plots", [&] { chooseItem(main, u"mnuUndo"_s); });
    timed("redo the deletion", [&] { chooseItem(main, u"mnuRedo"_s); });
    timed("redo the search for rows", [&] { chooseItem(main, u"mnuRedo"_s); });
    timed("history", [&] { chooseItem(main, u"mnuHistory"_s); });
    shownWindow(u"frmHistory"_s).close();
}

void searchSites(frmMain& main) {
    timed("survey grid by reading", [&] { chooseItem(main, u"mnuGridEM1"_s); });
    timed("rows by turns, shown", [&] { chooseItem(main, u"mnuTurns"_s); });
    shownWindow(u"frmTurns"_s).close();
    timed("open suspicious sites", [&] { chooseItem(main, u"mnuSuspects"_s); });
    QWidget& window = shownWindow(u"frmSuspects"_s);
    const auto& status = controlAs<QLabel>(window, u"lblSuspects"_s);
    timed("spikes along the rows, found", [&] {
        clickOn(window, u"chkSpikes"_s);
        if (!QTest::qWaitFor([&] { return status.text().contains(u"flagged"_s); }, 600'000))
            throw DriverError("the search for spikes does not end");
    });
    window.close();
}

void analyse(frmMain& main) {
    timed("open the adjustment", [&] { chooseItem(main, u"mnuAdjust"_s); });
    clickOn(shownWindow(u"frmAdjustData"_s), u"cmdFinished"_s);
    chooseItem(main, u"mnuHist"_s);
    QWidget& histograms = shownWindow(u"frmHistForm"_s);
    timed("histograms", [&] { chooseItem(histograms, u"mnuPlot"_s); });
    chooseItem(histograms, u"mnuDone"_s);
    chooseItem(main, u"mnuSigCorr"_s);
    QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
    timed("correlation plot", [&] { chooseItem(correlation, u"mnuPlot1"_s); });
    chooseItem(correlation, u"mnuExit"_s);
}

void saveAndOpen(frmMain& main) {
    const QString file = QString::fromStdString(benchFolder() + "/survey.gpkg");
    std::filesystem::remove(file.toStdString());
    setFileResponder([file](const FileQuestion&) { return file; });
    timed("save the survey", [&] { chooseItem(main, u"mnuSaveSurvey"_s); });
    std::printf("%-44s %9.1f MB\n", "the survey file",
                static_cast<double>(std::filesystem::file_size(file.toStdString())) * 1e-6);
    timed("undo once more", [&] { chooseItem(main, u"mnuUndo"_s); });
    timed("open the saved survey", [&] { chooseItem(main, u"mnuOpenSurvey"_s); });
}

void printMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%-44s %9.1f MB\n", "memory at most", static_cast<double>(usage.ru_maxrss) * 1.024e-3);
}

void run(SiteIndex sites) {
    trimbleFile(sites);  // written before the clock runs
    setMessageResponder([](const MessageBox&) { return true; });
    const auto main = createProgram(benchFolder() + "/state");
    timed("show the main window", [&] { main->show(); });
    importField(*main, sites);
    review(*main);
    editOnTheMap(*main);
    editARow(*main);
    editRows(*main);
    takeBack(*main);
    searchSites(*main);
    analyse(*main);
    timed("export and write", [&] { exportTransectFile(*main, benchFolder() + "/transect.txt"); });
    printMemory();
    saveAndOpen(*main);
    printMemory();
}

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    theSession().AppDir = Application::applicationDirPath().toStdString();
    theSession().DataDir = benchFolder();
    try {
        run(argc > 1 ? std::atoll(argv[1]) : 5'000'000);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error: %s\n", error.what());
        return 1;
    }
    return 0;
}
