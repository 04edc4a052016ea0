// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/run_time_error.h"
#include "support/printed_number.h"

namespace tessel {

namespace {

// The same by way of the C library, which rounds the exact value to 15 digits.
std::string writtenByTheLibrary(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.15G", std::fabs(value));
    std::string digits = text;
    if (digits.starts_with("0.")) digits.erase(0, 1);
    return (value < 0 ? "-" : " ") + digits + " ";
}

::testing::AssertionResult isExact(double value) {
    const std::string actual = printedNumber(value);
    const std::string expected = writtenByTheLibrary(value);
    if (actual == expected) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actual << "instead of" << expected;
}

void expectExactWithNeighbours(double value) {
    ASSERT_TRUE(isExact(value));
    ASSERT_TRUE(isExact(-value));
    ASSERT_TRUE(isExact(std::nextafter(value, 0.0)));
    ASSERT_TRUE(isExact(std::nextafter(value, 1e308)));
}

}  // namespace

TEST(PrintedNumber, StandsBetweenBlankOrSignAndBlank) {
    const std::pair<double, const char*> cases[] = {
        {1, " 1 "},
        {-1, "-1 "},
        {436000.12, " 436000.12 "},
        {2147483646, " 2147483646 "},
        // no zero before the point, and none with a sign
        {0.5, " .5 "},
        {-0.25, "-.25 "},
        {0.001, " .001 "},
        {0.0123456789, " .0123456789 "},
        {10.05, " 10.05 "},
        {0.0, " 0 "},
        {-0.0, " 0 "},
        // at most 15 digits, an exact half to the even neighbour
        {0.1 + 0.2, " .3 "},
        {1.0 / 3, " .333333333333333 "},
        {-2.0 / 3, "-.666666666666667 "},
        {123456789.123456789, " 123456789.123457 "},
        {99999999999999.96, " 100000000000000 "},
        {999999999999999, " 999999999999999 "},
        {100000000000000.5, " 100000000000000 "},
        {100000000000001.5, " 100000000000002 "},
        // an exponent when very large or very small
        {1e15, " 1E+15 "},
        {-1.5e15, "-1.5E+15 "},
        {999999999999999.5, " 1E+15 "},
        {1e14, " 100000000000000 "},
        {1e-4, " .0001 "},
        {1e-5, " 1E-05 "},
        {0.00012345, " .00012345 "},
        {0.000099999, " 9.9999E-05 "},
        {-2.5e-300, "-2.5E-300 "},
        {-1.23456789012345e-300, "-1.23456789012345E-300 "},
        {std::numeric_limits<double>::max(), " 1.79769313486232E+308 "},
        {std::numeric_limits<double>::denorm_min(), " 4.94065645841247E-324 "}};
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(printedNumber(number), text);
        EXPECT_LE(printedNumber(number).size(), kLongestNumber);
    }
}

TEST(PrintedNumber, ThatIsNotFiniteIsReported) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double number : {kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THROW(printedNumber(number), RunTimeError);
}

TEST(PrintedNumber, IsExactForNumbersOfFewDecimalsAndTheirNeighbours) {
    std::mt19937_64 random(15);
    for (int decimals = 0; decimals <= 16; ++decimals) {
        const double scale = std::pow(10.0, decimals);
        for (int digits = 1; digits <= 16; ++digits) {
            std::uniform_int_distribution<std::int64_t> whole(
                1, static_cast<std::int64_t>(std::pow(10.0, digits)));
            for (int i = 0; i < 400; ++i)
                ASSERT_NO_FATAL_FAILURE(
                    expectExactWithNeighbours(static_cast<double>(whole(random)) / scale));
        }
    }
}

TEST(PrintedNumber, IsExactForAnyNumber) {
    std::mt19937_64 random(16);
    for (int i = 0; i < 200'000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        ASSERT_TRUE(isExact(value));
    }
}

// Numbers of 16 digits that end in 5 lie between two numbers of 15 digits: there rounding twice would show.
TEST(PrintedNumber, IsExactHalfwayBetweenNumbersOf15Digits) {
    std::mt19937_64 random(17);
    std::uniform_int_distribution<std::int64_t> digits(100'000'000'000'000, 900'000'000'000'000);
    std::uniform_int_distribution<int> exponent(-40, 40);
    for (int i = 0; i < 40'000; ++i) {
        const double halfway = std::strtod(
            (std::to_string(digits(random)) + "5e" + std::to_string(exponent(random))).c_str(), nullptr);
        ASSERT_NO_FATAL_FAILURE(expectExactWithNeighbours(halfway));
    }
}

TEST(PrintedNumber, IsExactAroundPowersOfTen) {
    for (int exponent = -320; exponent <= 308; ++exponent) {
        double below = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        double above = below;
        for (int i = 0; i < 20; ++i) {
            ASSERT_TRUE(isExact(below));
            ASSERT_TRUE(isExact(above));
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, 1.79e308);
        }
    }
}

}  // namespace tessel
