// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextHeader.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr std::size_t kMostEntries = 4096;
constexpr qsizetype kLongestName = 256;

// Adds a character to a name; true when the name is complete.
bool takeName(QString& name, unsigned char byte) {
    if (byte == ';') return true;
    if (name.size() < kLongestName) name += QChar(decode(CodePage::kWestern, byte));
    return false;
}

QFont::StyleHint kindOfWord(std::string_view word) {
    if (word == "fswiss") return QFont::SansSerif;
    if (word == "froman") return QFont::Serif;
    if (word == "fmodern") return QFont::Monospace;
    return QFont::AnyStyle;
}

// The level of a style named "heading 1" and so on.
int levelOfName(const QString& name) {
    const auto prefix = u"heading "_s;
    if (!name.startsWith(prefix, Qt::CaseInsensitive)) return -1;
    const int level = name.mid(prefix.size()).toInt();
    return level >= 1 && level <= 9 ? level - 1 : -1;
}

}  // namespace

void RichTextHeader::takeFontWord(const RichTextToken& word) {
    if (word.text == "f") {
        font_ = {};
        name_.clear();
        fontNumber_ = word.number;
    } else if (word.text == "fcharset") {
        font_.characterSet = word.number;
    } else if (const auto kind = kindOfWord(word.text); kind != QFont::AnyStyle) {
        font_.kind = kind;
    }
}

void RichTextHeader::takeFontByte(unsigned char byte) {
    if (takeName(name_, byte)) endFont();
}

void RichTextHeader::endFont() {
    font_.family = name_.trimmed();
    name_.clear();
    if (tables_.fonts.size() < kMostEntries) tables_.fonts[fontNumber_] = font_;
}

void RichTextHeader::takeColourWord(const RichTextToken& word) {
    const int value = std::clamp(word.number, 0, 255);
    if (word.text == "red") red_ = value;
    if (word.text == "green") green_ = value;
    if (word.text == "blue") blue_ = value;
    colourGiven_ = colourGiven_ || word.text == "red" || word.text == "green" || word.text == "blue";
}

void RichTextHeader::takeColourByte(unsigned char byte) {
    if (byte == ';') endColour();
}

void RichTextHeader::endColour() {
    if (static_cast<std::size_t>(tables_.colours.size()) < kMostEntries)
        tables_.colours << (colourGiven_ ? QColor(red_, green_, blue_) : QColor());
    red_ = green_ = blue_ = 0;
    colourGiven_ = false;
}

void RichTextHeader::takeStyleWord(const RichTextToken& word) {
    if (word.text == "s") {
        style_ = word.number;
        styleLevel_ = -1;
        name_.clear();
    } else if (word.text == "outlinelevel") {
        styleLevel_ = word.number;
    }
}

void RichTextHeader::takeStyleByte(unsigned char byte) {
    if (takeName(name_, byte)) endStyle();
}

void RichTextHeader::endStyle() {
    const int level = styleLevel_ >= 0 ? styleLevel_ : levelOfName(name_.trimmed());
    name_.clear();
    if (level >= 0 && outlineLevels_.size() < kMostEntries) outlineLevels_[style_] = level;
    style_ = 0;
    styleLevel_ = -1;
}

int RichTextHeader::outlineLevel(int style) const {
    const auto found = outlineLevels_.find(style);
    return found != outlineLevels_.end() ? found->second : -1;
}

}  // namespace tessel
