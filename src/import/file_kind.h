#pragma once

#include <string_view>

/// How the characters of a text file are stored.
enum class TextEncoding { Bytes, Utf16LittleEndian, Utf16BigEndian };

/// What the beginning of a sensor file looks like.
struct FileKind {
    TextEncoding encoding = TextEncoding::Bytes;  ///< Bytes: ASCII, UTF-8 or any code page
    bool isText = true;                           ///< false for a binary or compressed file
    bool decimalCommas = false;                   ///< semicolons between values, commas in numbers
    bool tabs = false;                            ///< tabs between values
    int headerLines = 0;                          ///< lines in front of the first line of numbers
};
