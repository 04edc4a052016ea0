// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text_lines.h"

namespace tessel {

// Long enough for several of the steps in which bytes are looked at, of every size.
TEST(LineEnd, IsTheFirstLineFeedOrCarriageReturnWhereverItStands) {
    constexpr std::size_t kLongest = 70;
    for (std::size_t length = 0; length <= kLongest; ++length)
        for (std::size_t place = 0; place <= length; ++place)
            for (const std::string_view end : {"\n", "\r", "\r\n", "\n\r"}) {
                std::string text(length, 'x');
                text.insert(place, end).append("\r\n");
                const char* const first = text.data();
                ASSERT_EQ(findLineEnd(first, first + place + 1), first + place) << length << ' ' << place;
                ASSERT_EQ(findLineEnd(first, first + text.size()), first + place) << length << ' ' << place;
                ASSERT_EQ(findLineEnd(first, first + place), first + place) << length << ' ' << place;
            }
}

TEST(LineEnd, IsNoOtherByte) {
    for (int byte = 0; byte < 256; ++byte) {
        if (byte == '\n' || byte == '\r') continue;
        const std::string text(40, static_cast<char>(byte));
        for (std::size_t length = 0; length <= text.size(); ++length)
            ASSERT_EQ(findLineEnd(text.data(), text.data() + length), text.data() + length) << byte;
    }
}

TEST(TextLines, GoOnBehindALineThatIsPassedOver) {
    for (const std::string_view end : {"\n", "\r", "\r\n"}) {
        const std::string text = std::string("first").append(end).append("second");
        TextLines lines(text);
        lines.passOver(text.data() + 5);
        EXPECT_EQ(lines.rest(), "second");
        std::string_view line;
        EXPECT_TRUE(lines.next(line));
        EXPECT_EQ(line, "second");
        EXPECT_EQ(lines.rest(), "");
        EXPECT_FALSE(lines.next(line));
    }
}

}  // namespace tessel
