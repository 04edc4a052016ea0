// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InterfaceControls.h"
#include "app/frmMain.h"
#include "base/session.h"
#include "desktop/FileNames.h"
#include "desktop/Guarded.h"
#include "desktop/editor_settings.h"
#include "program/Program.h"
#include "program/ProgramEnd.h"
#include "program/program_directories.h"

#include <QTimer>

using namespace tessel;
using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    Application application(argc, argv);
    Application::setApplicationName(u"varn-tessel"_s);
    Application::setDesktopFileName(u"varn-tessel"_s);
    Application::setWindowIcon(programIcon());
    const std::string data = userDataFolder();
    findProgramDirectories(theSession(), executableFolder(), data.empty() ? data : data + "/varn-tessel");
    const std::string state = userStateFolder();
    setRefusedSettings(ReadTEinfo(theSession()));
    const auto window = createProgram(state.empty() ? state : state + "/varn-tessel");
    const ProgramEnd end([&window] { return window->mayLeave(); }, [&window] { Q_EMIT window->left(); });
    window->show();
    // What Qt has not taken for its own. Boxes need the event loop.
    if (argc > 1 && argv[1][0] != '-')
        QTimer::singleShot(0, window.get(), [&] { openFile(*window, pathMeantBy(fromPath(argv[1]))); });
    return Application::exec();
}
