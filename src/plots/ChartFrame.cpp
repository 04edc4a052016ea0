// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ChartFrame.h"

#include "base/whole_numbers.h"
#include "drawing/Pixels.h"
#include "drawing/Surface.h"
#include "plots/ChartSymbols.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace tessel {

namespace {

constexpr int kMargin = 10;
constexpr int kHeaderPadding = 6;
constexpr int kFooterPadding = 4;
/// A chart on a smaller part of a page is drawn at this size and made smaller as a whole.
constexpr QSize kSmallestSheet{420, 280};

int lineHeight(const QFont& font) {
    return QFontMetrics(font).height();
}

}  // namespace

ChartFrame::Sheet ChartFrame::sheet(const QPainter& painter, const QRectF& target) {
    const QSizeF part = Surface::sheetSize(painter, target);
    const double grow =
        std::max({1.0, kSmallestSheet.width() / part.width(), kSmallestSheet.height() / part.height()});
    const QSize size = nearestSize(part * grow);
    return {size, target.width() / size.width(), target.height() / size.height()};
}

void ChartFrame::setFont(const QFont& font, int dotsPerInch) {
    dotsPerInch_ = dotsPerInch;
    textFont_ = font;
    if (font.pixelSize() <= 0)
        textFont_.setPixelSize(std::max(1, nearestInt(font.pointSizeF() * dotsPerInch / 72)));
    setHeaderFont(headerPointSize_, headerBold_);
}

void ChartFrame::setHeaderFont(double pointSize, bool bold) {
    headerPointSize_ = pointSize;
    headerBold_ = bold;
    headerFont_ = textFont_;
    headerFont_.setPixelSize(std::max(1, nearestInt(pointSize * dotsPerInch_ / 72)));
    headerFont_.setBold(bold);
}

QRect ChartFrame::headerRect(const QRect& whole) const {
    return {whole.left(), whole.top(), whole.width(), lineHeight(headerFont_) + 2 * kHeaderPadding};
}

QRect ChartFrame::footerRect(const QRect& whole) const {
    const int height = lineHeight(textFont_) + 2 * kFooterPadding;
    return {whole.left(), whole.bottom() + 1 - height, whole.width(), height};
}

QRect ChartFrame::plotRect(const QRect& whole) const {
    return whole.adjusted(1, headerRect(whole).height(), -kMargin, -footerRect(whole).height());
}

void ChartFrame::paint(QPainter& painter, const QRect& whole,
                       const std::array<std::vector<ChartSeries>, 2>& groups) const {
    painter.setPen(chartInk());
    const QRect top = headerRect(whole).adjusted(kMargin, 0, -kMargin, 0);
    painter.setFont(textFont_);
    const int names = paintNames(painter, top, groups);
    // Centred over the whole width unless the names need that room.
    painter.setFont(headerFont_);
    const QString header = headerFor(top.width() - names);
    const int width = QFontMetrics(headerFont_).horizontalAdvance(header);
    const bool fits = (top.width() - width) / 2 > names;
    const QRect box = fits ? top : top.adjusted(0, 0, -names, 0);
    painter.drawText(box, static_cast<int>(fits ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter),
                     QFontMetrics(headerFont_).elidedText(header, Qt::ElideRight, box.width()));
    const QRect bottom = footerRect(whole).adjusted(kMargin, 0, -kMargin, 0);
    painter.setFont(textFont_);
    painter.drawText(bottom, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     QFontMetrics(textFont_).elidedText(footer_, Qt::ElideRight, bottom.width()));
}

QString ChartFrame::headerFor(int width) const {
    const bool fits = QFontMetrics(headerFont_).horizontalAdvance(header_) <= width;
    return fits || shorterHeader_.isEmpty() ? header_ : shorterHeader_;
}

/// From the right end leftwards; returns the width that was used.
int ChartFrame::paintNames(QPainter& painter, const QRect& box,
                           const std::array<std::vector<ChartSeries>, 2>& groups) const {
    int used = 0;
    for (auto group = groups.rbegin(); group != groups.rend(); ++group)
        for (auto series = group->rbegin(); series != group->rend(); ++series)
            if (!series->name.empty()) used += paintName(painter, box.adjusted(0, 0, -used, 0), *series);
    return used;
}

int ChartFrame::paintName(QPainter& painter, const QRect& box, const ChartSeries& series) const {
    const QString name = QString::fromStdString(series.name);
    const int width = QFontMetrics(textFont_).horizontalAdvance(name);
    painter.drawText(box, static_cast<int>(Qt::AlignRight | Qt::AlignVCenter), name);
    const QPointF centre(box.right() - width - 14, box.center().y() + 0.5);
    if (series.style.line != ChartLine::kNone) {
        painter.save();
        painter.setPen(QPen(lineColour(series.style.colour), 1));
        painter.drawLine(centre - QPointF(9, 0), centre + QPointF(9, 0));
        painter.restore();
    }
    const double size = symbolSize(series.style.symbol);
    paintSymbol(painter, QRectF(centre.x() - size / 2, centre.y() - size / 2, size, size),
                series.style.symbol, series.style.colour);
    return width + 14 + 22;
}

}  // namespace tessel
