// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/number_shape.h"

#include "base/numbers.h"

namespace tessel {

namespace {

constexpr std::ptrdiff_t kExactDigits = 15;

const char* behindBlanks(const char* p, const char* last) {
    while (p != last && (*p == ' ' || *p == '\t'))
        ++p;
    return p;
}

const char* behindDigits(const char* p, const char* last) {
    while (p != last && static_cast<unsigned char>(*p - '0') < 10)
        ++p;
    return p;
}

}  // namespace

// Where the parts of a number begin and end.
struct NumberShape::Parts {
    const char *whole, *wholeEnd, *decimals, *decimalsEnd, *last;
    bool negative, hasDecimalSign;

    Parts(const char* first, const char* end, char decimalSign) : last(end) {
        whole = behindBlanks(first, end);
        negative = numbers_detail::takeSign(whole, end);
        wholeEnd = behindDigits(whole, end);
        hasDecimalSign = wholeEnd != end && *wholeEnd == decimalSign;
        decimals = wholeEnd + (hasDecimalSign ? 1 : 0);
        decimalsEnd = behindDigits(decimals, end);
    }

    std::ptrdiff_t digits() const { return (wholeEnd - whole) + (decimalsEnd - decimals); }
    // Blanks behind the digits are read as zeros.
    std::ptrdiff_t blanks() const { return last - decimalsEnd; }
};

NumberShape::NumberShape() {
    constexpr char kDigit = '0';
    learn(&kDigit, &kDigit + 1);
}

bool NumberShape::learn([[maybe_unused]] const char* first, [[maybe_unused]] const char* last,
                        [[maybe_unused]] char decimalSign) {
#ifdef __x86_64__
    if (last - first > static_cast<std::ptrdiff_t>(kMost)) return false;
    const Parts parts(first, last, decimalSign);
    const bool isNumber = parts.digits() > 0 && behindBlanks(parts.decimalsEnd, last) == last;
    if (!isNumber || parts.digits() + parts.blanks() > kExactDigits) return false;
    takeParts(first, parts);
    return true;
#else
    return false;
#endif
}

void NumberShape::takeParts(const char* first, const Parts& parts) {
    length_ = static_cast<std::size_t>(parts.last - first);
    text_.fill(0);
    most_.fill(255);
    wholeDigits_.fill(0);
    decimals_.fill(0);
    std::size_t at = kMost - length_;
    for (const char* p = first; p != parts.last; ++p, ++at) {
        const bool isWhole = p >= parts.whole && p < parts.wholeEnd;
        const bool isDecimal = p >= parts.decimals && p < parts.decimalsEnd;
        text_[at] = isWhole || isDecimal ? '0' : static_cast<unsigned char>(*p);
        most_[at] = isWhole || isDecimal ? 9 : 0;
        if (isWhole) (parts.hasDecimalSign ? wholeDigits_[at + 1] : decimals_[at]) = 255;
        if (isDecimal) decimals_[at] = 255;
    }
    const std::ptrdiff_t power = parts.hasDecimalSign ? parts.last - parts.decimals : parts.blanks();
    divisor_ = numbers_detail::kPowersOfTen[static_cast<std::size_t>(power)];
    if (parts.negative) divisor_ = -divisor_;
}

}  // namespace tessel
