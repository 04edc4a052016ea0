// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "richtext/rich_text_tokens.h"

#include <QList>

namespace tessel {

/// One column of a table as a row defines it. Lengths are in twips.
struct RichTextColumn {
    /// The edges of a cell, as bits of `lines`.
    enum Edge { kTop = 1, kLeft = 2, kBottom = 4, kRight = 8 };
    int edge = 0;            ///< the right edge, from the text's left edge
    int lines = 0;           ///< which edges are drawn
    int background = 0;      ///< number in the colour table
    bool continues = false;  ///< the cell is one with that on its left
};

/// How a row is laid out.
struct RichTextRow {
    int left = 0;
    QList<RichTextColumn> columns;

    /// Rows whose columns stand at the same places form one table.
    bool alike(const RichTextRow& other) const;
};

/// The definition of rows, word by word. It holds for every row until the next one begins.
class RichTextRowDefinition {
  public:
    /// False when the word means something else or nothing.
    bool apply(const RichTextToken& word);
    const RichTextRow& row() const { return row_; }

  private:
    bool applyToEdges(const RichTextToken& word);
    void addColumn(int edge);
    void draw(bool drawn);

    RichTextRow row_;
    RichTextColumn next_;
    int rowLines_ = 0;       // drawn around every cell of the row
    int chosenEdges_ = 0;    // those that the next line style is for
    bool wholeRow_ = false;  // and whether it is for every cell
};

}  // namespace tessel
