// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InterfaceControls.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "support/ExpectedBoxes.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

// A language that the machine does not have is silently none: whoever wants one asks for it here too.
bool hasLanguage(const char* wanted) {
    return wanted == nullptr || std::string_view(wanted) == std::setlocale(LC_ALL, nullptr);
}

// No test finds the survey, the acts, the session or the answers of another.
class FreshStart : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        startAfresh();
        theSession() = Session{};
        setMessageResponder({});
        setFileResponder({});
        setProgramStarter({});
        setDesktopOpener({});
        setDefaultPrinterName({});
        setRefusedSettings({});
    }
};

}  // namespace

}  // namespace tessel

using namespace tessel;

// The windows' tests run without a display; whoever wants to watch sets QT_QPA_PLATFORM.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    Application application(argc, argv);
    Application::setStyle(QStringLiteral("Fusion"));
    const char* const language = std::getenv("TESSEL_TEST_LANGUAGE");
    if (!hasLanguage(language)) {
        std::fprintf(stderr, "the language %s is not in force\n", language);
        return EXIT_FAILURE;
    }
    testing::UnitTest::GetInstance()->listeners().Append(new FreshStart);
    return RUN_ALL_TESTS();
}
