// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_entry.h"

namespace tessel {

TEST(RowEntries, AreCheckedInOrder) {
    using enum EntryFault;
    const std::tuple<const char*, const char*, EntryFault> pairs[] = {
        {"a", "2", kNotNumeric},         {"2", "b", kNotNumeric},          {"9", "b", kNotNumeric},
        {"", "2", kNotNumeric},          {"0", "1", kOutOfRange},          {"5", "6", kOutOfRange},
        {"99999", "99998", kOutOfRange}, {"1e300", "-1e300", kOutOfRange}, {"2", "2", kNotConsecutive},
        {"1", "3", kNotConsecutive}};
    for (const auto& [first, second, fault] : pairs)
        EXPECT_EQ(checkRowPair(first, second, 5).fault, fault) << first << ' ' << second;
    const std::pair<const char*, EntryFault> rows[] = {
        {"x", kNotNumeric}, {"", kNotNumeric},      {"  ", kNotNumeric}, {"0", kOutOfRange},
        {"6", kOutOfRange}, {"1e300", kOutOfRange}, {"-1", kOutOfRange}, {"5", kNone}};
    for (const auto& [row, fault] : rows)
        EXPECT_EQ(checkRow(row, 5).fault, fault) << row;
    const std::pair<const char*, EntryFault> distances[] = {{"1,5", kNotNumeric}, {"", kNotNumeric},
                                                            {"  ", kNotNumeric},  {"-0.001", kNegative},
                                                            {"0", kNone},         {"-0", kNone}};
    for (const auto& [distance, fault] : distances)
        EXPECT_EQ(checkDistance(distance).fault, fault) << distance;
    EXPECT_EQ(checkDistance(" 1d1 ").distance, 10);
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

TEST(RowEntries, SayWhatIsWrongInWordsOfTheirOwnWhereNothingIsTypedAndNothingWhereNothingIs) {
    EXPECT_STREQ(entryMessage(EntryFault::kEmpty), "You did not input anything");
    EXPECT_STREQ(entryMessage(EntryFault::kNone), "");
}

}  // namespace tessel
