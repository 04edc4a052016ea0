// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_plot_texts.h"

#include "app/survey.h"

namespace tessel {

TEST(RowPlotTexts, CountTheRowsPoints) {
    EXPECT_EQ(rowHeader(12, 345), "Sample Row Plot:  Row #12 (345 points)");
    EXPECT_EQ(rowHeader(2, 1), "Sample Row Plot:  Row #2 (1 point)");
    EXPECT_EQ(rowHeader(3, 0), "Sample Row Plot:  Row #3 (0 point)");
}

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

TEST(RowPlotTexts, SayWhyFewerSitesAreSelectedThanABoxHolds) {
    EXPECT_EQ(tooManyInBox(2345),
              "2345 sites are in the box, and no more than 101 can be selected at a time. The map or the "
              "search for suspicious sites takes more.");
}

TEST(RowPlotTexts, SayWhyAnotherSiteIsDeselected) {
    EXPECT_EQ(otherDeselected(true),
              "Another site with the same X was deselected instead: sites with the same coordinate along the "
              "row count as one.");
    EXPECT_NE(otherDeselected(false).find("the same Y "), std::string::npos);
}

TEST(RowPlotTexts, NameTheAxes) {
    EXPECT_STREQ(coordinateTitle(kX), "X (meters)");
    EXPECT_STREQ(coordinateTitle(kY), "Y (meters)");
}

}  // namespace tessel
