// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/ShownText.h"

#include <QStringDecoder>

namespace tessel {

namespace {

QString decoded(const std::string& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return utf8.hasError() ? QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size())) : text;
}

QChar harmless(QChar character) {
    if (character == u'\n') return character;
    if (character == u'\t') return u' ';
    switch (character.category()) {
        case QChar::Other_Control:
        case QChar::Other_Format:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return QChar::ReplacementCharacter;
        default:
            return character;
    }
}

}  // namespace

QString shownText(const std::string& bytes) {
    QString text = decoded(bytes);
    for (QChar& character : text)
        character = harmless(character);
    return text;
}

}  // namespace tessel
