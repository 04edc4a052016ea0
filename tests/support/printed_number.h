// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/print_number.h"

#include <array>
#include <string>

namespace tessel {

/// What printNumber writes, as a text.
inline std::string printedNumber(double value) {
    std::array<char, kLongestNumber> text;
    return {text.data(), printNumber(text.data(), value)};
}

}  // namespace tessel
