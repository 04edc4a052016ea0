// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace tessel {

/// The meanings that a byte of text can have.
enum class CodePage {
    kWestern,   ///< Windows 1252
    kCyrillic,  ///< Windows 1251
    kSymbol,    ///< the encoding of the Symbol font: Greek letters, mathematical signs, the round bullet
    kDingbats   ///< that of Wingdings, of which list bullets, ticks and arrows are known
};

/// The character that a byte stands for, U+FFFD for a byte that stands for none.
char16_t decode(CodePage codePage, unsigned char byte);

/// The code page of that number (1251, 1252); every other number means Western.
CodePage codePageOfNumber(int number);

/// The code page of a font, by its character set number (204 Cyrillic, 2 symbols) and, among fonts of
/// symbols, by its name.
CodePage codePageOfFont(int characterSet, std::string_view name);

/// Whether text in this code page is shown in an ordinary font, because its own would show it wrongly.
inline bool isPictorial(CodePage codePage) {
    return codePage == CodePage::kSymbol || codePage == CodePage::kDingbats;
}

/// What a document may hold in place of a character: nothing (0) for control characters, U+FFFD for those
/// that are no characters or have a meaning of their own inside Qt's documents.
char16_t showable(char16_t character);

}  // namespace tessel
