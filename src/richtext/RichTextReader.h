// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>

class QTextDocument;

namespace tessel {

/// What has become of the bytes.
enum class RichTextResult {
    kRichText,   ///< the bytes were rich text, and are shown
    kPlainText,  ///< they were not, and are shown as they stand
    kTooLarge    ///< they are too large, and nothing is shown
};

/// Shows a rich text (RTF) file in a document, in place of what it held: text with its fonts, colours,
/// indents and tab stops, lists as their marks, tables, and PNG and JPEG pictures; a link is its text. What
/// is not known is passed over, and of a damaged file what can be read is shown: no bytes make it fail. The
/// margins of the document's page stay as they are.
///
/// Time and memory, also those that it takes to lay the document out, are in proportion to the number of
/// bytes: what would take more (RichTextMeasure.h) is not read, and the document is empty then.
RichTextResult readRichText(QByteArrayView rtf, QTextDocument& document);

}  // namespace tessel
