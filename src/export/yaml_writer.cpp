// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/yaml_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tessel {

namespace {

constexpr std::size_t kWidth = 100;

// A character of a text and how many bytes it takes; none for a byte that begins no character.
struct Character {
    char32_t code = 0;
    std::size_t bytes = 0;
};

std::size_t bytesOfCharacter(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

// Longer than it need be, half of a pair, or beyond the last one.
bool isNoCharacter(char32_t code, std::size_t bytes) {
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    return code < kSmallest[bytes] || (code >= 0xD800 && code < 0xE000) || code > 0x10FFFF;
}

Character characterAt(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t bytes = bytesOfCharacter(first);
    if (bytes == 0 || bytes > text.size()) return {};
    if (bytes == 1) return {first, 1};
    char32_t code = first & (0xFFU >> (bytes + 1));
    for (const char c : text.substr(1, bytes - 1)) {
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) return {};
        code = code << 6 | (static_cast<unsigned char>(c) & 0x3FU);
    }
    return isNoCharacter(code, bytes) ? Character{} : Character{code, bytes};
}

// Controls, what breaks or turns a line or has no width, and what is no character by definition.
bool isHidden(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code <= 0xA0) || code == 0xAD ||
           (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2060 && code <= 0x206F) || code == 0xFEFF || (code >= 0xFDD0 && code <= 0xFDEF) ||
           (code & 0xFFFE) == 0xFFFE;
}

std::string hexDigits(char32_t value, int digits) {
    std::string text;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += "0123456789ABCDEF"[value >> shift & 0xF];
    return text;
}

std::string escaped(char32_t code) {
    if (code == '\n') return "\\n";
    if (code == '\t') return "\\t";
    if (code < 0x100) return "\\x" + hexDigits(code, 2);
    return code < 0x10000 ? "\\u" + hexDigits(code, 4) : "\\U" + hexDigits(code, 8);
}

// A byte as a reader of the document sees it: "\xFC".
std::string byteInWords(char byte) {
    return "\\\\x" + hexDigits(static_cast<unsigned char>(byte), 2);
}

// The shortest digits that give the number back. YAML 1.1 wants a point where there is an exponent.
std::string digitsOf(double value) {
    if (!std::isfinite(value)) return std::isnan(value) ? ".nan" : value < 0 ? "-.inf" : ".inf";
    const bool isPlain = value == 0 || (std::abs(value) >= 1e-5 && std::abs(value) < 1e15);
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    std::string digits(buffer.data(), end.ptr);
    const std::size_t exponent = digits.find('e');
    if (exponent != std::string::npos && digits.find('.') == std::string::npos) digits.insert(exponent, ".0");
    return digits;
}

}  // namespace

std::size_t characterLength(std::string_view text) {
    return characterAt(text).bytes;
}

std::string YamlWriter::quoted(std::string_view text) {
    std::string out = "\"";
    while (!text.empty()) {
        const Character character = characterAt(text);
        const std::size_t taken = std::max<std::size_t>(character.bytes, 1);
        if (character.bytes == 0 || character.code == '\\')
            out += byteInWords(text.front());
        else if (isHidden(character.code))
            out += escaped(character.code);
        else
            out.append(character.code == '"' ? "\\" : "").append(text.substr(0, taken));
        text.remove_prefix(taken);
    }
    return out + '"';
}

std::string& YamlWriter::begin(std::string_view key) {
    text_.append(2 * (depth_ - firstOfItem_), ' ').append(firstOfItem_ ? "- " : "");
    firstOfItem_ = false;
    return text_.append(key) += ':';
}

void YamlWriter::comment(std::string_view text) {
    text_.append(2 * depth_, ' ').append("# ").append(text) += '\n';
}

void YamlWriter::text(std::string_view key, std::string_view value) {
    plain(key, quoted(value));
}

void YamlWriter::number(std::string_view key, std::int64_t value) {
    plain(key, std::to_string(value));
}

void YamlWriter::number(std::string_view key, double value) {
    plain(key, digitsOf(value));
}

void YamlWriter::plain(std::string_view key, std::string_view value) {
    begin(key).append(" ").append(value) += '\n';
}

void YamlWriter::runs(std::string_view key, std::span<const NumberRun> runs) {
    begin(key) += " [";
    std::size_t line = text_.rfind('\n') + 1;
    for (const NumberRun& run : runs) {
        const std::string pair = '[' + digitsOf(run.first) + ", " + digitsOf(run.last) + ']';
        const bool isFirst = &run == runs.data();
        if (!isFirst) text_ += ',';
        if (text_.size() - line + pair.size() + 2 > kWidth) {
            text_ += '\n';
            line = text_.size();
            text_.append(2 * depth_ + 2, ' ');
        } else if (!isFirst) {
            text_ += ' ';
        }
        text_ += pair;
    }
    text_ += "]\n";
}

}  // namespace tessel
