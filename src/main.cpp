#include "main.h"

#include "app/Guarded.h"
#include "app/editor_settings.h"
#include "app/frmMain.h"
#include "app/survey.h"

std::unique_ptr<frmMain> createProgram() {
    auto main = std::make_unique<frmMain>();
    return main;
}

int main(int argc, char** argv) {
    Application application(argc, argv);
    Session& session = theSession();
    session.AppDir = Application::applicationDirPath().toStdString();
    session.DataDir = session.AppDir;
    ReadTEinfo(session);
    const auto window = createProgram();
    window->show();
    return Application::exec();
}
