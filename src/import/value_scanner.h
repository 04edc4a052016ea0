#pragma once

#include "app/numbers.h"

#include <string_view>

/// A value of a delimited file.
struct ScannedValue {
    std::string_view text;  ///< as it stands in the file, quotes and all; empty when the value is missing
    double number = 0;      ///< its value, if it is numeric
    bool numeric = false;
};

/// Takes the values of a delimited file from its lines, one line after the other. Commas, blanks and tabs
/// separate values; blanks around a comma belong to it, and a comma where a value should stand means that the
/// value is missing.
class ValueScanner {
  public:
    /// Goes on with another line; a value never goes across a line end, but a comma may stand on either side.
    void beginLine(std::string_view line) {
        position_ = line.data();
        end_ = position_ + line.size();
    }

    /// A comma that comes now stands in front of a missing value.
    void expectValue() { afterValue_ = false; }
    /// The last thing on the lines so far was a comma.
    bool afterComma() const { return !afterValue_; }

    /// Gives the next value of the line; false at its end.
    bool next(ScannedValue& value) {
        for (; position_ != end_; ++position_) {
            if (isBlank(*position_)) continue;
            if (*position_ != ',') return takeValue(value);
            if (!afterValue_) return takeMissing(value);
            afterValue_ = false;
        }
        return false;
    }

  private:
    static bool isBlank(char c) { return c == ' ' || c == '\t'; }
    static bool isSeparator(char c) { return isBlank(c) || c == ','; }

    bool takeMissing(ScannedValue& value) {
        ++position_;
        value = {};
        return true;
    }

    bool takeValue(ScannedValue& value) {
        afterValue_ = true;
        const char* const first = position_;
        const char* const last = parsePlainNumber(first, end_, value.number);
        value.numeric = last != nullptr && (last == end_ || isSeparator(*last));
        if (!value.numeric) return takeUnusualValue(value);
        value.text = {first, static_cast<std::size_t>(last - first)};
        position_ = last;
        return true;
    }

    bool takeUnusualValue(ScannedValue& value);

    const char* position_ = nullptr;
    const char* end_ = nullptr;
    bool afterValue_ = false;
};
