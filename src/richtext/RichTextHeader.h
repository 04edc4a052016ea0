// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "richtext/RichTextFormats.h"

namespace tessel {

/// Reads the tables that stand before a document's text: of fonts and of colours. A table's entries end with
/// semicolons; an entry that makes no sense leaves the rest as it is, and a table takes no more entries than
/// any real document has.
class RichTextHeader {
  public:
    explicit RichTextHeader(RichTextTables& tables) : tables_(tables) {}

    void takeFontWord(const RichTextToken& word);
    void takeFontBytes(std::string_view bytes);
    void takeColourWord(const RichTextToken& word);
    void takeColourBytes(std::string_view bytes);

  private:
    void endFont();
    void endColour();

    RichTextTables& tables_;
    QString name_;  // of the font under way
    int fontNumber_ = 0;
    RichTextFont font_;
    int red_ = 0, green_ = 0, blue_ = 0;
    bool colourGiven_ = false;
};

}  // namespace tessel
