// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextWriter.h"

#include <QImage>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr qsizetype kMostColumns = 64;
constexpr int kNarrowestColumn = 100;  // twips
constexpr int kPadding = 4;            // pixels
constexpr double kDistance = 12;       // pixels between a table and text below it
constexpr int kRoom = 120;             // twips that the padding takes of a column
const QColor kRule(0x90, 0x90, 0x90);

void insertRuns(QTextCursor& cursor, const auto& runs) {
    for (const auto& run : runs)
        cursor.insertText(run.text, run.format);
}

QTextTableCellFormat cellFormat(int lines, const QColor& background) {
    QTextTableCellFormat format;
    const auto style = [lines](int edge) {
        return (lines & edge) != 0 ? QTextFrameFormat::BorderStyle_Solid : QTextFrameFormat::BorderStyle_None;
    };
    const auto width = [lines](int edge) { return (lines & edge) != 0 ? 1.0 : 0.0; };
    format.setTopBorder(width(RichTextColumn::kTop));
    format.setTopBorderStyle(style(RichTextColumn::kTop));
    format.setLeftBorder(width(RichTextColumn::kLeft));
    format.setLeftBorderStyle(style(RichTextColumn::kLeft));
    format.setBottomBorder(width(RichTextColumn::kBottom));
    format.setBottomBorderStyle(style(RichTextColumn::kBottom));
    format.setRightBorder(width(RichTextColumn::kRight));
    format.setRightBorderStyle(style(RichTextColumn::kRight));
    format.setBorderBrush(kRule);
    if (background.isValid()) format.setBackground(background);
    return format;
}

// Columns from right edges: damaged ones, which do not rise, get a width of their own.
QList<int> columnWidths(const RichTextRow& row) {
    QList<int> widths;
    int left = row.left;
    for (const auto& column : row.columns) {
        widths << std::max(column.edge - left, kNarrowestColumn) + kRoom;
        left = std::max(column.edge, left);
    }
    return widths;
}

// The row's columns, made to fit the number of cells that it really has, with the cells that continue their
// left neighbour taken into it.
RichTextRow fitted(RichTextRow row, qsizetype cells) {
    constexpr int kUsualWidth = 1440;
    while (row.columns.size() > std::max<qsizetype>(cells, 1))
        row.columns.removeLast();
    while (row.columns.size() < cells) {
        const int left = row.columns.isEmpty() ? row.left : row.columns.constLast().edge;
        row.columns << RichTextColumn{std::min(left, 1 << 20) + kUsualWidth};
    }
    return row;
}

}  // namespace

RichTextWriter::RichTextWriter(QTextDocument& document) : document_(document), cursor_(&document) {}

void RichTextWriter::setTextWidth(int twips) {
    constexpr int kInch = 1440;
    textWidth_ = std::clamp(twips, 2 * kInch, 22 * kInch);
}

void RichTextWriter::appendText(const QString& text, const QTextCharFormat& format) {
    measure_.addRun(text, format.fontFamilies().toStringList());
    runs_ << Run{text, format};
}

void RichTextWriter::appendPicture(const QImage& image, QSizeF size) {
    const QString name = u"picture:%1"_s.arg(++pictures_);
    document_.addResource(QTextDocument::ImageResource, QUrl(name), image);
    QTextImageFormat format;
    format.setName(name);
    format.setWidth(size.width());
    format.setHeight(size.height());
    appendText(QString(QChar::ObjectReplacementCharacter), format);
}

RichTextWriter::Paragraph RichTextWriter::takeParagraph(const QTextBlockFormat& format,
                                                        const QTextCharFormat& characters) {
    measure_.endParagraph();
    return {format, characters, std::exchange(runs_, {})};
}

void RichTextWriter::endParagraph(const QTextBlockFormat& format, const QTextCharFormat& characters,
                                  bool inTable) {
    const auto paragraph = takeParagraph(format, characters);
    if (inTable || !cells_.isEmpty()) {
        cell_ << paragraph;
        return;
    }
    writeTable();
    write(paragraph);
}

void RichTextWriter::endCell(const QTextBlockFormat& format, const QTextCharFormat& characters) {
    // Some word processors end the cell's last paragraph before they end the cell.
    if (hasText() || cell_.isEmpty()) cell_ << takeParagraph(format, characters);
    auto cell = std::exchange(cell_, {});
    measure_.addCell();
    if (cells_.size() < kMostColumns)
        cells_ << cell;
    else
        cells_.last() << cell;
}

