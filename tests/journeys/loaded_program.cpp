// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program with a survey in memory and one of its windows open, for whoever wants to act upon it
// from outside:
//     loaded_program ITEM CONTROL
// ITEM is the menu item that opens the window. When the window is active, its name and the place of the
// middle of its CONTROL on the screen are printed, "frmAdjustData 312 417"; then the program runs until it is
// ended.
#include "desktop/Guarded.h"
#include "support/RunningProgram.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

void openWindow(frmMain& main, const QString& item, const QString& name) {
    chooseItem(main, item);
    const auto isActive = [&] { return QApplication::activeWindow() && !main.isActiveWindow(); };
    if (!QTest::qWaitFor(isActive)) return;
    QWidget& window = *QApplication::activeWindow();
    const QWidget& widget = control(window, name);
    const QPoint middle = widget.mapToGlobal(widget.rect().center());
    std::printf("%s %d %d\n", qPrintable(window.objectName()), middle.x(), middle.y());
    std::fflush(stdout);
}

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    Application application(argc, argv);
    const QStringList arguments = Application::arguments();
    if (arguments.size() != 3) return EXIT_FAILURE;
    const QTemporaryDir folder;
    theSession().AppDir = theSession().DataDir = folder.path().toStdString();
    surveyUnderTest() = shortSurvey();
    const auto main = createProgram();
    main->menusFollow(MenuEvent::kSitesImported);
    main->show();
    if (!QTest::qWaitForWindowActive(main.get())) return EXIT_FAILURE;
    QTimer::singleShot(0, main.get(), [&] { openWindow(*main, arguments[1], arguments[2]); });
    return Application::exec();
}
