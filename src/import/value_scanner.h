// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/numbers.h"

#include <string_view>

namespace tessel {

/// A value of a delimited file.
struct ScannedValue {
    std::string_view text;  ///< as it stands in the file, quotes and all; empty when the value is missing
    double number = 0;      ///< its value, if it is numeric
    bool numeric = false;
};

/// Values between commas, blanks or tabs, with a point for the decimal sign. A quoted value is its content.
struct PlainValues {
    static constexpr char kSeparator = ',';
    static constexpr char kDecimalSign = '.';

    static bool isSeparator(char c) { return c == ' ' || c == '\t' || c == kSeparator; }

    /// Fills `value` with the one that begins at `first`, and returns where it ends.
    static const char* take(const char* first, const char* last, ScannedValue& value) {
        const char* const end = parsePlainNumber(first, last, value.number);
        value.numeric = end != nullptr && (end == last || isSeparator(*end));
        if (!value.numeric) return takeUnusual(first, last, value);
        value.text = {first, static_cast<std::size_t>(end - first)};
        return end;
    }

  private:
    static const char* takeUnusual(const char* first, const char* last, ScannedValue& value);
};

/// Values between semicolons, with a comma for the decimal sign. A point or a blank inside a value might mean
/// thousands or a second value, so that such a value is not numeric.
struct DecimalCommaValues {
    static constexpr char kSeparator = ';';
    static constexpr char kDecimalSign = ',';

    static bool isSeparator(char c) { return c == kSeparator; }

    /// Fills `value` with the one that begins at `first`, and returns where it ends.
    static const char* take(const char* first, const char* last, ScannedValue& value);
};

/// Takes the values of a delimited file from its lines, one line after the other. Blanks around a separator
/// belong to it, and a separator where a value should stand means that the value is missing.
template <class Values>
class BasicValueScanner {
  public:
    static constexpr char kSeparator = Values::kSeparator;

    /// Goes on with another line; a value never goes across a line end, but a separator may stand on either
    /// side.
    void beginLine(std::string_view line) {
        position_ = line.data();
        end_ = position_ + line.size();
    }

    /// A separator that comes now stands in front of a missing value.
    void expectValue() { afterValue_ = false; }
    /// Goes on where another scanner was.
    void goOn(bool afterSeparator) { afterValue_ = !afterSeparator; }
    /// The last thing on the lines so far was a separator.
    bool afterSeparator() const { return !afterValue_; }

    /// Gives the next value of the line; false at its end.
    bool next(ScannedValue& value) {
        for (; position_ != end_; ++position_) {
            if (*position_ == ' ' || *position_ == '\t') continue;
            if (*position_ != kSeparator) return takeValue(value);
            if (!afterValue_) return takeMissing(value);
            afterValue_ = false;
        }
        return false;
    }

  private:
    bool takeMissing(ScannedValue& value) {
        ++position_;
        value = {};
        return true;
    }

    bool takeValue(ScannedValue& value) {
        afterValue_ = true;
        position_ = Values::take(position_, end_, value);
        return true;
    }

    const char* position_ = nullptr;
    const char* end_ = nullptr;
    bool afterValue_ = false;
};

/// The scanners of the two kinds of delimited file.
using ValueScanner = BasicValueScanner<PlainValues>;
using DecimalCommaScanner = BasicValueScanner<DecimalCommaValues>;

/// How many values a line by itself holds, missing ones counted: between two separators, in front of the
/// first and behind the last one. Counts no further than `most` + 1.
template <class Scanner>
std::size_t valuesOfLine(std::string_view line, std::size_t most) {
    Scanner scanner;
    scanner.beginLine(line);
    ScannedValue ignored;
    std::size_t values = 0;
    while (values <= most && scanner.next(ignored))
        ++values;
    return values + (values > 0 && scanner.afterSeparator());
}

/// Whether the last thing on a line that is not blank is a separator.
template <class Scanner>
bool endsWithSeparator(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t");
    return last != std::string_view::npos && line[last] == Scanner::kSeparator;
}

}  // namespace tessel