void RichTextWriter::endRow(const RichTextRow& given, const QList<QColor>& backgrounds) {
    if (hasText() || !cell_.isEmpty()) endCell({}, {});
    if (cells_.isEmpty()) return;
    const auto row = fitted(given, cells_.size());
    RichTextRow layout{row.left, {}};
    Row made;
    for (qsizetype i = 0; i < row.columns.size(); ++i) {
        const auto& column = row.columns[i];
        if (column.continues && !made.cells.isEmpty()) {
            made.cells.last() << cells_[i];
            layout.columns.last().edge = column.edge;
            continue;
        }
        made.cells << cells_[i];
        made.formats << cellFormat(column.lines, backgrounds.value(i));
        layout.columns << column;
    }
    if (!rows_.isEmpty() && !layout_.alike(layout)) writeTable();
    layout_ = layout;
    rows_ << made;
    cells_.clear();
}

void RichTextWriter::finish(const QTextBlockFormat& format) {
    if (!cells_.isEmpty() || !cell_.isEmpty()) endRow({}, {});
    writeTable();
    if (hasText()) write(takeParagraph(format, {}));
    if (freshBlock_) cursor_.setBlockFormat({});
}

void RichTextWriter::write(const Paragraph& paragraph) {
    if (isTooLarge()) return;
    // Text keeps its distance from the table above it, by the table's margin since Qt passes over the text's;
    // an empty paragraph is distance enough.
    if (tableAbove_ != nullptr && !paragraph.runs.isEmpty()) {
        auto format = tableAbove_->format();
        format.setBottomMargin(std::max(kDistance, paragraph.format.topMargin()));
        tableAbove_->setFormat(format);
    }
    if (freshBlock_) {
        cursor_.setBlockFormat(paragraph.format);
        cursor_.setBlockCharFormat(paragraph.characters);
    } else {
        cursor_.insertBlock(paragraph.format, paragraph.characters);
    }
    insertRuns(cursor_, paragraph.runs);
    freshBlock_ = false;
    tableAbove_ = nullptr;
}

void RichTextWriter::write(const Cell& paragraphs, QTextTableCellFormat format, QTextTableCell cell) {
    // A cell's own format is that of its first paragraph's end too.
    const double size = paragraphs.isEmpty() ? 0 : paragraphs.constFirst().characters.fontPointSize();
    if (size > 0) format.setFontPointSize(size);
    cell.setFormat(format);
    auto cursor = cell.firstCursorPosition();
    bool first = true;
    for (const auto& paragraph : paragraphs) {
        if (first)
            cursor.setBlockFormat(paragraph.format);
        else
            cursor.insertBlock(paragraph.format, paragraph.characters);
        insertRuns(cursor, paragraph.runs);
        first = false;
    }
}

void RichTextWriter::writeTable() {
    const auto rows = std::exchange(rows_, {});
    if (rows.isEmpty() || isTooLarge()) return;
    const auto columns = layout_.columns.size();
    auto* table =
        cursor_.insertTable(static_cast<int>(rows.size()), static_cast<int>(columns), tableFormat());
    for (int r = 0; r < table->rows(); ++r) {
        for (int c = 0; c < table->columns(); ++c)
            write(rows[r].cells[c], rows[r].formats[c], table->cellAt(r, c));
    }
    cursor_.movePosition(QTextCursor::End);
    freshBlock_ = true;
    tableAbove_ = table;
}

QTextTableFormat RichTextWriter::tableFormat() const {
    const auto widths = columnWidths(layout_);
    double total = 0;
    for (const int width : widths)
        total += width;
    QList<QTextLength> constraints;
    for (const int width : widths)
        constraints << QTextLength(QTextLength::PercentageLength, width * 100.0 / total);
    QTextTableFormat format;
    format.setBorderCollapse(true);
    format.setBorder(0);
    format.setCellSpacing(0);
    if (tableAbove_ == nullptr) format.setTopMargin(kPadding);
    format.setCellPadding(kPadding);
    format.setColumnWidthConstraints(constraints);
    format.setWidth(QTextLength(QTextLength::PercentageLength, std::min(100.0, total * 100.0 / textWidth_)));
    return format;
}

}  // namespace tessel
