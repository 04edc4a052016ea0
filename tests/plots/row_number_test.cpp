// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_number.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(RowNumber, OfNothingTypedIsNotNumeric) {
    EXPECT_EQ(readRowNumber("", 3).outcome, RowNumber::NotNumeric);
    EXPECT_EQ(readRowNumber("  ", 3).outcome, RowNumber::NotNumeric);
    EXPECT_EQ(readRowNumber("two", 3).outcome, RowNumber::NotNumeric);
}

TEST(RowNumber, IsRoundedHalvesToTheEvenNeighbour) {
    EXPECT_EQ(readRowNumber("2.5", 9).row, 2);
    EXPECT_EQ(readRowNumber("3.5", 9).row, 4);
    EXPECT_EQ(readRowNumber(" 7 ", 9).row, 7);
    EXPECT_EQ(readRowNumber("1e0", 9).row, 1);
}

TEST(RowNumber, LiesBetweenOneAndTheNumberOfRows) {
    EXPECT_EQ(readRowNumber("0", 3).outcome, RowNumber::OutOfRange);
    EXPECT_EQ(readRowNumber("0.5", 3).outcome, RowNumber::OutOfRange);
    EXPECT_EQ(readRowNumber("4", 3).outcome, RowNumber::OutOfRange);
    EXPECT_EQ(readRowNumber("1e300", 3).outcome, RowNumber::OutOfRange);
    EXPECT_EQ(readRowNumber("-1", 3).outcome, RowNumber::OutOfRange);
    EXPECT_EQ(readRowNumber("3", 3).outcome, RowNumber::Valid);
    EXPECT_EQ(readRowNumber("0.6", 3).row, 1);
}

TEST(RowNumber, ThatCannotBeUsedIsExplained) {
    EXPECT_EQ(rowNumberMessage(RowNumber::NotNumeric), "Invalid Input: you have to enter a numeric value");
    EXPECT_EQ(rowNumberMessage(RowNumber::Empty), "You did not input anything");
    EXPECT_EQ(rowNumberMessage(RowNumber::OutOfRange), "Invalid Input: row number out of range");
    EXPECT_EQ(rowNumberMessage(RowNumber::Valid), "");
}

}  // namespace tessel
