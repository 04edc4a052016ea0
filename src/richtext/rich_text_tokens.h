// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

namespace tessel {

/// One element of a rich text file. Views point into the data that is being read.
struct RichTextToken {
    /// What the element is.
    enum Kind {
        kOpen,    ///< a group begins
        kClose,   ///< a group ends
        kWord,    ///< a control word: `text` holds its letters, `number` its parameter
        kSymbol,  ///< a control symbol: `text` holds its one character
        kByte,    ///< a byte written in hexadecimal: `number` holds it, 0..255
        kText,    ///< bytes in the code page of the font in force, at least one
        kBinary,  ///< raw bytes of a picture
        kEnd
    };
    Kind kind = kEnd;
    std::string_view text;
    bool hasNumber = false;
    int number = 0;  ///< saturates at the limits of int

    int numberOr(int value) const { return hasNumber ? number : value; }
};

/// Cuts rich text into tokens in one pass, whatever its bytes are: every call of next() consumes something
/// or answers kEnd, and what makes no sense is passed over. Line breaks and NUL bytes between tokens mean
/// nothing; an escaped line break is the word "par", an escaped tab the word "tab".
class RichTextTokens {
  public:
    /// `data` must outlive the tokens.
    explicit RichTextTokens(std::string_view data) : rest_(data) {}

    RichTextToken next();

  private:
    RichTextToken escape();
    RichTextToken word();
    RichTextToken hexByte();
    RichTextToken take(RichTextToken::Kind kind, std::size_t length);
    void takeNumber(RichTextToken& token);

    std::string_view rest_;
};

/// Value of a hexadecimal digit, -1 for any other character.
int hexDigit(char c);

/// The character that a control word (emdash, bullet, tab, line) or a control symbol (a backslash, a blank
/// that does not break) stands for, 0 when it stands for none. A line within a paragraph ends with U+2028.
char16_t characterOfWord(std::string_view word);
char16_t characterOfSymbol(char symbol);

}  // namespace tessel
