#pragma once

#include <optional>
#include <string>
#include <string_view>

// Numbers and text. Nothing here depends on the computer's locale: the decimal sign is the point.

/// The value of a text that passes the numeric-string test, else nothing. The test: blanks or tabs around;
/// one sign; digits with at most one point and at least one digit; an optional exponent (e, E, d or D, an
/// optional sign, at least one digit); nothing else; and the value must be finite. A magnitude too small for
/// a Double is 0. The conversion is exact: the Double nearest to the decimal value.
std::optional<double> numericValue(std::string_view text);

inline bool isNumeric(std::string_view text) {
    return numericValue(text).has_value();
}

/// The same without the cost of an optional, for the readers' inner loops. Leaves `value` alone on failure.
bool parseNumber(const char* first, const char* last, double& value);

/// The value of the longest leading part of the text that is a number (blanks before it passed over), 0 if
/// there is none: "12 m" gives 12, "abc" gives 0.
double leadingNumber(std::string_view text);

/// Nearest whole number, halves to the even neighbour: 2.5 gives 2, 3.5 gives 4.
double roundHalfToEven(double value);

/// The same as an int, clamped to int's range, so that a number too large for what it means is merely out of
/// range and never an overflow.
int roundToInt(double value);

/// The picture formats "0", "0.0", "0.00", ...: at least one digit before the point and exactly `decimals`
/// after it, the decimal value rounded half away from zero (2.345 gives "2.35"), no sign on a zero result.
/// Requires a finite value.
std::string pictureFormat(double value, int decimals);
