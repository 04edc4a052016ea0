// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/numbers.h"

namespace tessel {

namespace {

std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

std::string lettersAndDigits(std::mt19937_64& random, std::string_view alphabet, std::size_t longest) {
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

// The numeric-string test once more, written from its words, over the standard conversion.
std::optional<double> plainlyNumeric(std::string text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
    for (char& c : text)
        if (c == 'd' || c == 'D' || c == 'E') c = 'e';
    if (text.find_first_not_of("0123456789.e+-") != std::string::npos) return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
    return value;
}

}  // namespace

TEST(NumericString, AcceptsBlanksAroundSignPointAndExponent) {
    EXPECT_EQ(numericValue(" \t12.5 \t"), 12.5);
    EXPECT_EQ(numericValue("-.5"), -0.5);
    EXPECT_EQ(numericValue("5."), 5.0);
    EXPECT_EQ(numericValue("+.5E+1"), 5.0);
    EXPECT_EQ(numericValue("1d5"), 1e5);
    EXPECT_EQ(numericValue("1D-5"), 1e-5);
    EXPECT_EQ(numericValue("-254"), -254.0);
    EXPECT_EQ(numericValue("007"), 7.0);
}

TEST(NumericString, RefusesEverythingElse) {
    for (const char* text :
         {"",      " ",   "\t",    ".",    "-",   "+",    "+-1",      "- 1",   "--1",  "1-",
          "12 34", "1,5", "1.2.3", "..5",  "e5",  ".e5",  "1e",       "1e+",   "1e5.", "1e 5",
          "1e5e5", "nan", "inf",   "-inf", "NaN", "0x10", "1f",       "$1",    "1%",   "1'000",
          "1,000", "abc", "1\n",   "\r1",  "1\v", "1 m",  "infinity", "1e5d5", "١",    "½"})
        EXPECT_FALSE(isNumeric(text)) << '"' << text << '"';
    EXPECT_FALSE(isNumeric(std::string_view("1\0", 2)));
    EXPECT_FALSE(isNumeric(std::string_view("\0", 1)));
    EXPECT_FALSE(isNumeric(std::string_view()));
}

TEST(NumericString, RefusesWhatIsTooLargeAndTakesWhatIsTooSmallAsZero) {
    EXPECT_FALSE(isNumeric("1e999"));
    EXPECT_FALSE(isNumeric("-1e309"));
    EXPECT_FALSE(isNumeric("1" + std::string(400, '0')));
    EXPECT_FALSE(isNumeric("1e99999999999999999999"));
    EXPECT_EQ(numericValue("1e-999"), 0.0);
    EXPECT_EQ(numericValue("0e999"), 0.0);
    EXPECT_EQ(numericValue("0.0e99999999999999999999"), 0.0);
    EXPECT_EQ(numericValue("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_FALSE(isNumeric("1.7976931348623159e308"));
    EXPECT_EQ(numericValue("4.9e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(NumericString, ReadsNumbersOfFourHundredDigits) {
    EXPECT_EQ(numericValue("0." + std::string(400, '3')), 1.0 / 3.0);
    EXPECT_EQ(numericValue(std::string(400, '0').append("12.5")), 12.5);
    EXPECT_EQ(numericValue("1" + std::string(400, '0') + "e-400"), 1.0);
    EXPECT_EQ(numericValue("." + std::string(400, '0') + "25e400"), 0.25);
    EXPECT_EQ(numericValue("12.5" + std::string(400, '0')), 12.5);
}

TEST(NumericString, KeepsTheSignOfZero) {
    EXPECT_EQ(bitsOf(*numericValue("-0")), bitsOf(-0.0));
    EXPECT_EQ(bitsOf(*numericValue("0")), bitsOf(0.0));
}

TEST(NumericString, LeavesTheValueAloneWhenItFails) {
    double value = 42;
    const std::string text = "12 34";
    EXPECT_FALSE(parseNumber(text.data(), text.data() + text.size(), value));
    EXPECT_EQ(value, 42);
    EXPECT_FALSE(parseNumber(nullptr, nullptr, value));
    EXPECT_EQ(value, 42);
}

TEST(NumericString, ConvertsHalfwayCasesToTheEvenNeighbour) {
    EXPECT_EQ(numericValue("9007199254740993"), 9007199254740992.0);  // 2^53 + 1
    EXPECT_EQ(numericValue("9007199254740995"), 9007199254740996.0);
    EXPECT_EQ(numericValue("9007199254740993.0000000000000000000000000000000001"), 9007199254740994.0);
    EXPECT_EQ(numericValue("9007199254740992.9999999999999999999999999999999999"), 9007199254740992.0);
    EXPECT_EQ(numericValue("1.00000000000000011102230246251565404236316680908203125"), 1.0);
    EXPECT_EQ(numericValue("1.00000000000000011102230246251565404236316680908203126"), 1.0000000000000002);
}

// Numbers as loggers write them, numbers of any size, and the points halfway between two neighbouring
// Doubles.
TEST(NumericString, GivesTheNearestDoubleOfAMillionRandomTexts) {
    std::mt19937_64 random(20240607);
    std::array<char, 1100> text{};
    for (int i = 0; i < 1'000'000; ++i) {
        double number = 0;
        const std::uint64_t bits = random();
        std::memcpy(&number, &bits, sizeof number);
        if (!std::isfinite(number)) continue;
        const int kind = i % 4;
        int length = 0;
        if (kind == 0)
            length = std::snprintf(text.data(), text.size(), "%.*f", static_cast<int>(random() % 7),
                                   static_cast<double>(random() % 100'000'000) / 1000.0 - 5000);
        else if (kind == 1)
            length = std::snprintf(text.data(), text.size(), "%.*e", static_cast<int>(random() % 25), number);
        else if (kind == 2)
            length = std::snprintf(text.data(), text.size(), "%llu.%llu",
                                   static_cast<unsigned long long>(random() >> (random() % 64)),
                                   static_cast<unsigned long long>(random() >> (random() % 64)));
        else {
            // Exact in long double: the middle between a Double and the next one.
            const double value = static_cast<double>(random() >> 11) * 0x1p-40;
            const long double middle =
                (static_cast<long double>(value) +
                 static_cast<long double>(std::nextafter(value, std::numeric_limits<double>::max()))) /
                2;
            length = std::snprintf(text.data(), text.size(), "%.60Lf", middle);
        }
        const std::string_view written(text.data(), static_cast<std::size_t>(length));
        const double expected = std::strtod(text.data(), nullptr);
        const auto converted = numericValue(written);
        if (!std::isfinite(expected)) {
            ASSERT_FALSE(converted) << written;
            continue;
        }
        ASSERT_TRUE(converted) << written;
        ASSERT_EQ(bitsOf(*converted), bitsOf(expected)) << written;
    }
}

TEST(NumericString, AcceptsTheSameTextsAsThePlainTestOverAMillionRandomOnes) {
    std::mt19937_64 random(7);
    int accepted = 0;
    for (int i = 0; i < 1'000'000; ++i) {
        const std::string text = lettersAndDigits(random, "0123456789012345.-+eEdD \t,x", 8);
        const auto expected = plainlyNumeric(text);
        const auto got = numericValue(text);
        ASSERT_EQ(got.has_value(), expected.has_value()) << '"' << text << '"';
        if (got) {
            ++accepted;
            ASSERT_EQ(bitsOf(*got), bitsOf(*expected)) << '"' << text << '"';
        }
    }
    EXPECT_GT(accepted, 50'000);
}

TEST(PlainNumber, StopsBehindTheNumberAndRefusesWhatIsNotPlain) {
    double value = 42;
    const std::string_view list = "-12.5,3";
    EXPECT_EQ(parsePlainNumber(list.data(), list.data() + list.size(), value), list.data() + 5);
    EXPECT_EQ(value, -12.5);
    for (const std::string_view text : {"", "x", ".", "-", "12345678901234567890", "9007199254740993"}) {
        value = 42;
        EXPECT_EQ(parsePlainNumber(text.data(), text.data() + text.size(), value), nullptr) << text;
        EXPECT_EQ(value, 42);
    }
}

TEST(LeadingNumber, IsTheLongestAtTheBeginningAndZeroWhereThereIsNone) {
    const std::pair<const char*, double> cases[] = {
        {"12 m", 12}, {"  -2.5e1x", -25}, {"1e", 1}, {"1e+", 1}, {"3,5", 3},  {"1.2.3", 1.2}, {"5d2 ", 500},
        {"", 0},      {"abc", 0},         {"-", 0},  {".", 0},   {"1e999", 0}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(leadingNumber(text), number) << text;
}

TEST(Rounding, TakesHalvesToTheEvenNeighbourAndStaysWithinAnInt) {
    const std::pair<double, double> cases[] = {{2.5, 2}, {3.5, 4}, {-2.5, -2}, {0.5, 0}, {2.4999, 2}};
    for (const auto& [value, rounded] : cases)
        EXPECT_EQ(roundHalfToEven(value), rounded) << value;
    EXPECT_EQ(roundToInt(7.5), 8);
    EXPECT_EQ(roundToInt(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(roundToInt(-1e300), std::numeric_limits<int>::min());
    EXPECT_EQ(roundToInt(2147483647.0), 2147483647);
}

TEST(PictureFormat, RoundsTheDecimalValueHalfAwayFromZero) {
    EXPECT_EQ(pictureFormat(2.345, 2), "2.35");
    EXPECT_EQ(pictureFormat(-2.345, 2), "-2.35");
    EXPECT_EQ(pictureFormat(2.344999, 2), "2.34");
    EXPECT_EQ(pictureFormat(0.5, 0), "1");
    EXPECT_EQ(pictureFormat(1.5, 0), "2");
    EXPECT_EQ(pictureFormat(2.5, 0), "3");
    EXPECT_EQ(pictureFormat(9.995, 2), "10.00");
    EXPECT_EQ(pictureFormat(99.96, 1), "100.0");
}

TEST(PictureFormat, RoundsTo15DigitsFirstSoThatALastBitDecidesNothing) {
    EXPECT_EQ(pictureFormat(22.584999999999997, 2), "22.59");
    EXPECT_EQ(pictureFormat(-22.584999999999997, 2), "-22.59");
    EXPECT_EQ(pictureFormat(std::nextafter(0.5, 0), 0), "1");
    EXPECT_EQ(pictureFormat(436000.12499999994, 2), "436000.13");
    EXPECT_EQ(pictureFormat(9.9999999999999982, 2), "10.00");
    EXPECT_EQ(pictureFormat(0.99999999999999989, 5), "1.00000");
    // Not a last bit but a digit that counts.
    EXPECT_EQ(pictureFormat(22.5849999999999, 2), "22.58");
    EXPECT_EQ(pictureFormat(0.00499999999999999, 2), "0.00");
}

TEST(PictureFormat, Rounds15DigitsHalfAwayFromZeroToo) {
    EXPECT_EQ(pictureFormat(100000000000000.5, 1), "100000000000001.0");
    EXPECT_EQ(pictureFormat(-100000000000000.5, 1), "-100000000000001.0");
    EXPECT_EQ(pictureFormat(std::nextafter(100000000000000.5, 0), 1), "100000000000000.0");
    EXPECT_EQ(pictureFormat(999999999999999.5, 1), "1000000000000000.0");
}

TEST(PictureFormat, HasADigitBeforeThePointAndAllDecimals) {
    EXPECT_EQ(pictureFormat(0, 2), "0.00");
    EXPECT_EQ(pictureFormat(0.25, 3), "0.250");
    EXPECT_EQ(pictureFormat(12, 0), "12");
    EXPECT_EQ(pictureFormat(-117.5, 5), "-117.50000");
    EXPECT_EQ(pictureFormat(1e22, 1), "10000000000000000000000.0");
    EXPECT_EQ(pictureFormat(0.000123456, 6), "0.000123");
    EXPECT_EQ(pictureFormat(5e-324, 2), "0.00");
    const std::string largest = pictureFormat(std::numeric_limits<double>::max(), 2);
    EXPECT_EQ(largest, "179769313486232" + std::string(294, '0') + ".00");
}

TEST(PictureFormat, GivesAZeroNoSign) {
    EXPECT_EQ(pictureFormat(-0.001, 2), "0.00");
    EXPECT_EQ(pictureFormat(-0.0, 0), "0");
    EXPECT_EQ(pictureFormat(-0.005, 2), "-0.01");
}

}  // namespace tessel
