// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ProgramTexts.h"

#include "support/temporary_folder.h"

namespace tessel {

namespace {

void addText(QSet<QString>& texts, QString text) {
    static const QRegularExpression kCut(u"\n|\r|%[0-9]|-> |[0-9]\\.  "_s);
    static const QRegularExpression kMnemonic(u"&(?=[^ &])"_s);
    for (QString& piece : text.remove(kMnemonic).split(kCut))
        if (const QString bare = piece.trimmed(); !bare.isEmpty()) texts << bare;
}

QString unescaped(const QString& literal) {
    QString text;
    for (qsizetype i = 0; i < literal.size(); ++i) {
        if (literal[i] != u'\\' || i + 1 == literal.size()) {
            text += literal[i];
            continue;
        }
        const QChar next = literal[++i];
        text += next == u'n' ? QChar(u'\n') : next == u'r' ? QChar(u'\r') : next;
    }
    return text;
}

// Comments, characters and included files are recognised so that what is quoted in them is passed over;
// string literals with nothing but blanks and comments between them are one text.
void addLiterals(QSet<QString>& texts, const QString& source) {
    static const QRegularExpression kToken(
        u"(//[^\n]*|/\\*.*?\\*/|#include[^\n]*)|'(?:[^'\\\\\n]|\\\\.)+'|(?:u8?|L)?\"((?:[^\"\\\\\n]|\\\\.)*)\"(?:_s|_L1|_ba)?|(\\s+)|[A-Za-z0-9_]+|."_s,
        QRegularExpression::DotMatchesEverythingOption);
    QString text;
    for (const QRegularExpressionMatch& token : kToken.globalMatch(source)) {
        if (token.hasCaptured(2))
            text += unescaped(token.captured(2));
        else if (!token.hasCaptured(1) && !token.hasCaptured(3))
            addText(texts, std::exchange(text, {}));
    }
    addText(texts, text);
}

void addStrings(QSet<QString>& texts, const QString& form) {
    QXmlStreamReader xml(form);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "string"_L1)
            addText(texts, xml.readElementText());
}

}  // namespace

QSet<QString> programTexts(const QString& folder) {
    QSet<QString> texts;
    QDirIterator files(folder, {u"*.cpp"_s, u"*.h"_s, u"*.ui"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString content = QString::fromStdString(readFile(path.toStdString()));
        path.endsWith(".ui"_L1) ? addStrings(texts, content) : addLiterals(texts, content);
    }
    return texts;
}

}  // namespace tessel
