// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_plot_texts.h"

namespace tessel {

TEST(RowPlotTexts, KeepRowNumberAndCountInAShortHeader) {
    EXPECT_EQ(shortRowHeader(12, 345), "Row #12 (345 points)");
    EXPECT_EQ(shortRowHeader(2, 1), "Row #2 (1 point)");
}

TEST(RowPlotTexts, ReadOutAPointOfTheProfile) {
    EXPECT_EQ(profileReadout(430012.5, 31.257, true), "UTM X = 430012.50, ECa = 31.26");
    EXPECT_EQ(profileReadout(430012.5, -3, false), "UTM Y = 430012.50, ECa = -3.00");
}

TEST(RowPlotTexts, ReadOutAPointOfTheMapAlongTheRowFirst) {
    EXPECT_EQ(mapReadout(1, 2, true), "UTM X = 1.00, UTM Y = 2.00");
    EXPECT_EQ(mapReadout(1, 2, false), "UTM Y = 1.00, UTM X = 2.00");
}

TEST(RowPlotTexts, SayWhyAnotherSiteIsDeselectedAlongY) {
    EXPECT_NE(otherDeselected(false).find("the same Y "), std::string::npos);
}

}  // namespace tessel
