// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

// What the random session writes into files and types into boxes.

namespace entries {

inline std::string printed(double value, int decimals) {
    char text[40];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

/// A coordinate as loggers write it, or one that is no place on earth.
inline std::string coordinate(double value) {
    if (std::abs(value) < 1e9) return printed(value, 2);
    char text[40];
    std::snprintf(text, sizeof text, "%.0e", value);
    return text;
}

/// What a user may type by mistake, and the number that it begins with.
struct BadNumber {
    const char* text;
    double begins;
};
inline const std::vector<BadNumber> kBadNumbers = {{"abc", 0}, {"", 0},    {"12 m", 12},
                                                   {"1,5", 1}, {"--3", 0}, {"5x", 5}};

}  // namespace entries

}  // namespace tessel
