// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessel {

/// How the characters of a text file are stored.
enum class TextEncoding { kBytes, kUtf16LittleEndian, kUtf16BigEndian };

/// How the characters of a file are stored that begins with these bytes. UTF-16 is known by its mark; without
/// one by a zero beside nearly every character, as letters, digits and signs of numbers have it there. All
/// else is Bytes.
TextEncoding recogniseTextEncoding(std::string_view firstBytes);

/// How many bytes of a mark that says how the characters are stored (UTF-8 or UTF-16) stand at the beginning.
std::size_t byteOrderMarkLength(std::string_view firstBytes);

/// Whether bytes that are no UTF-16 are text: neither the beginning of a known binary or compressed format
/// nor full of control bytes. The NULs and odd bytes that loggers leave in their files are no reason to
/// refuse them, and a run of NULs, as in a file that was given room in advance, is no more than one.
bool looksLikeText(std::string_view bytes);

/// Makes UTF-8 of UTF-16, block by block, wherever the blocks' borders fall. What is no character (half of a
/// pair of surrogates) becomes U+FFFD.
class Utf16Decoder {
  public:
    /// `encoding` is not Bytes.
    explicit Utf16Decoder(TextEncoding encoding) : bigEndian_(encoding == TextEncoding::kUtf16BigEndian) {}

    /// Bytes that a block and the one before it become at most.
    static std::size_t mostBytes(std::size_t blockSize) { return blockSize / 2 * 3 + 6; }

    /// Writes the characters of a block to `out`, which has room for mostBytes(block.size()); returns how
    /// many bytes were written.
    std::size_t decode(std::string_view block, char* out);
    /// At the end of the file: half a character that is left over.
    std::size_t finish(char* out);

  private:
    char* put(char16_t unit, char* out);

    bool bigEndian_;
    bool halfUnit_ = false;        // a block ended between the two bytes of a unit, the first of which is
    unsigned char firstByte_ = 0;  // this
    char16_t highSurrogate_ = 0;   // the first half of a pair whose second one has not come yet, or 0
};

/// Bytes as their file has them, without mark, or in UTF-8 when they are UTF-16.
std::string decodedText(std::string_view bytes, TextEncoding encoding);

}  // namespace tessel
