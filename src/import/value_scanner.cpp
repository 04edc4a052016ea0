#include "import/value_scanner.h"

#include <algorithm>

// Anything but a plain number: quoted, with an exponent, very long, or no number at all.
bool ValueScanner::takeUnusualValue(ScannedValue& value) {
    const char* const first = position_;
    const char* closingQuote = end_;
    if (*first == '"') closingQuote = std::find(first + 1, end_, '"');
    const bool quoted = closingQuote != end_;
    position_ = std::find_if(quoted ? closingQuote + 1 : first, end_, isSeparator);
    value.text = {first, static_cast<std::size_t>(position_ - first)};
    const bool wholeIsQuoted = quoted && position_ == closingQuote + 1;
    value.numeric = wholeIsQuoted ? parseNumber(first + 1, closingQuote, value.number)
                                  : parseNumber(first, position_, value.number);
    return true;
}
