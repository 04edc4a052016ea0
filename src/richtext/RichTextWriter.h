// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "richtext/RichTextMeasure.h"
#include "richtext/RichTextRow.h"

#include <QList>
#include <QString>
#include <QTextCursor>
#include <QTextFormat>

class QTextDocument;
class QTextTable;
class QTextTableCell;
class QImage;

namespace tessel {

/// Writes paragraphs, pictures and tables at the end of a document. A paragraph of the text is written when
/// it ends; the paragraphs of a table are kept until the table ends, when its columns and rows are known.
/// Memory and time are in proportion to what was given; what is given is measured, and once it is too large
/// to be laid out in time, what follows is not written.
class RichTextWriter {
  public:
    /// `textWidth` is that of the page in twips; tables take their part of it.
    explicit RichTextWriter(QTextDocument& document);

    void setTextWidth(int twips);

    /// Adds to the paragraph under way.
    void appendText(const QString& text, const QTextCharFormat& format);
    void appendPicture(const QImage& image, QSizeF size);

    /// Ends the paragraph under way, which belongs to a cell when `inTable` or when cells of the row stand
    /// already.
    void endParagraph(const QTextBlockFormat& format, const QTextCharFormat& characters, bool inTable);
    void endCell(const QTextBlockFormat& format, const QTextCharFormat& characters);
    /// `backgrounds` holds the colour of each column of the row.
    void endRow(const RichTextRow& row, const QList<QColor>& backgrounds);
    /// Writes what is still under way.
    void finish(const QTextBlockFormat& format);

    bool hasText() const { return !runs_.isEmpty(); }
    bool isTooLarge() const { return measure_.isTooLarge(); }

  private:
    struct Run {
        QString text;
        QTextCharFormat format;
    };
    struct Paragraph {
        QTextBlockFormat format;
        QTextCharFormat characters;
        QList<Run> runs;
    };
    using Cell = QList<Paragraph>;
    struct Row {
        QList<Cell> cells;
        QList<QTextTableCellFormat> formats;
    };

    Paragraph takeParagraph(const QTextBlockFormat& format, const QTextCharFormat& characters);
    void write(const Paragraph& paragraph);
    static void write(const Cell& paragraphs, QTextTableCellFormat format, QTextTableCell cell);
    void writeTable();
    QTextTableFormat tableFormat() const;

    QTextDocument& document_;
    QTextCursor cursor_;
    RichTextMeasure measure_;
    bool freshBlock_ = true;            // the block at the document's end is still to be filled
    QTextTable* tableAbove_ = nullptr;  // nothing stands between it and the document's end
    int textWidth_ = 8640;
    int pictures_ = 0;
    QList<Run> runs_;     // of the paragraph under way
    Cell cell_;           // under way
    QList<Cell> cells_;   // of the row under way
    RichTextRow layout_;  // of the table under way
    QList<Row> rows_;
};

}  // namespace tessel
