// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_purpose.h"

#include <unordered_map>

namespace tessel {

namespace {

// Groups whose first word says what they are for; all others are part of what stands around them.
const std::unordered_map<std::string_view, RichTextPurpose>& purposes() {
    static const std::unordered_map<std::string_view, RichTextPurpose> words = {
        {"fonttbl", RichTextPurpose::Fonts},
        {"colortbl", RichTextPurpose::Colours},
        {"stylesheet", RichTextPurpose::Styles},
        {"pict", RichTextPurpose::Picture},
        // Known, though optional.
        {"shppict", RichTextPurpose::Body},
        {"shpinst", RichTextPurpose::Body},
        {"pntext", RichTextPurpose::Body},
        {"listtext", RichTextPurpose::Body},
        // Not part of the text, though not optional.
        {"info", RichTextPurpose::Skipped},
        {"header", RichTextPurpose::Skipped},
        {"headerl", RichTextPurpose::Skipped},
        {"headerr", RichTextPurpose::Skipped},
        {"headerf", RichTextPurpose::Skipped},
        {"footer", RichTextPurpose::Skipped},
        {"footerl", RichTextPurpose::Skipped},
        {"footerr", RichTextPurpose::Skipped},
        {"footerf", RichTextPurpose::Skipped},
        {"fldinst", RichTextPurpose::Skipped},
        {"footnote", RichTextPurpose::Skipped},
        {"annotation", RichTextPurpose::Skipped},
        {"listtable", RichTextPurpose::Skipped},
        {"listoverridetable", RichTextPurpose::Skipped},
        {"revtbl", RichTextPurpose::Skipped},
        {"filetbl", RichTextPurpose::Skipped},
        {"nonshppict", RichTextPurpose::Skipped},
        {"nonesttables", RichTextPurpose::Skipped},
        {"objdata", RichTextPurpose::Skipped},
        {"pntxta", RichTextPurpose::Skipped},
        {"pntxtb", RichTextPurpose::Skipped},
        {"shprslt", RichTextPurpose::Skipped},
        {"sp", RichTextPurpose::Skipped},
        {"tc", RichTextPurpose::Skipped},
        {"xe", RichTextPurpose::Skipped},
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
    const bool fontsOrColours = table == RichTextPurpose::Fonts || table == RichTextPurpose::Colours;
    return (fontsOrColours && word == "pard") ||
           ((fontsOrColours || table == RichTextPurpose::Styles) && word == "par");
}

}  // namespace tessel
