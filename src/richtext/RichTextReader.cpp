// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextReader.h"

#include "richtext/RichTextMeasure.h"
#include "richtext/RichTextParser.h"
#include "richtext/code_pages.h"

#include <QStringDecoder>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// The bytes without the mark and the blanks that may stand before rich text.
std::string_view fromFirstGroup(std::string_view bytes) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
    bytes.remove_prefix(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
    return bytes;
}

// The bytes as UTF-8 if they are that, else as Windows 1252.
QString plainText(std::string_view bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    if (decoder.hasError()) {
        text.clear();
        for (const char byte : bytes)
            text += QChar(decode(CodePage::kWestern, static_cast<unsigned char>(byte)));
    }
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    for (QChar& character : text)
        if (character != u'\n') character = QChar(showable(character.unicode()));
    return text.remove(QChar(u'\0'));
}

bool isTooLarge(const QString& text) {
    RichTextMeasure measure;
    for (qsizetype from = 0; from <= text.size() && !measure.isTooLarge();) {
        const auto end = text.indexOf(u'\n', from);
        const auto to = end < 0 ? text.size() : end;
        measure.addRun(text.mid(from, to - from), {});
        measure.endParagraph();
        from = to + 1;
    }
    return measure.isTooLarge();
}

RichTextResult showPlainText(std::string_view bytes, QTextDocument& document) {
    const QString text = plainText(bytes);
    if (isTooLarge(text)) return RichTextResult::kTooLarge;
    QTextCursor(&document).insertText(text);
    return RichTextResult::kPlainText;
}

RichTextResult showRichText(std::string_view bytes, QTextDocument& document) {
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    QTextCursor edit(&document);
    edit.beginEditBlock();  // the page is laid out once, at the end
    const bool shown = parseRichText(bytes, document);
    if (!shown) {
        edit.select(QTextCursor::Document);
        edit.removeSelectedText();
    }
    edit.endEditBlock();
    document.setUndoRedoEnabled(undo);
    return shown ? RichTextResult::kRichText : RichTextResult::kTooLarge;
}

void clear(QTextDocument& document) {
    const auto page = document.rootFrame()->frameFormat();
    document.clear();
    document.rootFrame()->setFrameFormat(page);
}

}  // namespace

RichTextResult readRichText(QByteArrayView rtf, QTextDocument& document) {
    const std::string_view bytes(rtf.data(), static_cast<std::size_t>(rtf.size()));
    clear(document);
    const auto richText = fromFirstGroup(bytes);
    const bool isRichText = richText.starts_with("{\\rtf");
    const auto result = isRichText ? showRichText(richText, document) : showPlainText(bytes, document);
    if (result == RichTextResult::kTooLarge) clear(document);
    return result;
}

}  // namespace tessel
