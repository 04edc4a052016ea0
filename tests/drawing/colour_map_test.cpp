// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/colour_map.h"

namespace tessel {

namespace {

using Channels = std::array<double, 3>;

// Of light, as it adds up.
Channels linear(std::uint32_t colour) {
    Channels light{};
    for (std::size_t k = 0; k < 3; ++k) {
        const double part = static_cast<double>(colour >> (16 - 8 * k) & 255U) / 255;
        light[k] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    }
    return light;
}

double lightness(const Channels& light) {
    return std::cbrt(0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2]);
}

// As eyes without the cones for red, or for green, see it.
Channels seenBy(const std::array<Channels, 3>& eyes, const Channels& light) {
    Channels seen{};
    for (std::size_t k = 0; k < 3; ++k)
        seen[k] = eyes[k][0] * light[0] + eyes[k][1] * light[1] + eyes[k][2] * light[2];
    return seen;
}

constexpr std::array<Channels, 3> kAllCones = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
constexpr std::array<Channels, 3> kWithoutRed = {
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
constexpr std::array<Channels, 3> kWithoutGreen = {
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};

}  // namespace

TEST(ColourMap, GrowsLighterInEvenStepsInAGreyPrintAndForEyesThatTellNoRedFromGreen) {
    for (const auto& eyes : {kAllCones, kWithoutRed, kWithoutGreen}) {
        const auto lightnessOf = [&](std::size_t i) {
            return lightness(seenBy(eyes, linear(colourMap()[i])));
        };
        const double whole = lightnessOf(kShades - 1) - lightnessOf(0);
        EXPECT_GT(whole, 0.6);
        for (std::size_t i = 16; i < kShades; i += 16) {
            EXPECT_GT(lightnessOf(i) - lightnessOf(i - 16), whole / 16 * 0.6) << i;
            EXPECT_LT(lightnessOf(i) - lightnessOf(i - 16), whole / 16 * 1.6) << i;
        }
    }
}

TEST(Shades, AreSpreadEvenlyOverTheRange) {
    EXPECT_EQ(shadesOf(std::vector<double>{10, 10.19, 10.21, 29.99, 30, 49.81, 50}, {10, 50}),
              (std::vector<Shade>{0, 1, 1, 127, 128, 254, 255}));
}

TEST(Shades, OfValuesBeyondTheRangeAreThoseOfItsEnds) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(shadesOf(std::vector<double>{9, -1e300, -inf, 51, 1e300, inf}, {10, 50}),
              (std::vector<Shade>{0, 0, 0, 255, 255, 255}));
    EXPECT_EQ(shadesOf(std::vector<double>{std::nan("")}, {10, 50}), (std::vector<Shade>{0}));
}

TEST(Shades, OfARangeWithoutLengthAreTheMiddleOne) {
    EXPECT_EQ(shadesOf(std::vector<double>{7, 7}, {7, 7}), (std::vector<Shade>{128, 128}));
}

TEST(Shades, ReachOverARangeThatIsTooLongForADouble) {
    const double most = std::numeric_limits<double>::max();
    EXPECT_EQ(shadesOf(std::vector<double>{-most, 0, most}, {-most, most}),
              (std::vector<Shade>{0, 128, 255}));
}

}  // namespace tessel
