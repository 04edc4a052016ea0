// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

class QTextDocument;

namespace tessel {

/// Writes rich text at the end of a document, whatever the bytes are. Requires an empty document; leaves the
/// edit block and the undo history to its caller. False when the text is too large to be laid out in time; a
/// part of it has been written then.
bool parseRichText(std::string_view rtf, QTextDocument& document);

}  // namespace tessel
