// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// The bytes of a text in UTF-16.
inline std::string utf16(std::u16string_view text, bool bigEndian = false) {
    std::string bytes;
    for (const char16_t unit : text)
        for (const bool first : {true, false})
            bytes += static_cast<char>(first == bigEndian ? unit >> 8 : unit & 0xFF);
    return bytes;
}

}  // namespace tessel
