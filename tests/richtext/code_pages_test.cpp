// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/code_pages.h"

namespace tessel {

TEST(CodePages, DecodeTheirBytes) {
    struct Page {
        CodePage page;
        std::vector<std::pair<int, char16_t>> characters;
    };
    const Page pages[] = {
        {CodePage::kWestern,
         {{'a', u'a'},
          {0x80, u'\u20AC'},
          {0x93, u'\u201C'},
          {0xE9, u'\u00E9'},
          {0xFF, u'\u00FF'},
          {0x81, u'\uFFFD'}}},
        {CodePage::kCyrillic,
         {{'z', u'z'}, {0xC0, u'\u0410'}, {0xFF, u'\u044F'}, {0xB8, u'\u0451'}, {0x98, u'\uFFFD'}}},
        {CodePage::kSymbol,
         {{0xB7, u'\u2022'},
          {'a', u'\u03B1'},
          {'W', u'\u03A9'},
          {0xB0, u'\u00B0'},
          {0xA3, u'\u2264'},
          {0x85, u'\uFFFD'},
          {0x05, u'\uFFFD'}}},
        {CodePage::kDingbats, {{0xA7, u'\u25AA'}, {0xFC, u'\u2713'}, {0x41, u'\u25AA'}}}};
    for (const auto& [page, characters] : pages)
        for (const auto& [byte, character] : characters)
            EXPECT_EQ(decode(page, static_cast<unsigned char>(byte)), character) << byte;
}

TEST(CodePages, AreChosenByNumberAndByFont) {
    EXPECT_EQ(codePageOfNumber(1251), CodePage::kCyrillic);
    EXPECT_EQ(codePageOfNumber(1252), CodePage::kWestern);
    EXPECT_EQ(codePageOfNumber(-1), CodePage::kWestern);
    EXPECT_EQ(codePageOfFont(0, "Arial"), CodePage::kWestern);
    EXPECT_EQ(codePageOfFont(204, "Arial"), CodePage::kCyrillic);
    EXPECT_EQ(codePageOfFont(2, "Symbol"), CodePage::kSymbol);
    EXPECT_EQ(codePageOfFont(2, "Wingdings"), CodePage::kDingbats);
    EXPECT_TRUE(isPictorial(CodePage::kSymbol));
    EXPECT_FALSE(isPictorial(CodePage::kCyrillic));
}

TEST(CodePages, KeepControlCharactersAndMarksOfDocumentsOut) {
    for (const char16_t shown : {u'a', u'\t', u'\u2028'})
        EXPECT_EQ(showable(shown), shown);
    for (const char16_t control : {u'\0', u'\x1B', u'\x85'})
        EXPECT_EQ(showable(control), 0) << int(control);
    for (const char16_t mark : {u'\x2029', u'\xFDD0', u'\xFFFC', u'\xFFFF'})
        EXPECT_EQ(showable(mark), u'\uFFFD') << int(mark);
}

}  // namespace tessel
