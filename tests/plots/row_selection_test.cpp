// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_selection.h"

#include "base/run_time_error.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tessel {

namespace {

std::vector<SiteIndex> selected(const RowSelection& selection) {
    return {selection.SelPoints.begin(), selection.SelPoints.begin() + selection.SelCount};
}

}  // namespace

TEST(RowSelection, KeepsTheOrderOfSelection) {
    const std::vector<double> along{10, 20, 30, 40};
    RowSelection selection;
    EXPECT_EQ(selection.toggle(3, along), -1);
    EXPECT_EQ(selection.toggle(1, along), -1);
    EXPECT_EQ(selection.toggle(4, along), -1);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{3, 1, 4}));
}

TEST(RowSelection, LosesAPointThatIsPickedAgain) {
    const std::vector<double> along{10, 20, 30, 40};
    RowSelection selection;
    for (const SiteIndex point : {SiteIndex{3}, SiteIndex{1}, SiteIndex{4}})
        selection.toggle(point, along);
    EXPECT_EQ(selection.toggle(1, along), 1);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{3, 4}));
    EXPECT_EQ(selection.toggle(3, along), 0);
    EXPECT_EQ(selection.toggle(4, along), 0);
    EXPECT_EQ(selection.SelCount, 0);
}

TEST(RowSelection, TakesSitesAtTheSameCoordinateForOne) {
    const std::vector<double> along{10, 20, 20, 40};
    RowSelection selection;
    selection.toggle(2, along);
    selection.toggle(4, along);
    EXPECT_EQ(selection.toggle(3, along), 0);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{4}));
    EXPECT_EQ(selection.toggle(3, along), -1);
    EXPECT_EQ(selected(selection), (std::vector<SiteIndex>{4, 3}));
}

TEST(RowSelection, Holds101PointsAndNoMore) {
    std::vector<double> along(150);
    std::iota(along.begin(), along.end(), 0.0);
    RowSelection selection;
    for (SiteIndex point = 1; point <= 101; ++point)
        selection.toggle(point, along);
    const auto before = selected(selection);
    EXPECT_EQ(before.size(), 101u);
    try {
        selection.toggle(102, along);
        ADD_FAILURE() << "the 102nd point was accepted";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), RunTimeError::kSubscript);
        EXPECT_EQ(error.description(),
                  "Subscript out of range\nNo more than 101 sites can be selected at a time. Delete these "
                  "first, then select the others.");
    }
    EXPECT_EQ(selected(selection), before);
    EXPECT_EQ(selection.toggle(50, along), 49);
    EXPECT_EQ(selection.toggle(102, along), -1);
    EXPECT_EQ(selection.SelCount, 101);
}

}  // namespace tessel
