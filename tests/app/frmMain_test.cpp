#include "app/frmMain.h"

#include "support/ExpectedBoxes.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(MainWindow, AsksBeforeClosingRightAfterStartUp) {
    frmMain window;
    window.show();
    ExpectedBoxes boxes;
    boxes.ask(false,
              u"Attention: you have not exported an output VARN data file yet!\n"
              u"Are you sure that you wish to exit the program?"_s);
    window.mnuExit->trigger();
    EXPECT_TRUE(window.isVisible());
}
