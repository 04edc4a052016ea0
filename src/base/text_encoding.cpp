// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/text_encoding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessel {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

// Fewer bytes than these tell nothing about how characters are stored.
constexpr std::size_t kFewestPairs = 3;

// Compressed files, archives, documents, pictures, databases and programs, by what they begin with.
constexpr std::array kBinaryBeginnings = {
    "\x1F\x8B"sv,
    "PK\3\4"sv,
    "PK\5\6"sv,
    "\xFD"
    "7zXZ\0"sv,
    "7z\xBC\xAF\x27\x1C"sv,
    "\x28\xB5\x2F\xFD"sv,
    "Rar!\x1A"sv,
    "\x1F\x9D"sv,
    "%PDF-"sv,
    "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv,
    "\x89PNG\r\n\x1A\n"sv,
    "\xFF\xD8\xFF"sv,
    "SQLite format 3\0"sv,
    "\x7F"
    "ELF"sv,
};

bool isBzip2(std::string_view bytes) {
    return bytes.starts_with("BZh") && bytes.substr(4).starts_with("1AY&SY");
}

bool isTarArchive(std::string_view bytes) {
    return bytes.size() > 262 && bytes.substr(257, 5) == "ustar";
}

bool hasBinaryBeginning(std::string_view bytes) {
    const auto begins = [&](std::string_view beginning) { return bytes.starts_with(beginning); };
    return std::any_of(kBinaryBeginnings.begin(), kBinaryBeginnings.end(), begins) || isBzip2(bytes) ||
           isTarArchive(bytes);
}

// Control characters that are no part of a text; the last one (Ctrl+Z) ends old text files.
bool isControl(char c) {
    return (c >= 0 && c < ' ' && "\t\n\v\f\r\x1A"sv.find(c) == std::string_view::npos) || c == '\x7F';
}

// Whether there is no byte at all that might be a control character; without branches, for it is asked of
// every file.
bool hasNoControls(std::string_view bytes) {
    unsigned char found = 0;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const bool control = byte < '\t' || (byte > '\r' && byte < ' ') || byte == 0x7F;
        found = static_cast<unsigned char>(found | (control ? 1 : 0));
    }
    return found == 0;
}

// Zeros and control bytes among the first or the second bytes of pairs.
struct HalvesOfPairs {
    std::size_t pairs = 0, zeros = 0, controls = 0;

    HalvesOfPairs(std::string_view bytes, std::size_t which) : pairs(bytes.size() / 2) {
        for (std::size_t i = which; i < pairs * 2; i += 2) {
            zeros += bytes[i] == 0;
            controls += isControl(bytes[i]);
        }
    }
    // What stands beside the characters that survey files are made of: more letters of other alphabets than
    // these would be no such file.
    bool areHighBytes() const { return zeros * 4 >= pairs * 3; }
    bool areCharacters() const { return controls * 50 <= pairs; }
};

}  // namespace

TextEncoding recogniseTextEncoding(std::string_view firstBytes) {
    if (firstBytes.starts_with(kLittleEndianMark)) return TextEncoding::kUtf16LittleEndian;
    if (firstBytes.starts_with(kBigEndianMark)) return TextEncoding::kUtf16BigEndian;
    if (firstBytes.find('\0') == std::string_view::npos) return TextEncoding::kBytes;
    const HalvesOfPairs first(firstBytes, 0), second(firstBytes, 1);
    if (first.pairs < kFewestPairs) return TextEncoding::kBytes;
    if (second.areHighBytes() && first.areCharacters()) return TextEncoding::kUtf16LittleEndian;
    if (first.areHighBytes() && second.areCharacters()) return TextEncoding::kUtf16BigEndian;
    return TextEncoding::kBytes;
}

std::size_t byteOrderMarkLength(std::string_view firstBytes) {
    if (firstBytes.starts_with(kUtf8Mark)) return kUtf8Mark.size();
    const bool utf16 = firstBytes.starts_with(kLittleEndianMark) || firstBytes.starts_with(kBigEndianMark);
    return utf16 ? 2 : 0;
}

bool looksLikeText(std::string_view bytes) {
    constexpr std::size_t kFew = 3;
    if (hasBinaryBeginning(bytes)) return false;
    if (hasNoControls(bytes)) return true;
    std::size_t controls = 0, others = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!isControl(bytes[i]))
            ++others;
        else if (bytes[i] != 0 || i == 0 || bytes[i - 1] != 0)
            ++controls;
    }
    return others > 0 ? controls <= kFew || controls * 10 <= others : controls == 0;
}

namespace {

constexpr char32_t kReplacement = 0xFFFD;

char* putTrail(char32_t code, int shift, char* out) {
    *out = static_cast<char>(0x80 | (code >> shift & 0x3F));
    return out + 1;
}

char* putUtf8(char32_t code, char* out) {
    if (code < 0x80) {
        *out = static_cast<char>(code);
        return out + 1;
    }
    if (code < 0x800) {
        *out = static_cast<char>(0xC0 | code >> 6);
        return putTrail(code, 0, out + 1);
    }
    if (code < 0x10000) {
        *out = static_cast<char>(0xE0 | code >> 12);
        return putTrail(code, 0, putTrail(code, 6, out + 1));
    }
    *out = static_cast<char>(0xF0 | code >> 18);
    return putTrail(code, 0, putTrail(code, 6, putTrail(code, 12, out + 1)));
}

bool isHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

char* Utf16Decoder::put(char16_t unit, char* out) {
    const char16_t high = std::exchange(highSurrogate_, 0);
    if (high != 0 && isLowSurrogate(unit))
        return putUtf8(0x10000 + (static_cast<char32_t>(high - 0xD800) << 10) + (unit - 0xDC00U), out);
    if (high != 0) out = putUtf8(kReplacement, out);
    if (isHighSurrogate(unit)) {
        highSurrogate_ = unit;
        return out;
    }
    return putUtf8(isLowSurrogate(unit) ? kReplacement : unit, out);
}

std::size_t Utf16Decoder::decode(std::string_view block, char* out) {
    const char* const begin = out;
    for (const char c : block) {
        const auto byte = static_cast<unsigned char>(c);
        halfUnit_ = !halfUnit_;
        if (halfUnit_)
            firstByte_ = byte;
        else
            out =
                put(static_cast<char16_t>(bigEndian_ ? firstByte_ << 8 | byte : byte << 8 | firstByte_), out);
    }
    return static_cast<std::size_t>(out - begin);
}

std::size_t Utf16Decoder::finish(char* out) {
    if (!halfUnit_ && highSurrogate_ == 0) return 0;
    halfUnit_ = false;
    highSurrogate_ = 0;
    return static_cast<std::size_t>(putUtf8(kReplacement, out) - out);
}

std::string decodedText(std::string_view bytes, TextEncoding encoding) {
    bytes.remove_prefix(byteOrderMarkLength(bytes));
    if (encoding == TextEncoding::kBytes) return std::string(bytes);
    Utf16Decoder decoder(encoding);
    std::string text(Utf16Decoder::mostBytes(bytes.size()), '\0');
    std::size_t length = decoder.decode(bytes, text.data());
    length += decoder.finish(text.data() + length);
    text.resize(length);
    return text;
}

}  // namespace tessel
