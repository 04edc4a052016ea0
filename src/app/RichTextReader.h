#pragma once

#include <QByteArrayView>

class QTextDocument;

/// Shows a rich text (RTF) file in a document, in place of what it held: text with its fonts, colours,
/// indents and tab stops, lists as their marks, tables, links, and PNG and JPEG pictures. What is not
/// known is passed over, and of a damaged file what can be read is shown: no bytes make it fail, and time
/// and memory are in proportion to their number.
///
/// False when the bytes are no rich text at all; the document then shows them as plain text.
bool readRichText(QByteArrayView rtf, QTextDocument& document);
