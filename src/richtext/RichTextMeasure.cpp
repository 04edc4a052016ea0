// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextMeasure.h"

#include <QTextBoundaryFinder>

namespace tessel {

namespace {

// What a run of its own adds to a word's length, and the lengths from which squares begin to count.
constexpr qint64 kCharactersOfRun = 4;
constexpr qint64 kLongParagraph = 1'000;
constexpr qint64 kPerPartOfWord = 2'500;
constexpr qint64 kPerPartOfTabs = 10'000;

bool isHangul(QChar character) {
    return character.script() == QChar::Script_Hangul;
}

// Korean is broken at blanks only, though its syllables could be parted.
bool lineMayEnd(const QString& text, qsizetype at) {
    return at == 0 || at == text.size() || !isHangul(text[at - 1]) || !isHangul(text[at]);
}

}  // namespace

void RichTextMeasure::addRun(const QString& text, const QStringList& families) {
    ++parts_;
    characters_ += text.size();
    if (!families.isEmpty() && !families_.contains(families)) {
        families_ << families;
        parts_ += kPartsOfFont;
    }
    runs_ << paragraph_.size();
    paragraph_ += text;
}

void RichTextMeasure::endParagraph() {
    ++parts_;
    if (!isTooLarge() && paragraph_.size() + kCharactersOfRun * runs_.size() > kLongParagraph) {
        const auto tabs = paragraph_.count(u'\t');
        parts_ += partsOfWords() + tabs * tabs / kPerPartOfTabs;
    }
    paragraph_.clear();
    runs_.clear();
}

// A word is what stands between two places where a line may end.
qint64 RichTextMeasure::partsOfWords() const {
    QTextBoundaryFinder places(QTextBoundaryFinder::Line, paragraph_);
    qint64 parts = 0;
    qsizetype from = 0, run = 0;
    for (auto to = places.toNextBoundary(); to >= 0; to = places.toNextBoundary()) {
        if (!lineMayEnd(paragraph_, to)) continue;
        qint64 length = to - from;
        for (; run < runs_.size() && runs_[run] < to; ++run)
            length += kCharactersOfRun;
        parts += length * length / kPerPartOfWord;
        from = to;
    }
    return parts;
}

}  // namespace tessel
