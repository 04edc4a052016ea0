// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_purpose.h"

#include <unordered_map>

namespace tessel {

namespace {

// Groups whose first word says what they are for; all others are part of what stands around them.
const std::unordered_map<std::string_view, RichTextPurpose>& purposes() {
    static const std::unordered_map<std::string_view, RichTextPurpose> words = {
        {"fonttbl", RichTextPurpose::kFonts},
        {"colortbl", RichTextPurpose::kColours},
        {"stylesheet", RichTextPurpose::kStyles},
        {"pict", RichTextPurpose::kPicture},
        // Known, though optional.
        {"shppict", RichTextPurpose::kBody},
        {"shpinst", RichTextPurpose::kBody},
        {"pntext", RichTextPurpose::kBody},
        {"listtext", RichTextPurpose::kBody},
        // Not part of the text, though not optional.
        {"info", RichTextPurpose::kSkipped},
        {"header", RichTextPurpose::kSkipped},
        {"headerl", RichTextPurpose::kSkipped},
        {"headerr", RichTextPurpose::kSkipped},
        {"headerf", RichTextPurpose::kSkipped},
        {"footer", RichTextPurpose::kSkipped},
        {"footerl", RichTextPurpose::kSkipped},
        {"footerr", RichTextPurpose::kSkipped},
        {"footerf", RichTextPurpose::kSkipped},
        {"fldinst", RichTextPurpose::kSkipped},
        {"footnote", RichTextPurpose::kSkipped},
        {"annotation", RichTextPurpose::kSkipped},
        {"listtable", RichTextPurpose::kSkipped},
        {"listoverridetable", RichTextPurpose::kSkipped},
        {"revtbl", RichTextPurpose::kSkipped},
        {"filetbl", RichTextPurpose::kSkipped},
        {"nonshppict", RichTextPurpose::kSkipped},
        {"nonesttables", RichTextPurpose::kSkipped},
        {"objdata", RichTextPurpose::kSkipped},
        {"pntxta", RichTextPurpose::kSkipped},
        {"pntxtb", RichTextPurpose::kSkipped},
        {"shprslt", RichTextPurpose::kSkipped},
        {"sp", RichTextPurpose::kSkipped},
        {"tc", RichTextPurpose::kSkipped},
        {"xe", RichTextPurpose::kSkipped},
    };
    return words;
}

}  // namespace

std::optional<RichTextPurpose> purposeOfWord(std::string_view word) {
    const auto found = purposes().find(word);
    return found != purposes().end() ? std::optional(found->second) : std::nullopt;
}

bool endsDamagedTable(RichTextPurpose table, std::string_view word) {
    // A style may begin with \pard; a font or a colour does not, and none of them ends a paragraph.
    const bool fontsOrColours = table == RichTextPurpose::kFonts || table == RichTextPurpose::kColours;
    return (fontsOrColours && word == "pard") ||
           ((fontsOrColours || table == RichTextPurpose::kStyles) && word == "par");
}

}  // namespace tessel
