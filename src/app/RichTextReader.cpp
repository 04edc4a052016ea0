#include "app/RichTextReader.h"

#include "app/RichTextParser.h"
#include "app/code_pages.h"

#include <QStringDecoder>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

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
    text.replace(u"\r\n"_s, u"\n"_s);
    for (QChar& character : text)
        if (character != u'\n' && character != u'\r') character = QChar(showable(character.unicode()));
    return text.remove(QChar(u'\0'));
}

}  // namespace

bool readRichText(QByteArrayView rtf, QTextDocument& document) {
    const std::string_view bytes(rtf.data(), static_cast<std::size_t>(rtf.size()));
    document.clear();
    const auto richText = fromFirstGroup(bytes);
    if (!richText.starts_with("{\\rtf")) {
        document.setPlainText(plainText(bytes));
        return false;
    }
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    QTextCursor edit(&document);
    edit.beginEditBlock();  // the page is laid out once, at the end
    parseRichText(richText, document);
    edit.endEditBlock();
    document.setUndoRedoEnabled(undo);
    return true;
}
