// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/value_scanner.h"

#include <algorithm>
#include <array>
#include <string>

namespace tessel {

// Anything but a plain number: quoted, with an exponent, very long, or no number at all.
const char* PlainValues::takeUnusual(const char* first, const char* last, ScannedValue& value) {
    const char* closingQuote = last;
    if (*first == '"') closingQuote = std::find(first + 1, last, '"');
    const bool quoted = closingQuote != last;
    const char* const end = std::find_if(quoted ? closingQuote + 1 : first, last, isSeparator);
    value.text = {first, static_cast<std::size_t>(end - first)};
    const bool wholeIsQuoted = quoted && end == closingQuote + 1;
    value.numeric = wholeIsQuoted ? parseNumber(first + 1, closingQuote, value.number)
                                  : parseNumber(first, end, value.number);
    return end;
}

namespace {

// As long as numbers are, so that nothing is allocated for one.
using NumberText = std::array<char, 64>;

char withPoint(char c) {
    return c == ',' ? '.' : c;
}

bool parseDecimalCommaNumber(const char* first, const char* last, double& number) {
    if (std::find(first, last, '.') != last) return false;
    NumberText text;
    if (static_cast<std::size_t>(last - first) <= text.size())
        return parseNumber(text.data(), std::transform(first, last, text.data(), withPoint), number);
    std::string longText(first, last);
    std::transform(first, last, longText.begin(), withPoint);
    return parseNumber(longText.data(), longText.data() + longText.size(), number);
}

}  // namespace

const char* DecimalCommaValues::take(const char* first, const char* last, ScannedValue& value) {
    const char* closingQuote = last;
    if (*first == '"') closingQuote = std::find(first + 1, last, '"');
    const bool quoted = closingQuote != last;
    const char* const separator = std::find(quoted ? closingQuote + 1 : first, last, kSeparator);
    const char* end = separator;
    while (end[-1] == ' ' || end[-1] == '\t')
        --end;
    value.text = {first, static_cast<std::size_t>(end - first)};
    const bool wholeIsQuoted = quoted && end == closingQuote + 1;
    value.numeric = wholeIsQuoted ? parseDecimalCommaNumber(first + 1, closingQuote, value.number)
                                  : parseDecimalCommaNumber(first, end, value.number);
    return separator;
}

}  // namespace tessel
