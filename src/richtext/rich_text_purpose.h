// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

namespace tessel {

/// What the text of a group is for.
enum class RichTextPurpose { kBody, kFonts, kColours, kStyles, kPicture, kSkipped };

/// The purpose of a group that begins with this word; nothing for a group that is part of what stands around
/// it.
std::optional<RichTextPurpose> purposeOfWord(std::string_view word);

/// Whether the word shows that the end of the table it stands in is damaged: what follows can only be text.
bool endsDamagedTable(RichTextPurpose table, std::string_view word);

}  // namespace tessel
