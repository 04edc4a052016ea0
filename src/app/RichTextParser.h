#pragma once

#include <string_view>

class QTextDocument;

/// Writes rich text at the end of a document, whatever the bytes are. Requires an empty document; leaves the
/// edit block and the undo history to its caller.
void parseRichText(std::string_view rtf, QTextDocument& document);
