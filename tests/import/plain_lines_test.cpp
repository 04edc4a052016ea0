// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/plain_lines.h"

#include "import/value_scanner.h"

namespace tessel {

namespace {

// Three numbers, a "|" behind each.
std::string inWords(const PlainLines<PlainValues>::Numbers& numbers) {
    std::ostringstream words;
    words.precision(17);
    for (std::size_t i = 0; i < 3; ++i)
        words << numbers[i] << '|';
    return words.str();
}

// The numbers of a line that stands between others; nothing when it is not plain.
std::string readBetweenOthers(const std::string& line, const std::string& lineEnd = "\n") {
    const std::string others = "430000.25,4500000.5,80.25\n430000.26,4500000.6,80.26\n";
    const std::string text = others + line + lineEnd + others;
    PlainLines<PlainValues> lines(3);
    lines.beginText(text);
    PlainLines<PlainValues>::Numbers numbers{};
    const char* first = text.data();
    while (first < text.data() + others.size())
        first = lines.read(first, numbers) + 1;
    const char* const end = lines.read(first, numbers);
    return end == first + line.size() ? inWords(numbers) : "";
}

// The numbers of a line with decimal commas that stands so far from the ends of a text that shapes are of
// use: without them such a line is left to others.
std::string readWithCommas(const std::string& line) {
    const std::string text = std::string(40, 'x') + '\n' + line + '\n' + std::string(40, 'x');
    PlainLines<DecimalCommaValues> lines(3);
    lines.beginText(text);
    PlainLines<DecimalCommaValues>::Numbers numbers{};
    const char* const end = lines.read(text.data() + 41, numbers);
    return end == text.data() + 41 + line.size() ? inWords(numbers) : "";
}

}  // namespace

TEST(PlainLines, HaveANumberForEachColumnWithASeparatorBetween) {
    EXPECT_EQ(readBetweenOthers("430001.25,4500001.5,81.25"), "430001.25|4500001.5|81.25|");
    EXPECT_EQ(readBetweenOthers("1,2,3"), "1|2|3|");
    EXPECT_EQ(readBetweenOthers("-1.5\t+.5 0", "\r\n"), "-1.5|0.5|0|");
    EXPECT_EQ(readBetweenOthers(" 1,  2, \t3", "\r"), "1|2|3|");
    EXPECT_EQ(readBetweenOthers("-0.0,123456789012345,1234567.12345678"),
              "-0|123456789012345|1234567.1234567801|");
}

TEST(PlainLines, AreNoOthers) {
    for (const char* const line :
         {"", "1", "1,2", "1,2,", "1,2,3,", "1,2,3 ", "1,2,3,4", ",1,2", "1,,2", "1 ,2,3", "1,2,x", "x,2,3",
          "\"1\",2,3", "1,2,3e0", "1,2,3;", "1;2;3", "1,2.3.4,5", "1,-,3", "1,2,3\v"})
        EXPECT_EQ(readBetweenOthers(line), "") << '"' << line << '"';
    EXPECT_EQ(readBetweenOthers(std::string("1,2,3\0", 6)), "");
}

TEST(PlainLines, AtTheBeginningAndTheEndOfATextAreReadToo) {
    PlainLines<PlainValues> lines(3);
    PlainLines<PlainValues>::Numbers numbers{};
    const std::string text = "1,2,3\n4,5,6\n";
    lines.beginText(text);
    EXPECT_EQ(lines.read(text.data(), numbers), text.data() + 5);
    EXPECT_EQ(lines.read(text.data() + 6, numbers), text.data() + 11);
    EXPECT_EQ(numbers[2], 6);
    EXPECT_EQ(lines.read(text.data() + 12, numbers), nullptr);
    const std::string cut = "1,2,3\n4,5,6";
    lines.beginText(cut);
    EXPECT_EQ(lines.read(cut.data() + 6, numbers), nullptr);
}

TEST(PlainLines, AreReadWhereNearlyEveryNumberHasAShapeOfItsOwn) {
    std::mt19937 random(51);
    std::string text;
    const auto number = [&] {
        return std::to_string(random() % 1000).append(".").append(random() % 9, '5').append("1");
    };
    std::vector<std::string> written;
    for (int line = 0; line < 2000; ++line) {
        written.push_back(number() + ',' + number() + ',' + number());
        text += written.back() + '\n';
    }
    PlainLines<PlainValues> lines(3);
    lines.beginText(text);
    const char* first = text.data();
    for (const std::string& line : written) {
        PlainLines<PlainValues>::Numbers numbers{};
        const char* const end = lines.read(first, numbers);
        ASSERT_EQ(end, first + line.size()) << line;
        ASSERT_EQ(numbers[0], std::strtod(first, nullptr)) << line;
        ASSERT_EQ(numbers[2], std::strtod(line.data() + line.rfind(',') + 1, nullptr)) << line;
        first = end + 1;
    }
}

#ifdef __x86_64__
TEST(PlainLines, WithDecimalCommasHaveSemicolonsAndNoPoints) {
    EXPECT_EQ(readWithCommas("1,5;2;-3,25"), "1.5|2|-3.25|");
    EXPECT_EQ(readWithCommas(" 1,5; 2;\t3"), "1.5|2|3|");
    for (const char* const line :
         {"1.5;2;3", "1,5 2;3", "1,5 ;2;3", "1,5,2;3;4", "1;2;3;", "1;2;3 4", "1;;3"})
        EXPECT_EQ(readWithCommas(line), "") << line;
}
#endif

}  // namespace tessel
