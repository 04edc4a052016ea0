// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/numbers.h"

#include "base/whole_numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tessel {

using namespace numbers_detail;

namespace {

// Larger exponents all mean the same (too large, or zero), so counting stops here.
constexpr std::int64_t kExponentLimit = 1'000'000'000;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}
unsigned digitOf(char c) {
    return static_cast<unsigned>(c) - static_cast<unsigned>('0');
}

// The parts of a number's text as the grammar finds them.
struct NumberText {
    const char* first = nullptr;     // first digit or point, behind the sign
    const char* exponent = nullptr;  // the exponent's letter, or the end of the digits
    const char* last = nullptr;      // one past the number
    bool negative = false;
    Mantissa mantissa;
    std::int64_t scale = 0;  // power of ten that the digits' value is to be multiplied by
};

bool isExponentLetter(char c) {
    return c == 'e' || c == 'E' || c == 'd' || c == 'D';
}

// Scans an exponent if a whole one stands at p.
void scanExponent(const char*& p, const char* last, NumberText& text) {
    const char* q = p;
    if (q == last || !isExponentLetter(*q)) return;
    const bool negative = takeSign(++q, last);
    if (q == last || digitOf(*q) >= 10) return;
    std::int64_t exponent = 0;
    for (; q != last && digitOf(*q) < 10; ++q)
        exponent = std::min<std::int64_t>(exponent * 10 + digitOf(*q), kExponentLimit);
    text.scale += negative ? -exponent : exponent;
    p = q;
}

// Finds the longest number that begins at `first`.
bool scanNumber(const char* first, const char* last, NumberText& text) {
    const char* p = first;
    text.negative = takeSign(p, last);
    text.first = p;
    text.mantissa = takeMantissa(p, last);
    if (text.mantissa.digits == 0) return false;
    text.scale = -text.mantissa.decimals;
    text.exponent = p;
    scanExponent(p, last, text);
    text.last = p;
    return true;
}

// Exact for every number, for those that the short way cannot take. The standard conversion knows no exponent
// letter but e, so the text is put together anew.
bool convertSlowly(const NumberText& text, double& value) {
    std::string plain(text.first, text.exponent);
    plain += 'e' + std::to_string(text.scale + text.mantissa.decimals);
    double magnitude = 0;
    const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), magnitude);
    if (result.ec == std::errc::result_out_of_range) {
        // Either too large, which is not a finite number, or too small, which is 0. The digits tell: the
        // value is 0.d1d2d3... times ten to the power of scale and of digits, leading zeros not counted.
        const std::size_t nonzero = plain.find_first_not_of("0.");
        const auto zeros = std::count(plain.data(), plain.data() + nonzero, '0');
        if (plain[nonzero] != 'e' && text.mantissa.digits - zeros + text.scale > 0) return false;
        magnitude = 0;
    } else if (!std::isfinite(magnitude)) {
        return false;
    }
    value = text.negative ? -magnitude : magnitude;
    return true;
}

// Up to 2^53 and 10^22 both factors are exact Doubles, so that one multiplication or division rounds once, to
// the nearest Double (W. D. Clinger, "How to Read Floating Point Numbers Accurately", 1990).
bool convert(const NumberText& text, double& value) {
    const auto& [mantissa, digits, decimals] = text.mantissa;
    if (digits <= 19 && mantissa <= kExactIntegers && text.scale >= -22 && text.scale <= 22) {
        double magnitude = static_cast<double>(mantissa);
        if (text.scale < 0)
            magnitude /= kPowersOfTen[static_cast<std::size_t>(-text.scale)];
        else
            magnitude *= kPowersOfTen[static_cast<std::size_t>(text.scale)];
        value = text.negative ? -magnitude : magnitude;
        return true;
    }
    return convertSlowly(text, value);
}

// Adds one to the last digit of a decimal text (point passed over), growing it by a digit when all are nines.
void incrementDecimal(std::string& digits) {
    for (auto i = digits.size(); i-- > 0;) {
        if (digits[i] == '.') continue;
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
}

// Makes a decimal text `length` characters long, rounding half upwards.
void roundDecimal(std::string& text, std::size_t length) {
    const bool up = text.size() > length && text[length] >= '5';
    text.resize(length, '0');
    if (up) incrementDecimal(text);
}

// A magnitude as d...d.d...d, rounded to 15 significant digits.
std::string decimalOf15Digits(double magnitude) {
    constexpr int kEnough = 40;  // so that a value just below a half is not taken for one
    std::array<char, kEnough + 16> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, kEnough);
    const std::string_view scientific(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
    const std::size_t letter = scientific.find('e');
    const char* exponentText = scientific.data() + letter + 1;
    if (*exponentText == '+') ++exponentText;
    int exponent = 0;
    std::from_chars(exponentText, end.ptr, exponent);

    constexpr std::size_t kDigits = 15;
    std::string digits{scientific.front()};
    digits += scientific.substr(2, letter - 2);
    roundDecimal(digits, kDigits);
    if (digits.size() > kDigits) ++exponent;
    if (exponent < 0) digits.insert(0, static_cast<std::size_t>(-exponent), '0');
    const auto whole = static_cast<std::size_t>(std::max(exponent, 0)) + 1;
    if (digits.size() < whole) digits.append(whole - digits.size(), '0');
    return digits.insert(whole, 1, '.');
}

}  // namespace

bool numbers_detail::parseAnyNumber(const char* first, const char* last, double& value) {
    while (first != last && isBlank(*first))
        ++first;
    while (first != last && isBlank(last[-1]))
        --last;
    NumberText text;
    return scanNumber(first, last, text) && text.last == last && convert(text, value);
}

std::optional<double> numericValue(std::string_view text) {
    double value = 0;
    if (!parseNumber(text.data(), text.data() + text.size(), value)) return std::nullopt;
    return value;
}

double leadingNumber(std::string_view text) {
    const char* first = text.data();
    const char* const last = first + text.size();
    while (first != last && isBlank(*first))
        ++first;
    NumberText number;
    double value = 0;
    if (!scanNumber(first, last, number) || !convert(number, value)) return 0;
    return value;
}

double roundHalfToEven(double value) {
    return std::nearbyint(value);
}

int roundToInt(double value) {
    return clampedInt(roundHalfToEven(value));
}

std::string pictureFormat(double value, int decimals) {
    std::string text = decimalOf15Digits(std::abs(value));
    roundDecimal(text, text.find('.') + 1 + static_cast<std::size_t>(decimals));
    if (decimals == 0) text.pop_back();
    const bool zero = text.find_first_not_of("0.") == std::string::npos;
    return value < 0 && !zero ? "-" + text : text;
}

std::string shortestText(double value) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

}  // namespace tessel
