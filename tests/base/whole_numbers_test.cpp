// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/whole_numbers.h"

namespace tessel {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

}  // namespace

TEST(WholeNumbers, LoseTheirDecimals) {
    EXPECT_EQ(clampedInt(2.9), 2);
    EXPECT_EQ(clampedInt(-2.9), -2);
    EXPECT_EQ(intBelow(-2.1), -3);
    EXPECT_EQ(intAbove(2.1), 3);
    EXPECT_EQ(nearestInt(2.5), 3);
    EXPECT_EQ(nearestInt(-2.5), -2);
    EXPECT_EQ(nearestInt(2.4999), 2);
}

TEST(WholeNumbers, StayWithinTheRangeOfAnInt) {
    for (const auto convert : {clampedInt, nearestInt, intBelow, intAbove}) {
        EXPECT_EQ(convert(1e300), kMost);
        EXPECT_EQ(convert(-1e300), kLeast);
        EXPECT_EQ(convert(kInfinity), kMost);
        EXPECT_EQ(convert(-kInfinity), kLeast);
        EXPECT_EQ(convert(2147483647.0), kMost);
        EXPECT_EQ(convert(-2147483648.0), kLeast);
    }
    EXPECT_EQ(clampedInt(2147483647.9), kMost);
    EXPECT_EQ(clampedInt(-2147483648.9), kLeast);
}

TEST(WholeNumbers, AreZeroForWhatIsNoNumber) {
    for (const auto convert : {clampedInt, nearestInt, intBelow, intAbove})
        EXPECT_EQ(convert(kNoNumber), 0);
}

}  // namespace tessel
