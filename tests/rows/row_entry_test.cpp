// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_entry.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(RowEntries, AreCheckedInOrder) {
    EXPECT_EQ(checkRowPair("a", "2", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkRowPair("2", "b", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkRowPair("9", "b", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkRowPair("0", "1", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRowPair("5", "6", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRowPair("99999", "99998", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRowPair("1e300", "-1e300", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRowPair("2", "2", 5).fault, EntryFault::kNotConsecutive);
    EXPECT_EQ(checkRowPair("1", "3", 5).fault, EntryFault::kNotConsecutive);
    EXPECT_EQ(checkRow("x", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkRow("0", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRow("6", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRow("1e300", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRow("-1", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRow("5", 5).fault, EntryFault::kNone);
    EXPECT_EQ(checkDistance("1,5").fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkDistance("-0.001").fault, EntryFault::kNegative);
}

TEST(RowEntries, ThatAreEmptyAreNotNumeric) {
    EXPECT_EQ(checkRowPair("", "2", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkRow("", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkRow("  ", 5).fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkDistance("").fault, EntryFault::kNotNumeric);
    EXPECT_EQ(checkDistance("  ").fault, EntryFault::kNotNumeric);
}

TEST(RowEntries, RoundFractionsHalvesToEven) {
    const RowPairEntry pair = checkRowPair(" 1.5 ", "2.6", 5);
    EXPECT_EQ(pair.fault, EntryFault::kNone);
    EXPECT_EQ(pair.row1, 2);
    EXPECT_EQ(pair.row2, 3);
    EXPECT_EQ(checkRow("2.5", 5).row, 2);
    EXPECT_EQ(checkRow("3.5", 5).row, 4);
    EXPECT_EQ(checkRow("0.6", 5).row, 1);
    EXPECT_EQ(checkRow(" 1e0 ", 5).row, 1);
    EXPECT_EQ(checkRow("0.5", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRow("5.5", 5).fault, EntryFault::kOutOfRange);
    EXPECT_EQ(checkRow("5.4", 5).row, 5);
}

TEST(RowEntries, AcceptZeroAsADistance) {
    EXPECT_EQ(checkDistance("0").fault, EntryFault::kNone);
    EXPECT_EQ(checkDistance("-0").fault, EntryFault::kNone);
    EXPECT_EQ(checkDistance(" 1d1 ").distance, 10);
}

TEST(RowEntries, SayWhatIsWrongInWordsForOneNumberAndForTwo) {
    EXPECT_STREQ(entryMessage(EntryFault::kNotNumeric), "Invalid Input: you have to enter a numeric value");
    EXPECT_STREQ(entryMessage(EntryFault::kNotNumeric, true),
                 "Invalid Input: you have to enter numeric value(s)");
    EXPECT_STREQ(entryMessage(EntryFault::kEmpty), "You did not input anything");
    EXPECT_STREQ(entryMessage(EntryFault::kOutOfRange), "Invalid Input: row number out of range");
    EXPECT_STREQ(entryMessage(EntryFault::kOutOfRange, true), "Invalid Input: row number(s) out of range");
    EXPECT_STREQ(entryMessage(EntryFault::kNotConsecutive),
                 "Invalid Input: you have to enter two consecutive numbers");
    EXPECT_STREQ(entryMessage(EntryFault::kNegative),
                 "Invalid Input: the number has to be greater than zero");
    EXPECT_STREQ(entryMessage(EntryFault::kNone), "");
}

}  // namespace tessel
