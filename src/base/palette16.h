// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tessel {

/// The 16-colour basic palette as 0xRRGGBB. A name says what a number is used for in the plots. Red is a
/// little lighter than usual, so that small dots of it are told from blue ones.
inline constexpr std::array<std::uint32_t, 16> kBasicPalette = {
    0x000000, 0x000080, 0x008000, 0x008080, 0xB00000, 0x800080, 0x808000, 0xC0C0C0,
    0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};

/// The places of the colours in it.
enum BasicColour : int {
    kBlack = 0,
    kBlue = 1,
    kGreen = 2,
    kCyan = 3,
    kRed = 4,
    kMagenta = 5,
    kYellow = 6,
    kWhite = 7,
    kGrey = 8,
    kLightBlue = 9,
    kLightGreen = 10,
    kLightCyan = 11,
    kLightRed = 12,
    kLightMagenta = 13,
    kLightYellow = 14,
    kBrightWhite = 15
};

}  // namespace tessel
