// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextHeader.h"

#include <algorithm>

namespace tessel {

namespace {

constexpr std::size_t kMostEntries = 4096;
constexpr qsizetype kLongestName = 256;

QFont::StyleHint kindOfWord(std::string_view word) {
    if (word == "fswiss") return QFont::SansSerif;
    if (word == "froman") return QFont::Serif;
    if (word == "fmodern") return QFont::Monospace;
    return QFont::AnyStyle;
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

void RichTextHeader::takeFontBytes(std::string_view bytes) {
    for (const char byte : bytes) {
        if (byte == ';')
            endFont();
        else if (name_.size() < kLongestName)
            name_ += QChar(decode(CodePage::kWestern, static_cast<unsigned char>(byte)));
    }
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

void RichTextHeader::takeColourBytes(std::string_view bytes) {
    for (const char byte : bytes)
        if (byte == ';') endColour();
}

void RichTextHeader::endColour() {
    if (static_cast<std::size_t>(tables_.colours.size()) < kMostEntries)
        tables_.colours << (colourGiven_ ? QColor(red_, green_, blue_) : QColor());
    red_ = green_ = blue_ = 0;
    colourGiven_ = false;
}

}  // namespace tessel
