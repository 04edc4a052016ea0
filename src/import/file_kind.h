// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/text_encoding.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tessel {

/// How much of a file is looked at to find out what it is, and to show how it begins (bytes).
inline constexpr std::size_t kFirstBytes = std::size_t{1} << 16;

/// What the beginning of a sensor file looks like.
struct FileKind {
    TextEncoding encoding = TextEncoding::kBytes;  ///< Bytes: ASCII, UTF-8 or any code page
    bool isText = true;                            ///< false for a binary or compressed file
    bool decimalCommas = false;                    ///< semicolons between values, commas in numbers
    bool tabs = false;                             ///< tabs between values
    int headerLines = 0;                           ///< lines in front of the first line of numbers
};

/// What kind of file begins with these bytes: a file's first 64 KiB, or all of it. Of a file that is not text
/// nothing else is said. A line of numbers holds two at least, and no fewer numbers than other values; what
/// is true for most of the first 200 of these lines is said of the file.
FileKind recogniseFileKind(std::string_view firstBytes);

/// The same for a file, of which no more than the first 64 KiB are read. Throws RunTimeError when it cannot
/// be read or is none that holds its bytes (openInputFile).
FileKind recogniseFileKind(const std::string& path);

}  // namespace tessel
