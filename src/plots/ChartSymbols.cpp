// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ChartSymbols.h"

#include "base/palette16.h"
#include "base/whole_numbers.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace tessel {

namespace {

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& c) {
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

QPolygonF diamond(const QRectF& r) {
    return QPolygonF{{QPointF(r.center().x(), r.top()), QPointF(r.right(), r.center().y()),
                      QPointF(r.center().x(), r.bottom()), QPointF(r.left(), r.center().y())}};
}

void paintShape(QPainter& painter, const QRectF& box, ChartSymbol symbol) {
    if (symbol == ChartSymbol::kDisc || symbol == ChartSymbol::kRing) painter.drawEllipse(box);
    if (symbol == ChartSymbol::kSquare) painter.drawRect(box);
    if (symbol == ChartSymbol::kDiamond) painter.drawPolygon(diamond(box));
}

QRectF inset(const QRectF& box, double by) {
    return box.adjusted(by, by, -by, -by);
}

void paintRing(QPainter& painter, const QRectF& box, int colour) {
    const double width = box.width() * 2 / symbolSize(ChartSymbol::kRing);
    painter.setPen(QPen(lineColour(colour), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(inset(box, width / 2));
}

}  // namespace

QColor paletteColour(int number) {
    return QColor::fromRgb(kBasicPalette[static_cast<std::size_t>(number & 15)]);
}

bool needsOutline(int colour) {
    // Contrast with white below 2.2 : 1, as contrast is measured for text.
    return 1.05 / (luminance(paletteColour(colour)) + 0.05) < 2.2;
}

QColor lineColour(int colour) {
    return needsOutline(colour) ? paletteColour(colour).darker(190) : paletteColour(colour);
}

QColor chartInk() {
    return QColor(0x30, 0x30, 0x30);
}

double symbolSize(ChartSymbol symbol) {
    switch (symbol) {
        case ChartSymbol::kDisc:
            return 5;
        case ChartSymbol::kSquare:
            return 4;
        case ChartSymbol::kDiamond:
            return 7;
        case ChartSymbol::kRing:
            return 12;
        case ChartSymbol::kNone:
            break;
    }
    return 0;
}

void paintSymbol(QPainter& painter, const QRectF& box, ChartSymbol symbol, int colour) {
    if (symbol == ChartSymbol::kNone) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (symbol == ChartSymbol::kRing) {
        paintRing(painter, box, colour);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(needsOutline(colour) ? chartInk() : paletteColour(colour));
        paintShape(painter, box, symbol);
        if (needsOutline(colour)) {
            painter.setBrush(paletteColour(colour));
            paintShape(painter, inset(box, box.width() / symbolSize(symbol)), symbol);
        }
    }
    painter.restore();
}

const Stamp& StampCache::stamp(ChartSymbol symbol, int colour, SymbolEdges edges, double scale) {
    if (scale != scale_) stamps_.clear();
    scale_ = scale;
    const auto [entry, isNew] = stamps_.try_emplace({symbol, colour, edges});
    if (!isNew) return entry->second;
    const int size = std::max(1, nearestInt(symbolSize(symbol) * scale));
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintSymbol(painter, picture.rect(), symbol, colour);
    painter.end();
    const Stamp soft = pictureStamp(size, reinterpret_cast<const std::uint32_t*>(picture.constBits()));
    return entry->second = edges == SymbolEdges::kSoft ? soft : hardEdged(soft);
}

}  // namespace tessel
