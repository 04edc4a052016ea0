// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/SeriesPainter.h"

#include "base/palette16.h"
#include "base/whole_numbers.h"
#include "drawing/PaperStrokes.h"
#include "drawing/Pixels.h"
#include "plots/PaperSymbols.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <new>
#include <numeric>

namespace tessel {

namespace {

/// A line of so many parts has several in each pixel column, so many symbols lie over each other, and
/// smoothing no longer shows.
constexpr std::size_t kDense = 1500;

constexpr double kPaperColumnsPerPixel = 4;

/// Of a picture among lines, in pixels to a pixel of 96 an inch.
constexpr double kPictureResolution = 3;

/// Room around the area for the width of a line.
constexpr double kOverhang = 2;

std::int64_t pointCount(const std::vector<IndexRange>& stretches) {
    return std::accumulate(stretches.begin(), stretches.end(), std::int64_t{0},
                           [](std::int64_t sum, const IndexRange& s) { return sum + s.count(); });
}

std::int64_t symbolCount(const std::vector<ChartSeries>& all, const PixelMap& map) {
    std::int64_t count = 0;
    for (const ChartSeries& series : all)
        if (series.style.symbol != ChartSymbol::kNone)
            count += pointCount(stretchesShown(series.points, map));
    return count;
}

void drawWhole(QPainter& painter, std::span<const PixelPoint> points) {
    QPolygonF polyline;
    for (const PixelPoint& p : points)
        polyline.append(QPointF(p.x, p.y));
    painter.drawPolyline(polyline);
}

/// The same way for the pixels of a display; what lies on the edge of the area belongs to it, whatever
/// rounding did to it.
PixelMap scaled(const PixelMap& map, double scale) {
    constexpr double kSlack = 1e-3;
    const auto side = [&](const Interval& i) {
        return Interval{i.from * scale, i.to * scale}.widened(kSlack);
    };
    return {{side(map.area.x), side(map.area.y)},
            map.xScale * scale,
            map.xShift * scale,
            map.yScale * scale,
            map.yShift * scale};
}

}  // namespace

void SeriesPainter::draw(QImage& picture, const std::vector<ChartSeries>& series, const PixelMap& map) {
    if (series.empty()) return;
    QPainter painter(&picture);
    // Lines end at the area anyway; with a clip they are drawn twice as fast.
    const Rectangle clip = map.area.widened(kOverhang);
    painter.setClipRect(QRectF(clip.x.from, clip.y.from, clip.width(), clip.height()));
    drawLines(painter, series, map, Medium::kScreen);
    painter.end();
    stampSymbols(picture, series, map, marks_);
}

void SeriesPainter::print(QPainter& painter, const std::vector<ChartSeries>& series, const PixelMap& map) {
    drawLines(painter, series, map, Medium::kPaper);
    const bool shaded = std::ranges::any_of(series, [](const ChartSeries& s) { return !s.shades.empty(); });
    if (symbolCount(series, map) > (shaded ? kMostColouredStrokes : kMostStrokes))
        printPicture(painter, series, map);
    else
        printSymbols(painter, series, map);
}

void SeriesPainter::printSymbols(QPainter& painter, const std::vector<ChartSeries>& all,
                                 const PixelMap& map) {
    PaperSymbols paper(painter, map);
    for (const ChartSeries& one : all)
        paper.draw(one);
}

// At the resolution of what it is painted on where that is a picture too.
void SeriesPainter::printPicture(QPainter& painter, const std::vector<ChartSeries>& all,
                                 const PixelMap& map) {
    constexpr int kSymbolReach = 8;
    const Rectangle area = map.area.widened(kSymbolReach);
    const bool onPixels = painter.paintEngine()->type() == QPaintEngine::Raster;
    const double resolution =
        onPixels ? painter.deviceTransform().m11()
                 : pictureResolution(kPictureResolution, QSizeF(area.width(), area.height()));
    const QRect place(QPoint(intBelow(area.x.from), intBelow(area.y.from)),
                      QPoint(intAbove(area.x.to), intAbove(area.y.to)));
    QImage picture(nearestSize(QSizeF(place.size()) * resolution), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull()) throw std::bad_alloc();
    picture.setDevicePixelRatio(resolution);
    picture.fill(Qt::transparent);
    PixelMap moved = map;
    moved.area = {map.area.x.startingAt(map.area.x.from - place.left()),
                  map.area.y.startingAt(map.area.y.from - place.top())};
    moved.xShift -= place.left();
    moved.yShift -= place.top();
    StampMarks marks;  // not those of the screen, which would keep the size of this picture
    stampSymbols(picture, all, moved, marks);
    painter.drawImage(QRectF(place.topLeft(), picture.deviceIndependentSize()), picture);
}

void SeriesPainter::drawLines(QPainter& painter, const std::vector<ChartSeries>& all, const PixelMap& map,
                              Medium medium) {
    const double columns =
        medium == Medium::kPaper ? kPaperColumnsPerPixel : painter.device()->devicePixelRatioF();
    for (const ChartSeries& series : all) {
        if (series.style.line == ChartLine::kNone) continue;
        lines_.clear();
        appendLines(series, map, columns, lines_);
        drawLine(painter, series.style.colour, medium);
    }
}

void SeriesPainter::drawLine(QPainter& painter, int colour, Medium medium) {
    painter.save();
    painter.setPen(QPen(lineColour(colour), 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    for (const IndexRange& piece : lines_.pieces) {
        const auto points =
            std::span(lines_.points).subspan(std::size_t(piece.first), std::size_t(piece.count()));
        // A level line is sharp without smoothing.
        const bool isLevel = std::all_of(points.begin(), points.end(),
                                         [&](const PixelPoint& p) { return p.y == points.front().y; });
        painter.setRenderHint(QPainter::Antialiasing, !isLevel);
        if (medium == Medium::kPaper)
            drawWhole(painter, points);
        else
            drawInParts(painter, points);
    }
    painter.restore();
}

/// Part by part, because the time to draw a wide line that crosses itself grows faster than its length.
void SeriesPainter::drawInParts(QPainter& painter, std::span<const PixelPoint> points) {
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
    painter.setPen(pen);
    const double scale = painter.device()->devicePixelRatioF();
    for (int i = 0; i < nearestInt(scale); ++i) {
        painter.drawLines(parts_);
        painter.translate(1 / scale, 0);
    }
    painter.restore();
}

void SeriesPainter::stampSymbols(QImage& picture, const std::vector<ChartSeries>& all, const PixelMap& map,
                                 StampMarks& marks) {
    const double scale = picture.devicePixelRatio();
    const Raster raster = rasterOf(picture);
    const PixelMap onRaster = scaled(map, scale);
    marks.reset(raster.width, raster.height);
    for (const ChartSeries& series : all) {
        if (series.style.symbol == ChartSymbol::kNone) continue;
        marks.nextSeries();
        const ChartPoints& points = series.points;
        const std::vector<IndexRange> shown = stretchesShown(points, map);
        const auto edges =
            pointCount(shown) <= std::int64_t{kDense} ? SymbolEdges::kSoft : SymbolEdges::kHard;
        const bool shaded = !series.shades.empty();
        const int colour = shaded ? int{kBlack} : series.style.colour;
        const Stamp& stamp = stamps_.stamp(series.style.symbol, colour, edges, scale);
        for (const IndexRange& stretch : shown) {
            const double* const x = points.x().data() + stretch.first;
            const double* const y = points.y().data() + stretch.first;
            const auto count = std::size_t(stretch.count());
            if (shaded)
                stampPoints(raster, onRaster, stamp, series.shades.data() + stretch.first, x, y, nullptr,
                            count, &marks);
            else
                stampPoints(raster, onRaster, stamp, x, y, nullptr, count, &marks);
        }
    }
}

}  // namespace tessel
