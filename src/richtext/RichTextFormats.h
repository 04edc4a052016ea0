// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "richtext/code_pages.h"
#include "richtext/rich_text_tokens.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QTextFormat>

#include <optional>
#include <unordered_map>

namespace tessel {

// What rich text says about characters and paragraphs, and what Qt's documents make of it. Lengths are in
// twips (1/1440 inch, 1/15 pixel of a page at 96 pixels an inch), sizes of type in half points.

/// How characters look.
struct RichTextCharacters {
    int font = -1;  ///< number in the font table; -1 is the document's default font
    int halfPoints = 24;
    int colour = 0;      ///< number in the colour table; 0 is the reader's own
    int background = 0;  ///< the same
    QTextCharFormat::UnderlineStyle underline = QTextCharFormat::NoUnderline;
    QTextCharFormat::VerticalAlignment position = QTextCharFormat::AlignNormal;
    QFont::Capitalization capitals = QFont::MixedCase;
    bool bold = false;
    bool italic = false;
    bool strike = false;
    bool hidden = false;

    bool operator==(const RichTextCharacters&) const = default;
};

/// How a paragraph is laid out.
struct RichTextParagraph {
    Qt::Alignment alignment = Qt::AlignLeft;
    int left = 0;
    int first = 0;  ///< of the first line, relative to `left`; negative for a hanging indent
    int right = 0;
    int before = 0;
    int after = 0;
    int lineHeight = 0;            ///< in 240ths of a line when proportional; 0 is the font's own
    bool proportional = false;     ///< else `lineHeight` is a length and not followed
    bool inTable = false;          ///< the paragraph belongs to a cell
    QList<QTextOption::Tab> tabs;  ///< positions in twips from the page's left edge

    QTextOption::TabType nextTab = QTextOption::LeftTab;
};

/// A font of the document: its name, what steps in where it is not installed, and its code page's number.
struct RichTextFont {
    QString family;
    QFont::StyleHint kind = QFont::AnyStyle;
    std::optional<int> characterSet;
};

/// Lets a control word act on the characters or the paragraph; false when it means something else or nothing.
bool apply(const RichTextToken& word, RichTextCharacters& characters);
bool apply(const RichTextToken& word, RichTextParagraph& paragraph);

/// The document's tables of fonts and colours, and the formats that refer to them. Numbers that no table
/// knows mean the default.
struct RichTextTables {
    std::unordered_map<int, RichTextFont> fonts;
    QList<QColor> colours;  ///< an invalid one is the reader's own
    int defaultFont = 0;
    CodePage codePage = CodePage::kWestern;

    const RichTextFont* fontOf(const RichTextCharacters& characters) const;
    CodePage codePageOf(const RichTextCharacters& characters) const;
    QColor colour(int number) const;
    QTextCharFormat format(const RichTextCharacters& characters) const;
};

/// Indents that would reach over the page's edge end there.
QTextBlockFormat blockFormat(const RichTextParagraph& paragraph);

/// Screen pixels at 96 an inch.
double pixels(int twips);

}  // namespace tessel
