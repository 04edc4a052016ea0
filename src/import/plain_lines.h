// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/numbers.h"
#include "base/text_lines.h"
#include "import/column_shapes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace tessel {

/// Reads such lines of a delimited file as are nothing but a record: a number for each column, one separator
/// between two of them, blanks only in front of a number. By the shapes of the numbers above them they are
/// read without being looked through for separators and for their end. All other lines are left to the
/// RecordAssembler, which finds the same record in these.
///
/// `Values` says what separates values, as for BasicValueScanner.
template <class Values>
class PlainLines {
  public:
    static constexpr std::size_t kMostColumns = 6;
    using Numbers = std::array<double, kMostColumns>;

    /// Requires 1 <= columns <= kMostColumns.
    explicit PlainLines(std::size_t columns) : last_(columns - 1) {}

    /// What follows are lines of this text.
    void beginText(std::string_view text) {
        end_ = text.data() + text.size();
        for (ColumnShapes& column : columns_)
            column.beginText(text);
    }

    /// Fills `numbers` from the line that begins at `first`, and gives where it ends; null if it is not such
    /// a line or has no line end.
    const char* read(const char* first, Numbers& numbers) {
        for (std::size_t column = 0; column < last_; ++column) {
            const char* const end = take(first, columns_[column], numbers[column], Values::isSeparator);
            if (end == nullptr) return nullptr;
            first = end + 1;
        }
        return take(first, columns_[last_], numbers[last_], isLineEnd);
    }

  private:
    // Takes a number with a byte behind it that is an end, and gives where that is.
    template <class IsEnd>
    const char* take(const char* first, ColumnShapes& column, double& number, IsEnd isEnd) {
        while (first != end_ && isBlank(*first))
            ++first;
        const auto isEndBehind = [=](std::size_t length) { return isEnd(first[length]); };
        const char* const end = column.take(first, number, isEndBehind);
        return end != nullptr ? end : takeOther(first, column, number, isEnd);
    }

    template <class IsEnd>
    const char* takeOther(const char* first, ColumnShapes& column, double& number, IsEnd isEnd) {
        if (!column.areOfUseAt(first)) return takeWithoutShape(first, number, isEnd);
        const char* const end = std::find_if(first, first + NumberShape::kMost, [](char c) {
            return isBlank(c) || isLineEnd(c) || Values::isSeparator(c);
        });
        if (!isEnd(*end) || !column.learn(first, end, Values::kDecimalSign)) return nullptr;
        number = column.valueOfLearnt(end);
        return end;
    }

    template <class IsEnd>
    const char* takeWithoutShape(const char* first, double& number, IsEnd isEnd) const {
        if (Values::kDecimalSign != '.') return nullptr;
        const char* const end = parsePlainNumber(first, end_, number);
        return end != nullptr && end != end_ && isEnd(*end) ? end : nullptr;
    }

    static bool isBlank(char c) { return c == ' ' || c == '\t'; }

    const std::size_t last_;  // column
    std::array<ColumnShapes, kMostColumns> columns_;
    const char* end_ = nullptr;  // of the text
};

}  // namespace tessel
