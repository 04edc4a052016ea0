// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/menu_items.h"

namespace tessel {

TEST(MenuNeeds, AreSitesWhereSitesAreShownAndRowsWhereRowsAre) {
    for (const char* item :
         {"mnuIDEW", "mnuData", "mnuAdjust", "mnuTrue_Dis", "mnuX_Dis", "mnuY_Dis", "mnuSigCorr", "mnuHist",
          "mnuTurns", "mnuSuspects", "mnuSaveTable", "mnuCoordinates"})
        EXPECT_EQ(menuNeed(item), MenuNeed::kSites) << item;
    for (const char* item : {"mnuX", "mnuY", "mnuStat", "mnuGrid"})
        EXPECT_EQ(menuNeed(item), MenuNeed::kUsableRows) << item;
    for (const char* item : {"mnuOpen", "mnuOpen2", "mnuSave", "mnuRecord", "mnuEL", "mnuHmain1"})
        EXPECT_EQ(menuNeed(item), MenuNeed::kNone) << item;
}

}  // namespace tessel
