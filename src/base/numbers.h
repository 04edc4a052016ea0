// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessel {

// Numbers and text. Nothing here depends on the computer's locale: the decimal sign is the point.

/// The value of a text that passes the numeric-string test, else nothing. The test: blanks or tabs around;
/// one sign; digits with at most one point and at least one digit; an optional exponent (e, E, d or D, an
/// optional sign, at least one digit); nothing else; and the value must be finite. A magnitude too small for
/// a Double is 0. The conversion is exact: the Double nearest to the decimal value.
std::optional<double> numericValue(std::string_view text);

/// Whether a text passes that test.
inline bool isNumeric(std::string_view text) {
    return numericValue(text).has_value();
}

/// The number at the beginning of a text if it is as plain as those in sensor files: a sign or none, digits
/// with at most one point, of a size at which one division gives the nearest Double. Returns one past the
/// number, or null, with `value` left alone, when there is no such number; what follows is not looked at.
inline const char* parsePlainNumber(const char* first, const char* last, double& value);

/// The same as numericValue without the cost of an optional, for the readers' inner loops. Leaves `value`
/// alone on failure.
inline bool parseNumber(const char* first, const char* last, double& value);

/// The value of the longest leading part of the text that is a number (blanks before it passed over), 0 if
/// there is none: "12 m" gives 12, "abc" gives 0.
double leadingNumber(std::string_view text);

/// Nearest whole number, halves to the even neighbour: 2.5 gives 2, 3.5 gives 4.
double roundHalfToEven(double value);

/// The same as an int, clamped to int's range, so that a number too large for what it means is merely out of
/// range and never an overflow; 0 for what is no number.
int roundToInt(double value);

/// The picture formats "0", "0.0", "0.00", ...: at least one digit before the point and exactly `decimals`
/// after it, no sign on a zero result. The value is rounded to 15 significant digits first and then half away
/// from zero, so that 2.345 gives "2.35" and so does a sum that came out a last bit below it.
/// Requires a finite value.
std::string pictureFormat(double value, int decimals);

/// The fewest digits from which the same Double is read again: "0.1", "-2.5", "1e-20".
std::string shortestText(double value);

// The readers' inner loops spend their time here, hence inline.

namespace numbers_detail {
// 10^22 is the largest power of ten that is exact as a Double.
inline constexpr std::array<double, 23> kPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
// Whole numbers up to this are exact as Doubles.
inline constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << 53;

/// Digits with at most one point.
struct Mantissa {
    std::uint64_t value = 0;  ///< right only when there are no more than 19 digits
    std::ptrdiff_t digits = 0;
    std::ptrdiff_t decimals = 0;
};

/// Takes a sign off the front of a text, if one stands there; true for a minus sign.
inline bool takeSign(const char*& p, const char* last) {
    return p != last && (*p == '-' || *p == '+') && *p++ == '-';
}

/// Takes as many digits as stand there, with at most one point.
inline Mantissa takeMantissa(const char*& p, const char* last) {
    Mantissa taken;
    const char* const begin = p;
    for (unsigned digit; p != last && (digit = static_cast<unsigned>(*p) - '0') < 10; ++p)
        taken.value = taken.value * 10 + digit;
    taken.digits = p - begin;
    if (p == last || *p != '.') return taken;
    const char* const fraction = ++p;
    for (unsigned digit; p != last && (digit = static_cast<unsigned>(*p) - '0') < 10; ++p)
        taken.value = taken.value * 10 + digit;
    taken.decimals = p - fraction;
    taken.digits += taken.decimals;
    return taken;
}

bool parseAnyNumber(const char* first, const char* last, double& value);
}  // namespace numbers_detail

inline const char* parsePlainNumber(const char* first, const char* last, double& value) {
    using namespace numbers_detail;
    const char* p = first;
    const bool negative = takeSign(p, last);
    const Mantissa m = takeMantissa(p, last);
    if (m.digits < 1 || m.digits > 19 || m.value > kExactIntegers) return nullptr;
    const double magnitude =
        static_cast<double>(m.value) / kPowersOfTen[static_cast<std::size_t>(m.decimals)];
    value = negative ? -magnitude : magnitude;
    return p;
}

inline bool parseNumber(const char* first, const char* last, double& value) {
    while (first != last && *first == ' ')
        ++first;
    double plain = 0;
    const char* const end = parsePlainNumber(first, last, plain);
    if (end == nullptr || end != last) return numbers_detail::parseAnyNumber(first, last, value);
    value = plain;
    return true;
}

}  // namespace tessel
