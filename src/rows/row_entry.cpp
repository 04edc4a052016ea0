// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_entry.h"

#include "base/numbers.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace tessel {

namespace {

// What every entry has to pass before its value counts. An empty text is not numeric either, so that the
// first fault is the one a user meets.
EntryFault checkNumeric(std::initializer_list<std::string_view> texts) {
    if (!std::all_of(texts.begin(), texts.end(), isNumeric)) return EntryFault::kNotNumeric;
    const auto empty = [](std::string_view text) { return text.empty(); };
    return std::any_of(texts.begin(), texts.end(), empty) ? EntryFault::kEmpty : EntryFault::kNone;
}

int rowNumber(std::string_view text) {
    return roundToInt(*numericValue(text));
}

bool isRow(int row, int numRows) {
    return row >= 1 && row <= numRows;
}

}  // namespace

RowPairEntry checkRowPair(std::string_view row1, std::string_view row2, int numRows) {
    RowPairEntry entry{checkNumeric({row1, row2})};
    if (entry.fault != EntryFault::kNone) return entry;
    entry.row1 = rowNumber(row1);
    entry.row2 = rowNumber(row2);
    if (!isRow(entry.row1, numRows) || !isRow(entry.row2, numRows))
        entry.fault = EntryFault::kOutOfRange;
    else if (std::abs(entry.row1 - entry.row2) != 1)
        entry.fault = EntryFault::kNotConsecutive;
    return entry;
}

RowEntry checkRow(std::string_view row, int numRows) {
    RowEntry entry{checkNumeric({row})};
    if (entry.fault != EntryFault::kNone) return entry;
    entry.row = rowNumber(row);
    if (!isRow(entry.row, numRows)) entry.fault = EntryFault::kOutOfRange;
    return entry;
}

DistanceEntry checkDistance(std::string_view distance) {
    DistanceEntry entry{checkNumeric({distance})};
    if (entry.fault != EntryFault::kNone) return entry;
    entry.distance = *numericValue(distance);
    if (entry.distance < 0) entry.fault = EntryFault::kNegative;
    return entry;
}

const char* entryMessage(EntryFault fault, bool twoNumbers) {
    switch (fault) {
        case EntryFault::kNotNumeric:
            return twoNumbers ? "Invalid Input: you have to enter numeric value(s)"
                              : "Invalid Input: you have to enter a numeric value";
        case EntryFault::kEmpty:
            return "You did not input anything";
        case EntryFault::kOutOfRange:
            return twoNumbers ? "Invalid Input: row number(s) out of range"
                              : "Invalid Input: row number out of range";
        case EntryFault::kNotConsecutive:
            return "Invalid Input: you have to enter two consecutive numbers";
        case EntryFault::kNegative:
            return "Invalid Input: the number has to be greater than zero";
        case EntryFault::kNone:
            break;
    }
    return "";
}

}  // namespace tessel
