// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "richtext/RichTextFormats.h"

#include <unordered_map>

namespace tessel {

/// Reads the tables that stand before a document's text: of fonts, of colours, and of styles, of which
/// only those of headings matter. A table's entries end with semicolons; an entry that makes no sense leaves
/// the rest as it is, and a table takes no more entries than any real document has.
class RichTextHeader {
  public:
    explicit RichTextHeader(RichTextTables& tables) : tables_(tables) {}

    void takeFontWord(const RichTextToken& word);
    void takeFontByte(unsigned char byte);
    void takeColourWord(const RichTextToken& word);
    void takeColourByte(unsigned char byte);
    void takeStyleWord(const RichTextToken& word);
    void takeStyleByte(unsigned char byte);

    /// Outline level of the style with that number, from 0; -1 when it is no heading.
    int outlineLevel(int style) const;

  private:
    void endFont();
    void endColour();
    void endStyle();

    RichTextTables& tables_;
    QString name_;  // of the entry under way
    int fontNumber_ = 0;
    RichTextFont font_;
    int red_ = 0, green_ = 0, blue_ = 0;
    bool colourGiven_ = false;
    int style_ = 0;
    int styleLevel_ = -1;
    std::unordered_map<int, int> outlineLevels_;
};

}  // namespace tessel
