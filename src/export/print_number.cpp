// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/print_number.h"

#include "base/run_time_error.h"
#include "base/whole_numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace tessel {

namespace {

constexpr int kDigits = 15;

// "00" "01" ... "99".
constexpr auto kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// A fraction in thousandths: point and three digits, and how many of these four characters are left when the
// zeros at the end are off.
struct Thousandths {
    std::array<char, 4> text;
    std::uint8_t length;
};
constexpr auto kThousandths = [] {
    std::array<Thousandths, 1000> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i].text = {'.', static_cast<char>('0' + i / 100), static_cast<char>('0' + i / 10 % 10),
                         static_cast<char>('0' + i % 10)};
        table[i].length = i == 0 ? 0 : i % 100 == 0 ? 2 : i % 10 == 0 ? 3 : 4;
    }
    return table;
}();

void copyPair(char* out, std::uint64_t value) {
    std::memcpy(out, &kPairs[2 * static_cast<std::size_t>(value)], 2);
}

// How many digits a whole number below 10^15 has; none for 0.
int digitCount(std::uint64_t value) {
    int count = 0;
    for (; value >= 10'000; value /= 10'000)
        count += 4;
    return count + (value >= 1000 ? 4 : value >= 100 ? 3 : value >= 10 ? 2 : value >= 1 ? 1 : 0);
}

// Writes exactly `count` digits, zeros in front.
char* writeDigits(char* out, std::uint64_t value, int count) {
    char* const end = out + count;
    char* p = end;
    for (; p - out >= 2; value /= 100)
        copyPair(p -= 2, value % 100);
    if (p != out) *out = static_cast<char>('0' + value);
    return end;
}

// The magnitude as a whole number of 1/scale, when it is the Double nearest to that decimal and the decimal
// has at most 15 digits; -1 when not. Such a decimal is the value rounded to 15 digits, because a decimal of
// 15 digits survives the way through a Double; and the division rounds once, because both its operands are
// exact.
std::int64_t wholeUnits(double magnitude, double scale) {
    const double scaled = magnitude * scale;
    if (!(scaled < 999'999'999'999'999.0)) return -1;
    // A unit rounded wrongly does not divide back to the magnitude.
    const std::int64_t units = int64Within(scaled + 0.5);
    return static_cast<double>(units) / scale == magnitude ? units : -1;
}

char* writeThousandths(char* out, std::uint64_t units) {
    const std::uint64_t whole = units / 1000;
    out = writeDigits(out, whole, digitCount(whole));
    const Thousandths& fraction = kThousandths[static_cast<std::size_t>(units % 1000)];
    std::memcpy(out, fraction.text.data(), fraction.text.size());
    return out + fraction.length;
}

// Requires a fraction that is not 0.
char* writeBillionths(char* out, std::uint64_t units) {
    const std::uint64_t whole = units / 1'000'000'000;
    out = writeDigits(out, whole, digitCount(whole));
    *out++ = '.';
    out = writeDigits(out, units % 1'000'000'000, 9);
    while (out[-1] == '0')
        --out;
    return out;
}

// A decimal d.ddd... times ten to the power of exponent; the last digit is not 0.
struct Decimal {
    std::array<char, 20> digits;
    int count = 0;
    int exponent = 0;

    void dropZeros() {
        while (count > 1 && digits[static_cast<std::size_t>(count - 1)] == '0')
            --count;
    }
};

// Takes "d.ddde+XX" apart.
Decimal parseScientific(const char* first, const char* last) {
    Decimal decimal;
    for (; *first != 'e'; ++first)
        if (*first != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *first;
    ++first;
    if (*first == '+') ++first;
    std::from_chars(first, last, decimal.exponent);
    decimal.dropZeros();
    return decimal;
}

void roundUpLastDigit(Decimal& decimal) {
    for (int i = decimal.count - 1; i >= 0; --i) {
        char& digit = decimal.digits[static_cast<std::size_t>(i)];
        if (digit != '9') {
            ++digit;
            return;
        }
        digit = '0';
    }
    decimal.digits[0] = '1';
    ++decimal.exponent;
}

Decimal exactDecimal(double magnitude) {
    std::array<char, 32> text;
    const auto exact = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                     std::chars_format::scientific, kDigits - 1);
    return parseScientific(text.data(), exact.ptr);
}

Decimal shortestDecimal(double magnitude) {
    std::array<char, 32> text;
    const auto shortest =
        std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific);
    return parseScientific(text.data(), shortest.ptr);
}

