// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/row_number.h"

#include "base/numbers.h"

namespace tessel {

RowNumber readRowNumber(std::string_view typed, int numRows) {
    const auto value = numericValue(typed);
    if (!value) return {RowNumber::NotNumeric};
    if (typed.empty()) return {RowNumber::Empty};
    const int row = roundToInt(*value);
    if (row < 1 || row > numRows) return {RowNumber::OutOfRange};
    return {RowNumber::Valid, row};
}

std::string_view rowNumberMessage(RowNumber::Outcome outcome) {
    switch (outcome) {
        case RowNumber::NotNumeric:
            return "Invalid Input: you have to enter a numeric value";
        case RowNumber::Empty:
            return "You did not input anything";
        case RowNumber::OutOfRange:
            return "Invalid Input: row number out of range";
        case RowNumber::Valid:
            break;
    }
    return {};
}

}  // namespace tessel
