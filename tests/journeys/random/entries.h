// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

// Numbers as the random session writes them into files.

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

}  // namespace tessel
