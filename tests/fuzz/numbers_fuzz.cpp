// SPDX-License-Identifier: GPL-3.0-or-later
// Text to number and back: the conversion agrees with the standard library's, and what is written is read
// again as what it was.
#include "base/numbers.h"
#include "fuzz/memory_file.h"
#include "support/printed_number.h"

#include <cmath>
#include <cstdlib>

namespace tessel {

namespace {

// The standard conversion knows neither the letter d nor texts with a NUL in them.
std::string asStandardText(std::string_view text) {
    std::string standard(text);
    for (char& c : standard)
        if (c == 'd' || c == 'D') c = 'e';
    return standard;
}

void requireStandardValue(std::string_view text, double value) {
    const double standard = std::strtod(asStandardText(text).c_str(), nullptr);
    require(std::isfinite(value));
    // Below the smallest normal number the standard conversion goes on where this one may give 0.
    if (value == 0 && std::abs(standard) < 1e-300) return;
    require(value == standard);
}

void requirePrintedAgain(double value) {
    const std::string printed = printedNumber(value);
    require(printed.size() <= static_cast<std::size_t>(kLongestNumber));
    const auto again = numericValue(printed);
    if (!again) {  // rounding to 15 digits may carry the largest numbers out of reach
        require(std::abs(value) > 1.797e308);
        return;
    }
    require(std::abs(*again - value) <= std::abs(value) * 1e-14 + 1e-320);
    require(printedNumber(*again) == printed);
}

void requirePicture(double value, int decimals) {
    const std::string picture = pictureFormat(value, decimals);
    const auto again = numericValue(picture);
    if (!again) {  // rounding to 15 digits may carry the largest numbers out of reach
        require(std::abs(value) > 1.797e308);
        return;
    }
    const double step = std::pow(10, -decimals);
    require(std::abs(*again - value) <= 0.5 * step * (1 + 1e-9) + std::abs(value) * 1e-14);
    require(!(*again == 0 && picture.front() == '-'));
}

void requireRounded(double value) {
    const double rounded = roundHalfToEven(value);
    require(std::abs(rounded - value) <= 0.5);
    if (std::abs(value) < 1e9) require(roundToInt(value) == static_cast<int>(rounded));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzzInput(data, size);
    const TimeBudget budget(text.size());
    const auto value = numericValue(text);
    const double leading = leadingNumber(text);
    require(std::isfinite(leading));
    if (!value) return 0;
    require(leading == *value);
    requireStandardValue(text, *value);
    requirePrintedAgain(*value);
    for (int decimals = 0; decimals < 6; ++decimals)
        requirePicture(*value, decimals);
    requireRounded(*value);
    return 0;
}

}  // namespace tessel
