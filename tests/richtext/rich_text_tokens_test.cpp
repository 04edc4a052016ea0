// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_tokens.h"

using namespace std::string_view_literals;

namespace tessel {

namespace {

std::vector<RichTextToken> tokensOf(std::string_view data) {
    RichTextTokens tokens(data);
    std::vector<RichTextToken> all;
    for (auto token = tokens.next(); token.kind != RichTextToken::kEnd; token = tokens.next())
        all.push_back(token);
    return all;
}

RichTextToken onlyToken(std::string_view data) {
    const auto all = tokensOf(data);
    EXPECT_EQ(all.size(), 1u);
    return all.empty() ? RichTextToken{} : all.front();
}

std::string_view wordOf(const RichTextToken& token) {
    return token.kind == RichTextToken::kWord ? token.text : "no word"sv;
}

}  // namespace

TEST(RichTextTokens, CutGroupsWordsAndText) {
    const auto all = tokensOf("{\\b1 bold}text");
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(all[0].kind, RichTextToken::kOpen);
    EXPECT_EQ(wordOf(all[1]), "b");
    EXPECT_EQ(all[2].text, "bold");
    EXPECT_EQ(all[3].kind, RichTextToken::kClose);
    EXPECT_EQ(all[4].text, "text");
}

TEST(RichTextTokens, ReadNumbersOfWordsAndTellAMissingOne) {
    EXPECT_EQ(onlyToken("\\fi-360").number, -360);
    EXPECT_FALSE(onlyToken("\\b").hasNumber);
    EXPECT_EQ(onlyToken("\\b").numberOr(1), 1);
    EXPECT_EQ(onlyToken("\\b0").numberOr(1), 0);
    EXPECT_EQ(tokensOf("\\b-x").at(1).text, "-x");
    EXPECT_EQ(tokensOf("\\b  x").at(1).text, " x") << "one blank belongs to the word";
    EXPECT_EQ(onlyToken("\\li" + std::string(400, '9')).number, std::numeric_limits<int>::max());
    EXPECT_EQ(onlyToken("\\li-99999999999").number, -std::numeric_limits<int>::max());
}

TEST(RichTextTokens, ReadEscapedBytesSymbolsAndLineBreaks) {
    EXPECT_EQ(onlyToken("\\'e9").number, 0xE9);
    EXPECT_EQ(onlyToken("\\'E9").kind, RichTextToken::kByte);
    EXPECT_EQ(tokensOf("\\'g1").at(0).kind, RichTextToken::kSymbol);
    EXPECT_EQ(tokensOf("\\'g1").at(1).text, "g1");
    EXPECT_EQ(onlyToken("\\'").kind, RichTextToken::kSymbol);
    for (const char* symbol : {"{", "\\", "*"})
        EXPECT_EQ(onlyToken(std::string("\\") + symbol).text, symbol);
    for (const auto& [escaped, word] : {std::pair("\\\n", "par"), {"\\\r\n", "par"}, {"\\\t", "tab"}})
        EXPECT_EQ(wordOf(onlyToken(escaped)), word);
}

TEST(RichTextTokens, PassOverLineBreaksNulBytesAndALoneBackslash) {
    const auto all = tokensOf("a\r\nb\0c\0"sv);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[2].text, "c");
    for (const std::string_view nothing : {"\0\0\0"sv, "\\"sv, ""sv})
        EXPECT_TRUE(tokensOf(nothing).empty());
}

TEST(RichTextTokens, GiveABinaryBlockWholeButNoMoreThanTheDataHolds) {
    const auto all = tokensOf("\\bin4 {}\\\0x"sv);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].kind, RichTextToken::kBinary);
    EXPECT_EQ(all[0].text, "{}\\\0"sv);
    EXPECT_EQ(all[1].text, "x");
    const auto more = tokensOf("\\bin2000000000 still here");
    ASSERT_EQ(more.size(), 2u);
    EXPECT_EQ(more[0].text, "");
    EXPECT_EQ(more[1].text, "still here");
    EXPECT_EQ(tokensOf("\\bin-5 x").at(1).text, "x");
}

TEST(RichTextTokens, EndWhateverTheBytesAre) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        for (const char before : {'\\', '{', 'a'})
            all += {before, static_cast<char>(byte)};
    EXPECT_LE(tokensOf(all).size(), all.size());
}

TEST(RichTextCharacters, StandForWordsAndSymbols) {
    EXPECT_EQ(characterOfWord("emdash"), u'\u2014');
    EXPECT_EQ(characterOfWord("tab"), u'\t');
    EXPECT_EQ(characterOfWord("line"), u'\u2028');
    EXPECT_EQ(characterOfWord("par"), 0);
    EXPECT_EQ(characterOfSymbol('~'), u'\u00A0');
    EXPECT_EQ(characterOfSymbol('_'), u'\u2011');
    EXPECT_EQ(characterOfSymbol('|'), 0);
}

TEST(HexDigit, KnowsBothCases) {
    for (const auto& [digit, value] : {std::pair('0', 0), {'f', 15}, {'A', 10}, {'g', -1}, {'/', -1}})
        EXPECT_EQ(hexDigit(digit), value) << digit;
}

}  // namespace tessel
