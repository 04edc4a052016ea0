// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextFormats.h"

#include "base/whole_numbers.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// What is larger is damage, or is meant for paper.
constexpr int kWidestIndent = 7200;
constexpr int kLargestSpace = 2880;
constexpr int kSmallestSize = 4;
constexpr int kLargestSize = 288;
constexpr int kSingleLine = 240;

// Where the family is not installed, one of its kind steps in.
QStringList families(const RichTextFont& font) {
    switch (font.kind) {
        case QFont::SansSerif:
            return {font.family, u"sans-serif"_s};
        case QFont::Serif:
            return {font.family, u"serif"_s};
        case QFont::Monospace:
            return {font.family, u"monospace"_s};
        default:
            return {font.family};
    }
}

// Qt counts tab stops from where the first line begins, rich text from the page's edge.
QList<QTextOption::Tab> tabPositions(const RichTextParagraph& paragraph, int left, int first) {
    auto stops = paragraph.tabs;
    // The left indent is a tab stop of its own for what hangs before it.
    if (first < 0) stops << QTextOption::Tab(left, QTextOption::LeftTab);
    std::sort(stops.begin(), stops.end(),
              [](const auto& a, const auto& b) { return a.position < b.position; });
    QList<QTextOption::Tab> tabs;
    for (const auto& stop : stops) {
        const int distance = clampedInt(stop.position) - left - first;
        if (distance > 0) tabs << QTextOption::Tab(pixels(distance), stop.type);
    }
    return tabs;
}

}  // namespace

double pixels(int twips) {
    return twips / 15.0;
}

const RichTextFont* RichTextTables::fontOf(const RichTextCharacters& characters) const {
    const auto found = fonts.find(characters.font >= 0 ? characters.font : defaultFont);
    return found != fonts.end() ? &found->second : nullptr;
}

CodePage RichTextTables::codePageOf(const RichTextCharacters& characters) const {
    const auto* font = fontOf(characters);
    if (font == nullptr) return codePage;
    const auto named = codePageOfFont(font->characterSet.value_or(0), font->family.toStdString());
    return font->characterSet || isPictorial(named) ? named : codePage;
}

QColor RichTextTables::colour(int number) const {
    return colours.value(number);
}

QTextCharFormat RichTextTables::format(const RichTextCharacters& characters) const {
    QTextCharFormat format;
    format.setFontPointSize(std::clamp(characters.halfPoints, kSmallestSize, kLargestSize) / 2.0);
    const auto* font = fontOf(characters);
    if (font != nullptr && !font->family.isEmpty() && !isPictorial(codePageOf(characters)))
        format.setFontFamilies(families(*font));
    if (font != nullptr && font->kind != QFont::AnyStyle) format.setFontStyleHint(font->kind);
    if (characters.bold) format.setFontWeight(QFont::Bold);
    if (characters.italic) format.setFontItalic(true);
    if (characters.strike) format.setFontStrikeOut(true);
    if (characters.underline != QTextCharFormat::NoUnderline) format.setUnderlineStyle(characters.underline);
    if (characters.position != QTextCharFormat::AlignNormal) format.setVerticalAlignment(characters.position);
    if (characters.capitals != QFont::MixedCase) format.setFontCapitalization(characters.capitals);
    if (const auto ink = colour(characters.colour); ink.isValid()) format.setForeground(ink);
    if (const auto ground = colour(characters.background); ground.isValid()) format.setBackground(ground);
    return format;
}

QTextBlockFormat blockFormat(const RichTextParagraph& paragraph) {
    QTextBlockFormat format;
    const int left = std::clamp(paragraph.left, 0, kWidestIndent);
    const int first = std::clamp(paragraph.first, -left, kWidestIndent);
    format.setAlignment(paragraph.alignment);
    format.setLeftMargin(pixels(left));
    format.setTextIndent(pixels(first));
    format.setRightMargin(pixels(std::clamp(paragraph.right, 0, kWidestIndent)));
    format.setTopMargin(pixels(std::clamp(paragraph.before, 0, kLargestSpace)));
    format.setBottomMargin(pixels(std::clamp(paragraph.after, 0, kLargestSpace)));
    if (paragraph.proportional && paragraph.lineHeight > 0) {
        const int height = std::clamp(paragraph.lineHeight, kSingleLine / 2, kSingleLine * 4);
        format.setLineHeight(height * 100.0 / kSingleLine, QTextBlockFormat::ProportionalHeight);
    }
    const auto tabs = tabPositions(paragraph, left, first);
    if (!tabs.isEmpty()) format.setTabPositions(tabs);
    return format;
}

}  // namespace tessel
