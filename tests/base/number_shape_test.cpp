// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/number_shape.h"

#include "base/numbers.h"

#ifdef __x86_64__

namespace tessel {

namespace {

std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// A text with bytes in front of it, as many as a shape reads.
class Placed {
  public:
    explicit Placed(std::string_view text, char inFront = '7')
        : bytes_(std::string(NumberShape::kMost, inFront).append(text)), length_(text.size()) {}

    const char* first() const { return end() - length_; }
    const char* end() const { return bytes_.data() + bytes_.size(); }
    std::string_view text() const { return {first(), length_}; }

  private:
    std::string bytes_;
    std::size_t length_;
};

bool learns(NumberShape& shape, std::string_view text, char decimalSign = '.') {
    return shape.learn(text.data(), text.data() + text.size(), decimalSign);
}
bool hasShape(std::string_view text, char decimalSign = '.') {
    NumberShape shape;
    return learns(shape, text, decimalSign);
}
NumberShape shapeOf(std::string_view text, char decimalSign = '.') {
    NumberShape shape;
    EXPECT_TRUE(learns(shape, text, decimalSign)) << '"' << text << '"';
    return shape;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Whether two texts of the same length differ in nothing but digits.
bool alike(std::string_view a, std::string_view b) {
    const auto same = [](char x, char y) { return x == y || (isDigit(x) && isDigit(y)); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

std::string made(std::mt19937& random, std::string_view alphabet, std::size_t length) {
    std::string text(length, ' ');
    for (char& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

// Blanks, a sign, digits with a point, blanks: as many of each as chance will have it, and now and then more
// than a shape takes.
std::string madeNumber(std::mt19937& random, char decimalSign) {
    static constexpr std::array<std::string_view, 4> kSigns = {"", "", "-", "+"};
    std::string text = made(random, " \t", random() % 4);
    text += kSigns[random() % kSigns.size()];
    text += made(random, "0123456789", random() % 12);
    if (random() % 3 != 0) text += decimalSign + made(random, "0123456789", random() % 10);
    return text + made(random, " \t", random() % 3 * (random() % 2));
}

std::string withOtherDigits(std::mt19937& random, std::string text) {
    for (char& c : text)
        if (isDigit(c)) c = static_cast<char>('0' + random() % 10);
    return text;
}

std::string withPoint(std::string text) {
    std::replace(text.begin(), text.end(), ',', '.');
    return text;
}

}  // namespace

TEST(NumberShape, IsThatOfADigitFromTheBeginning) {
    const NumberShape shape;
    EXPECT_EQ(shape.length(), 1U);
    EXPECT_TRUE(shape.fits(Placed("8").end()));
    EXPECT_FALSE(shape.fits(Placed("x").end()));
    EXPECT_EQ(shape.value(Placed("8").end()), 8);
}

TEST(NumberShape, IsLearntOfNumbersWithoutExponentOnly) {
    for (const char* const text : {"1", "12.5", "-12.5", "+.5", "5.", " 1", "\t-1 \t", "0", "-0.0", "007"})
        EXPECT_TRUE(hasShape(text)) << '"' << text << '"';
    for (const char* const text : {"",
                                   " ",
                                   "-",
                                   ".",
                                   "-.",
                                   "+-1",
                                   "- 1",
                                   "1-",
                                   "1 2",
                                   "1.2.3",
                                   "1e5",
                                   "1d5",
                                   "1E",
                                   "x",
                                   "1x",
                                   "x1",
                                   "1,5",
                                   "1\n",
                                   "\n1",
                                   "1\v",
                                   "\xFF"
                                   "1",
                                   "1;"})
        EXPECT_FALSE(hasShape(text)) << '"' << text << '"';
    EXPECT_FALSE(hasShape(std::string_view("1\0", 2)));
}

// Fifteen digits are exact as a Double, whatever they are; sixteen are not.
TEST(NumberShape, HasFifteenDigitsAtMostTheBlanksBehindThemCounted) {
    for (const char* const text :
         {"999999999999999", "9999999.99999999", ".999999999999999", "-999999999999999", "99999999999999. ",
          "99999999999999 ", " 9999999999999 "})
        EXPECT_TRUE(hasShape(text)) << text;
    for (const char* const text : {"9999999999999999", "999999999999999 ", "99999999999999  "})
        EXPECT_FALSE(hasShape(text)) << '"' << text << '"';
}

TEST(NumberShape, IsOfSixteenBytesAtMost) {
    EXPECT_TRUE(hasShape("         12345.6"));
    EXPECT_FALSE(hasShape("          12345.6"));
    EXPECT_FALSE(hasShape(std::string(1000, '0')));
}

TEST(NumberShape, StaysWhatItWasWhereATextHasNone) {
    NumberShape shape = shapeOf("-1.5");
    EXPECT_FALSE(learns(shape, "1.5e3"));
    EXPECT_FALSE(learns(shape, "12345678901234567"));
    EXPECT_EQ(shape.length(), 4U);
    EXPECT_EQ(shape.value(Placed("-2.5").end()), -2.5);
}

// Every byte at every place: a digit where digits stand, and otherwise the same byte.
TEST(NumberShape, FitsTextsThatDifferInNothingButDigits) {
    for (const std::string learnt : {" -12.50 ", "123456789012345", "\t.5", "+1.", "         12345.6"}) {
        const NumberShape shape = shapeOf(learnt);
        for (std::size_t place = 0; place < learnt.size(); ++place)
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = learnt;
                text[place] = static_cast<char>(byte);
                const Placed placed(text);
                ASSERT_EQ(shape.fits(placed.end()), alike(text, learnt)) << learnt << place << ' ' << byte;
            }
    }
}

TEST(NumberShape, DoesNotCareForTheBytesInFrontOfATextThatIsShorter) {
    const NumberShape shape = shapeOf("-12.50");
    for (int byte = 0; byte < 256; ++byte) {
        const Placed placed("-98.76", static_cast<char>(byte));
        ASSERT_TRUE(shape.fits(placed.end())) << byte;
        ASSERT_EQ(shape.value(placed.end()), -98.76) << byte;
    }
}

TEST(NumberShape, GivesTheValueThatTheTextHasBitForBit) {
    std::mt19937 random(41);
    int learnt = 0;
    for (int i = 0; i < 30'000; ++i) {
        const char decimalSign = i % 2 == 0 ? '.' : ',';
        const std::string text = madeNumber(random, decimalSign);
        const std::string plain = withPoint(text);
        NumberShape shape;
        if (!learns(shape, text, decimalSign)) {
            const bool isLong =
                text.size() > NumberShape::kMost || std::count_if(text.begin(), text.end(), isDigit) + 3 > 15;
            ASSERT_TRUE(isLong || !isNumeric(plain)) << '"' << text << '"';
            continue;
        }
        ++learnt;
        ASSERT_EQ(shape.length(), text.size());
        for (int other = 0; other < 10; ++other) {
            const Placed placed(withOtherDigits(random, text), static_cast<char>(random() % 256));
            const auto expected = numericValue(withPoint(std::string(placed.text())));
            ASSERT_TRUE(expected) << '"' << placed.text() << '"';
            ASSERT_TRUE(shape.fits(placed.end())) << '"' << placed.text() << '"';
            ASSERT_EQ(bitsOf(shape.value(placed.end())), bitsOf(*expected)) << '"' << placed.text() << '"';
        }
    }
    EXPECT_GT(learnt, 15'000);
}

// What fits a shape is a number, whatever is tried.
TEST(NumberShape, FitsNothingThatIsNoNumber) {
    std::mt19937 random(42);
    int fitting = 0;
    for (int i = 0; i < 300'000; ++i) {
        const std::size_t length = 1 + random() % 6;
        const std::string text = made(random, "0123456789.-+ ", length);
        NumberShape shape;
        if (!learns(shape, text)) continue;
        const Placed other(made(random, "0123456789.-+ ", length));
        if (!shape.fits(other.end())) continue;
        ++fitting;
        ASSERT_TRUE(isNumeric(other.text())) << '"' << text << "\" \"" << other.text() << '"';
        ASSERT_EQ(bitsOf(shape.value(other.end())), bitsOf(*numericValue(other.text())));
    }
    EXPECT_GT(fitting, 3'000);
}

TEST(NumberShape, KeepsTheSignOfZero) {
    EXPECT_EQ(bitsOf(shapeOf("-1.5").value(Placed("-0.0").end())), bitsOf(-0.0));
    EXPECT_EQ(bitsOf(shapeOf("+1.5").value(Placed("+0.0").end())), bitsOf(0.0));
}

}  // namespace tessel

#endif
