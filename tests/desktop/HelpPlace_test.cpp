// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Windows.h"

namespace tessel {

namespace {

constexpr QRect kScreen(0, 0, 1920, 1080);
constexpr QSize kSize(1000, 700);
constexpr int kNarrowest = 480;

QRect beside(const QRect& other, const QRect& screen = kScreen) {
    const auto place = placedBeside(other, kSize, kNarrowest, screen);
    EXPECT_TRUE(place.has_value());
    EXPECT_FALSE(place->intersects(other));
    EXPECT_TRUE(screen.contains(*place));
    return *place;
}

}  // namespace

TEST(HelpPlace, IsOnTheRightWhereThereIsRoomAndElseOnTheLeft) {
    const QRect right = beside({100, 200, 500, 400});
    EXPECT_GT(right.left(), 600);
    EXPECT_EQ(right.size(), kSize);
    EXPECT_EQ(right.top(), 200);
    const QRect left = beside({1200, 900, 500, 400});
    EXPECT_LT(left.right(), 1200);
    EXPECT_EQ(left.size(), kSize);
}

TEST(HelpPlace, IsMadeNarrowerButNotTooNarrow) {
    const QRect place = beside({700, 300, 520, 400});
    EXPECT_LT(place.width(), 700);
    EXPECT_GE(place.width(), kNarrowest);
    EXPECT_FALSE(placedBeside({300, 100, 400, 300}, kSize, kNarrowest, {0, 0, 800, 600}));
}

TEST(HelpPlace, StaysOnASmallScreenAndOnASecondOne) {
    EXPECT_LT(beside({0, 500, 250, 90}, {0, 0, 800, 600}).height(), 600);
    EXPECT_GT(beside({1940, 100, 500, 300}, {1920, 0, 1920, 1080}).left(), 2440);
}

}  // namespace tessel
