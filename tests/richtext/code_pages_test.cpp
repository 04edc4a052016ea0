// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/code_pages.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(CodePages, DecodeWesternText) {
    EXPECT_EQ(decode(CodePage::kWestern, 'a'), u'a');
    EXPECT_EQ(decode(CodePage::kWestern, 0x80), u'\u20AC');
    EXPECT_EQ(decode(CodePage::kWestern, 0x93), u'\u201C');
    EXPECT_EQ(decode(CodePage::kWestern, 0xE9), u'\u00E9');
    EXPECT_EQ(decode(CodePage::kWestern, 0xFF), u'\u00FF');
    EXPECT_EQ(decode(CodePage::kWestern, 0x81), u'\uFFFD');
}

TEST(CodePages, DecodeCyrillicText) {
    EXPECT_EQ(decode(CodePage::kCyrillic, 'z'), u'z');
    EXPECT_EQ(decode(CodePage::kCyrillic, 0xC0), u'\u0410');
    EXPECT_EQ(decode(CodePage::kCyrillic, 0xFF), u'\u044F');
    EXPECT_EQ(decode(CodePage::kCyrillic, 0xB8), u'\u0451');
    EXPECT_EQ(decode(CodePage::kCyrillic, 0x98), u'\uFFFD');
}

TEST(CodePages, DecodeTheSymbolFont) {
    EXPECT_EQ(decode(CodePage::kSymbol, 0xB7), u'\u2022');
    EXPECT_EQ(decode(CodePage::kSymbol, 'a'), u'\u03B1');
    EXPECT_EQ(decode(CodePage::kSymbol, 'W'), u'\u03A9');
    EXPECT_EQ(decode(CodePage::kSymbol, 0xB0), u'\u00B0');
    EXPECT_EQ(decode(CodePage::kSymbol, 0xA3), u'\u2264');
    EXPECT_EQ(decode(CodePage::kSymbol, 0x85), u'\uFFFD');
    EXPECT_EQ(decode(CodePage::kSymbol, 0x05), u'\uFFFD');
}

TEST(CodePages, DecodeListBulletsOfDingbats) {
    EXPECT_EQ(decode(CodePage::kDingbats, 0xA7), u'\u25AA');
    EXPECT_EQ(decode(CodePage::kDingbats, 0xFC), u'\u2713');
    EXPECT_EQ(decode(CodePage::kDingbats, 0x41), u'\u25AA');
}

TEST(CodePages, AreChosenByNumber) {
    EXPECT_EQ(codePageOfNumber(1251), CodePage::kCyrillic);
    EXPECT_EQ(codePageOfNumber(1252), CodePage::kWestern);
    EXPECT_EQ(codePageOfNumber(-1), CodePage::kWestern);
}

TEST(CodePages, AreChosenByFont) {
    EXPECT_EQ(codePageOfFont(0, "Arial"), CodePage::kWestern);
    EXPECT_EQ(codePageOfFont(204, "Arial"), CodePage::kCyrillic);
    EXPECT_EQ(codePageOfFont(2, "Symbol"), CodePage::kSymbol);
    EXPECT_EQ(codePageOfFont(2, "Wingdings"), CodePage::kDingbats);
    EXPECT_TRUE(isPictorial(CodePage::kSymbol));
    EXPECT_FALSE(isPictorial(CodePage::kCyrillic));
}

TEST(CodePages, KeepControlCharactersAndMarksOfDocumentsOut) {
    EXPECT_EQ(showable(u'a'), u'a');
    EXPECT_EQ(showable(u'\t'), u'\t');
    EXPECT_EQ(showable(u'\u2028'), u'\u2028');
    EXPECT_EQ(showable(0), 0);
    EXPECT_EQ(showable(0x1B), 0);
    EXPECT_EQ(showable(0x85), 0);
    EXPECT_EQ(showable(0x2029), u'\uFFFD');
    EXPECT_EQ(showable(0xFDD0), u'\uFFFD');
    EXPECT_EQ(showable(0xFFFC), u'\uFFFD');
    EXPECT_EQ(showable(0xFFFF), u'\uFFFD');
}

}  // namespace tessel
