// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the row plots, the histograms and the correlation of the sample survey on the default printer, at
// each resolution:
//     tessel_print_pages SAMPLES
// It fails when the program asks for a PDF file instead, or says that something went wrong.
#include "analysis/frmHistForm.h"
#include "analysis/frmSigCorrStruct.h"
#include "app/frmMain.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "import/trimble_reader.h"
#include "program/Program.h"
#include "support/UserDriver.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

void loadSample(const QString& samples, const QString& folder) {
    TrimbleOptions options;
    options.path = toPath(samples + u"/serpentine_two_readings.dat"_s);
    options.errorLogPath = toPath(folder + u"/error_log.dat"_s);
    options.EMCutoff = -10;
    options.MinDistance = 3;
    options.SiteIDPresent = options.TwoEMColumns = true;
    options.SiteIDField = {1, 8, 8};
    options.XField = {10, 21, 12};
    options.YField = {23, 34, 12};
    options.EM1Field = {36, 43, 8};
    options.EM2Field = {45, 52, 8};
    surveyUnderTest() = importTrimbleFile(options).survey;
    theSession().InputFileName = options.path;
}

void printAll(frmMain& main) {
    chooseItem(main, u"mnuY"_s);
    clickOn(main, u"Command6"_s);
    clickOn(main, u"Command4"_s);
    chooseItem(main, u"mnuHist"_s);
    QWidget& histograms = shownWindow(u"frmHistForm"_s);
    chooseItem(histograms, u"mnuPlot"_s);
    chooseItem(histograms, u"mnuPrint"_s);
    histograms.close();
    chooseItem(main, u"mnuSigCorr"_s);
    QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(correlation, u"mnuPlot1"_s);
    chooseItem(correlation, u"mnuPrint"_s);
    correlation.close();
}

void printEverything(const QString& samples) {
    const QTemporaryDir folder;
    theSession().AppDir = theSession().DataDir = toPath(folder.path());
    const auto main = createProgram();
    loadSample(samples, folder.path());
    main->menusFollow(MenuEvent::kSitesImported);
    main->show();
    for (const char* item : {"mnuDPI300", "mnuDPI600", "mnuDPI1200"}) {
        chooseItem(*main, QString::fromLatin1(item));
        printAll(*main);
    }
}

// A box or a question for a file, and what it says.
[[noreturn]] void unexpected(const QString& what) {
    QTextStream(stderr) << "error: " << what << Qt::endl;
    std::_Exit(1);
}

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    Application application(argc, argv);
    if (argc != 2) unexpected(u"usage: tessel_print_pages SAMPLES"_s);
    if (QPrinterInfo::defaultPrinterName().isEmpty()) unexpected(u"there is no default printer"_s);
    setFileResponder([](const FileQuestion&) {
        unexpected(u"the program asks for a PDF file"_s);
        return QString();
    });
    setMessageResponder([](const MessageBox& box) {
        if (!box.text.startsWith("The printer resolution has been"_L1)) unexpected(box.text);
        return true;
    });
    QTimer::singleShot(0, &application, [&] {
        try {
            printEverything(QString::fromLocal8Bit(argv[1]));
        } catch (const std::exception& error) {
            unexpected(QString::fromLocal8Bit(error.what()));
        }
        Application::quit();
    });
    return Application::exec();
}
