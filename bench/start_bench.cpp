// SPDX-License-Identifier: GPL-3.0-or-later
// CPU time from the start of the process to the visible main window; with a number of sites, also the peak of
// memory per site that import, rows and export together take above the program that has nothing to do.
#include "app/frmMain.h"
#include "base/session.h"
#include "bench/made_field.h"
#include "desktop/Guarded.h"
#include "export/transect_file.h"
#include "program/Program.h"
#include "support/survey_under_test.h"

#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>

namespace tessel {

namespace {

rusage used() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

double cpuSeconds() {
    const rusage usage = used();
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double bytesPerSite(SiteIndex sites) {
    const long before = used().ru_maxrss;
    const TrimbleOptions options = trimbleFileOptions(sites);
    surveyUnderTest() = importTrimbleFile(options).survey;
    writeTransectFile(theSurvey(), benchFolder() + "/transect.txt", TransectFormat{});
    return static_cast<double>(used().ru_maxrss - before) * 1024 / static_cast<double>(theSurvey().NumSites);
}

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    theSession().AppDir = theSession().DataDir = Application::applicationDirPath().toStdString();
    const auto window = createProgram();
    window->show();
    QApplication::processEvents();
    std::printf("start to visible window: %.3f s CPU\n", cpuSeconds());
    if (argc > 1)
        std::printf("import, rows and export of %s lines: %.0f bytes a site\n", argv[1],
                    bytesPerSite(std::atoll(argv[1])));
    return 0;
}
