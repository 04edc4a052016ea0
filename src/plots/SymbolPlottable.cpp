// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/SymbolPlottable.h"

#include "base/whole_numbers.h"
#include "plots/PaperSymbols.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessel {

namespace {

/// Symbols on the edge of the plot area are drawn whole.
constexpr int kOverhang = 7;

/// A line of so many parts has several in each pixel column, so many symbols lie over each other, and
/// smoothing no longer shows.
constexpr std::size_t kDense = 1500;

bool isPaper(const QCPPainter& painter) {
    return painter.modes().testFlag(QCPPainter::pmVectorized);
}

std::size_t pointCount(const std::vector<PointStretch>& stretches) {
    return std::accumulate(stretches.begin(), stretches.end(), std::size_t{0},
                           [](std::size_t sum, const PointStretch& s) { return sum + (s.last - s.first); });
}

AxisView viewOf(const QCPAxis& axis) {
    return {axis.range().lower, axis.range().upper, axis.rangeReversed()};
}

}  // namespace

SymbolPlottable::SymbolPlottable(QCPAxis* xAxis, QCPAxis* yAxis, const std::vector<ChartSeries>& series)
    : QCPAbstractPlottable(xAxis, yAxis), series_(series) {}

PixelMap SymbolPlottable::map() const {
    const QRect area = mKeyAxis->axisRect()->rect();
    const double width = std::max(1, area.width());
    const double height = std::max(1, area.height());
    const PixelRect rect{double(area.left()), double(area.top()), area.left() + width, area.top() + height};
    return pixelMap(rect, viewOf(*mKeyAxis), viewOf(*mValueAxis));
}

double SymbolPlottable::selectTest(const QPointF&, bool, QVariant*) const {
    return -1;
}

QCPRange SymbolPlottable::getKeyRange(bool& found, QCP::SignDomain) const {
    found = false;
    return {};
}

QCPRange SymbolPlottable::getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const {
    found = false;
    return {};
}

QRect SymbolPlottable::clipRect() const {
    return mKeyAxis->axisRect()->rect().adjusted(-kOverhang, -kOverhang, kOverhang, kOverhang);
}

void SymbolPlottable::draw(QCPPainter* painter) {
    if (mKeyAxis->axisRect()->rect().isEmpty()) return;
    // On the screen this also takes back the half pixel by which the library moves what it smooths.
    painter->setAntialiasing(false);
    const PixelMap pixels = map();
    const double scale = isPaper(*painter) ? 4 : painter->device()->devicePixelRatioF();
    drawLines(*painter, pixels, scale);
    if (isPaper(*painter))
        printSymbols(*painter, pixels);
    else
        stampSymbols(*painter, pixels);
}

void SymbolPlottable::drawLegendIcon(QCPPainter*, const QRectF&) const {}

void SymbolPlottable::drawLines(QCPPainter& painter, const PixelMap& pixels, double columnsPerPixel) {
    for (const ChartSeries& series : series_) {
        if (series.style.line == ChartLine::None) continue;
        lines_.clear();
        appendLines(series, pixels, columnsPerPixel, lines_);
        drawLine(painter, series);
    }
}

void SymbolPlottable::drawLine(QCPPainter& painter, const ChartSeries& series) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(lineColour(series.style.colour), 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    for (const PixelLines::Piece& piece : lines_.pieces) {
        const std::span points(lines_.points.data() + piece.begin, piece.end - piece.begin);
        // A level line is sharp without smoothing.
        const bool isLevel = std::all_of(points.begin(), points.end(),
                                         [&](const PixelPoint& p) { return p.y == points.front().y; });
        painter.setRenderHint(QPainter::Antialiasing, !isLevel);
        if (isPaper(painter))
            drawWhole(painter, points);
        else
            drawInParts(painter, points);
    }
}

void SymbolPlottable::drawWhole(QCPPainter& painter, std::span<const PixelPoint> points) {
    QPolygonF polyline;
    for (const PixelPoint& p : points)
        polyline.append(QPointF(p.x, p.y));
    painter.drawPolyline(polyline);
}

/// Part by part, because the time to draw a wide line that crosses itself grows faster than its length.
void SymbolPlottable::drawInParts(QCPPainter& painter, std::span<const PixelPoint> points) {
    parts_.clear();
    for (std::size_t i = 1; i < points.size(); ++i)
        parts_.append(QLineF(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y));
    if (points.size() <= kDense) return painter.drawLines(parts_);
    // Strokes one device pixel wide and unsmoothed are drawn many times faster; side by side they get the
    // width of the others.
    QPen pen = painter.pen();
    pen.setCosmetic(true);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    static_cast<QPainter&>(painter).setPen(pen);
    const double scale = painter.device()->devicePixelRatioF();
    for (int i = 0; i < nearestInt(scale); ++i) {
        painter.drawLines(parts_);
        painter.translate(1 / scale, 0);
    }
    painter.restore();
}

void SymbolPlottable::stampSymbols(QCPPainter& painter, const PixelMap& pixels) {
    const double scale = painter.device()->devicePixelRatioF();
    const QRect clip = clipRect();
    // The picture covers whole device pixels, so that it is laid down without being resampled.
    const QPoint corner(intBelow(clip.left() * scale), intBelow(clip.top() * scale));
    const QSize size(intAbove(clip.width() * scale) + 1, intAbove(clip.height() * scale) + 1);
    if (picture_.size() != size) picture_ = QImage(size, QImage::Format_ARGB32_Premultiplied);
    picture_.fill(Qt::transparent);
    marks_.reset(size.width(), size.height());
    const Raster raster{reinterpret_cast<std::uint32_t*>(picture_.bits()), size.width(), size.height(),
                        picture_.bytesPerLine() / 4};
    const auto x = [&](double pixel) { return pixel * scale - corner.x(); };
    const auto y = [&](double pixel) { return pixel * scale - corner.y(); };
    const double slack = 1e-3;
    const RasterMap map{pixels.xScale * scale,        x(pixels.xShift),
                        pixels.yScale * scale,        y(pixels.yShift),
                        x(pixels.area.left) - slack,  y(pixels.area.top) - slack,
                        x(pixels.area.right) + slack, y(pixels.area.bottom) + slack};
    for (const ChartSeries& series : series_) {
        if (series.style.symbol == ChartSymbol::None) continue;
        marks_.nextSeries();
        const ChartPoints& points = series.points;
        const std::vector<PointStretch> shown = stretchesShown(points, pixels);
        const auto edges = pointCount(shown) <= kDense ? SymbolEdges::Soft : SymbolEdges::Hard;
        const Stamp& stamp = stamps_.stamp(series.style.symbol, series.style.colour, edges, scale);
        for (const auto& [first, last] : shown)
            stampPoints(raster, map, stamp, points.x().data() + first, points.y().data() + first, nullptr,
                        last - first, &marks_);
    }
    painter.save();
    painter.scale(1 / scale, 1 / scale);
    painter.drawImage(corner, picture_);
    painter.restore();
}

void SymbolPlottable::printSymbols(QCPPainter& painter, const PixelMap& pixels) {
    PaperSymbols paper(painter, pixels);
    for (const ChartSeries& series : series_)
        paper.draw(series);
}

}  // namespace tessel
