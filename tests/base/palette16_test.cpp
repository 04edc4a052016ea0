// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/palette16.h"

namespace tessel {

namespace {

double linear(std::uint32_t channel) {
    const double c = (channel & 0xFFU) / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(int colour) {
    const std::uint32_t rgb = kBasicPalette[static_cast<std::size_t>(colour)];
    return 0.2126 * linear(rgb >> 16) + 0.7152 * linear(rgb >> 8) + 0.0722 * linear(rgb);
}

// As contrast is measured for text, from 1 (none) to 21 (black on white).
double contrast(int one, int other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace

TEST(BasicPalette, HasSixteenDifferentColours) {
    EXPECT_EQ(std::set(kBasicPalette.begin(), kBasicPalette.end()).size(), 16U);
    EXPECT_EQ(kBasicPalette[kBlack], 0x000000U);
    EXPECT_EQ(kBasicPalette[kBrightWhite], 0xFFFFFFU);
}

TEST(BasicPalette, TellsTheHighlightedRowFromTheOthersWithoutColourToo) {
    EXPECT_GE(contrast(kRed, kBlue), 2);
    EXPECT_GE(contrast(kRed, kBrightWhite), 4.5);
}

TEST(BasicPalette, TellsBarsAboveAndBelowTheMeanApart) {
    EXPECT_GE(contrast(kLightBlue, kBlue), 1.5);
    EXPECT_GE(contrast(kLightGreen, kGreen), 3);
}

}  // namespace tessel
