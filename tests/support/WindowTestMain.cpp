#include "app/Guarded.h"
#include "support/ExpectedBoxes.h"

#include <gtest/gtest.h>

// The windows' tests run without a display; whoever wants to watch sets QT_QPA_PLATFORM.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    Application application(argc, argv);
    Application::setStyle(QStringLiteral("Fusion"));
    return RUN_ALL_TESTS();
}