// The magnitude rounded to 15 digits. The shortest decimal that stands for a Double lies on the same side of
// every halfway mark between two decimals of 15 digits as the Double itself: such a mark has 16 digits, and
// if it lay between them it would be shorter or nearer and so have been chosen. The exact value must be asked
// only when the shortest decimal is such a mark (its 16th digit is a last 5), or when the Double is so small
// that it holds fewer than 15 digits; that takes much longer.
Decimal roundedDecimal(double magnitude) {
    if (magnitude < std::numeric_limits<double>::min()) return exactDecimal(magnitude);
    Decimal decimal = shortestDecimal(magnitude);
    if (decimal.count <= kDigits) return decimal;
    const char next = decimal.digits[kDigits];
    if (decimal.count == kDigits + 1 && next == '5') return exactDecimal(magnitude);
    decimal.count = kDigits;
    if (next >= '5') roundUpLastDigit(decimal);
    decimal.dropZeros();
    return decimal;
}

char* append(char* out, const char* characters, int count) {
    std::memcpy(out, characters, static_cast<std::size_t>(count));
    return out + count;
}

char* appendZeros(char* out, int count) {
    for (int i = 0; i < count; ++i)
        *out++ = '0';
    return out;
}

char* writeWithExponent(char* out, const Decimal& decimal) {
    *out++ = decimal.digits[0];
    if (decimal.count > 1) {
        *out++ = '.';
        out = append(out, &decimal.digits[1], decimal.count - 1);
    }
    *out++ = 'E';
    *out++ = decimal.exponent < 0 ? '-' : '+';
    const auto size = static_cast<std::uint64_t>(std::abs(decimal.exponent));
    return writeDigits(out, size, size < 100 ? 2 : 3);
}

char* writePlain(char* out, const Decimal& decimal) {
    const int whole = decimal.exponent + 1;  // digits before the point
    if (whole <= 0) {
        *out++ = '.';
        return append(appendZeros(out, -whole), decimal.digits.data(), decimal.count);
    }
    if (decimal.count <= whole)
        return appendZeros(append(out, decimal.digits.data(), decimal.count), whole - decimal.count);
    out = append(out, decimal.digits.data(), whole);
    *out++ = '.';
    return append(out, &decimal.digits[static_cast<std::size_t>(whole)], decimal.count - whole);
}

char* writeAny(char* out, double magnitude) {
    if (!std::isfinite(magnitude)) throw RunTimeError::overflow();
    const Decimal decimal = roundedDecimal(magnitude);
    const bool plain = decimal.exponent >= -4 && decimal.exponent < kDigits;
    return plain ? writePlain(out, decimal) : writeWithExponent(out, decimal);
}

char* writeMagnitude(char* out, double magnitude) {
    // Coordinates in metres and readings have up to three decimals, degrees up to nine.
    if (const auto units = wholeUnits(magnitude, 1e3); units > 0)
        return writeThousandths(out, static_cast<std::uint64_t>(units));
    constexpr std::int64_t kSmallestPlain = 100'000;  // 1E-04
    if (const auto units = wholeUnits(magnitude, 1e9); units >= kSmallestPlain)
        return writeBillionths(out, static_cast<std::uint64_t>(units));
    return writeAny(out, magnitude);
}

}  // namespace

char* printNumber(char* out, double value) {
    *out++ = value < 0 ? '-' : ' ';
    if (value == 0)
        *out++ = '0';
    else
        out = writeMagnitude(out, std::abs(value));
    *out++ = ' ';
    return out;
}

}  // namespace tessel
