// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_tokens.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tessel {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool meansNothing(char c) {
    return c == '\r' || c == '\n' || c == '\0';
}

bool endsText(char c) {
    return c == '\\' || c == '{' || c == '}' || meansNothing(c);
}

template <class Predicate>
std::size_t lengthWhile(std::string_view text, Predicate predicate) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), predicate) - text.begin());
}

struct NamedCharacter {
    std::string_view word;
    char16_t character;
};

constexpr std::array<NamedCharacter, 17> kNamedCharacters = {{
    {"tab", u'\t'},
    {"line", u'\u2028'},
    {"lbr", u'\u2028'},
    {"emdash", u'\u2014'},
    {"endash", u'\u2013'},
    {"bullet", u'\u2022'},
    {"lquote", u'\u2018'},
    {"rquote", u'\u2019'},
    {"ldblquote", u'\u201C'},
    {"rdblquote", u'\u201D'},
    {"emspace", u'\u2003'},
    {"enspace", u'\u2002'},
    {"qmspace", u'\u2005'},
    {"zwj", u'\u200D'},
    {"zwnj", u'\u200C'},
    {"ltrmark", u'\u200E'},
    {"rtlmark", u'\u200F'},
}};

}  // namespace

int hexDigit(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

RichTextToken RichTextTokens::next() {
    rest_.remove_prefix(lengthWhile(rest_, meansNothing));
    if (rest_.empty()) return {};
    switch (rest_.front()) {
        case '{':
            return take(RichTextToken::kOpen, 1);
        case '}':
            return take(RichTextToken::kClose, 1);
        case '\\':
            rest_.remove_prefix(1);
            return escape();
        default:
            return take(RichTextToken::kText, lengthWhile(rest_, [](char c) { return !endsText(c); }));
    }
}

// What follows a backslash.
RichTextToken RichTextTokens::escape() {
    if (rest_.empty()) return {};
    const char first = rest_.front();
    if (isLetter(first)) return word();
    if (first == '\'') return hexByte();
    auto token = take(RichTextToken::kSymbol, 1);
    if (first == '\r' || first == '\n') token = {RichTextToken::kWord, "par"};
    if (first == '\r' && rest_.starts_with('\n')) rest_.remove_prefix(1);
    if (first == '\t') token = {RichTextToken::kWord, "tab"};
    return token;
}

RichTextToken RichTextTokens::word() {
    auto token = take(RichTextToken::kWord, lengthWhile(rest_, isLetter));
    takeNumber(token);
    if (rest_.starts_with(' ')) rest_.remove_prefix(1);
    if (token.text != "bin") return token;
    // A count that the data does not hold is damage: believing it would lose the rest of the document.
    const auto count = static_cast<std::size_t>(std::max(token.number, 0));
    return take(RichTextToken::kBinary, count <= rest_.size() ? count : 0);
}

void RichTextTokens::takeNumber(RichTextToken& token) {
    const bool negative = rest_.starts_with('-');
    const std::size_t sign = negative ? 1 : 0;
    const auto digits = lengthWhile(rest_.substr(sign), isDigit);
    if (digits == 0) return;
    constexpr long long kLimit = std::numeric_limits<int>::max();
    long long value = 0;
    for (const char digit : rest_.substr(sign, digits))
        value = std::min(value * 10 + (digit - '0'), kLimit);
    token.hasNumber = true;
    token.number = static_cast<int>(negative ? -value : value);
    rest_.remove_prefix(sign + digits);
}

RichTextToken RichTextTokens::hexByte() {
    const int high = rest_.size() > 1 ? hexDigit(rest_[1]) : -1;
    const int low = rest_.size() > 2 ? hexDigit(rest_[2]) : -1;
    if (high < 0 || low < 0) return take(RichTextToken::kSymbol, 1);
    rest_.remove_prefix(3);
    return {RichTextToken::kByte, {}, true, high * 16 + low};
}

RichTextToken RichTextTokens::take(RichTextToken::Kind kind, std::size_t length) {
    const RichTextToken token{kind, rest_.substr(0, length)};
    rest_.remove_prefix(length);
    return token;
}

char16_t characterOfWord(std::string_view word) {
    const auto* found = std::find_if(kNamedCharacters.begin(), kNamedCharacters.end(),
                                     [word](const NamedCharacter& named) { return named.word == word; });
    return found != kNamedCharacters.end() ? found->character : u'\0';
}

char16_t characterOfSymbol(char symbol) {
    switch (symbol) {
        case '\\':
        case '{':
        case '}':
            return static_cast<char16_t>(symbol);
        case '~':
            return u'\u00A0';
        case '-':
            return u'\u00AD';
        case '_':
            return u'\u2011';
        default:
            return u'\0';
    }
}

}  // namespace tessel
