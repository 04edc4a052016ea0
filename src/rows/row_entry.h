// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace tessel {

// What a user enters, checked in the order in which the faults are listed.

enum class EntryFault {
    kNone,
    kNotNumeric,
    kEmpty,
    kOutOfRange,      ///< a row number outside 1..NumRows
    kNotConsecutive,  ///< two rows that are no neighbours
    kNegative         ///< a threshold below 0
};

struct RowPairEntry {
    EntryFault fault = EntryFault::kNone;
    int row1 = 0;
    int row2 = 0;
};
struct RowEntry {
    EntryFault fault = EntryFault::kNone;
    int row = 0;
};
struct DistanceEntry {
    EntryFault fault = EntryFault::kNone;
    double distance = 0;
};

/// Row numbers with a fraction are rounded, halves to the even neighbour.
RowPairEntry checkRowPair(std::string_view row1, std::string_view row2, int numRows);
RowEntry checkRow(std::string_view row, int numRows);
/// A threshold of 0 is accepted.
DistanceEntry checkDistance(std::string_view distance);

/// What the user is told, in words that differ between one number and two; empty without a fault.
const char* entryMessage(EntryFault fault, bool twoNumbers = false);

}  // namespace tessel
