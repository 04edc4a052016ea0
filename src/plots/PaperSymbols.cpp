// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/PaperSymbols.h"

#include "base/whole_numbers.h"
#include "drawing/PaperStrokes.h"
#include "plots/ChartSymbols.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

constexpr double kPlacesPerPixel = 4;

std::uint32_t placeCount(double from, double to) {
    return static_cast<std::uint32_t>(intWithin((to - from) * kPlacesPerPixel)) + 2;
}

std::uint32_t placeOf(double pixel, double origin) {
    return static_cast<std::uint32_t>(intWithin(std::max(0.0, (pixel - origin) * kPlacesPerPixel + 0.5)));
}

}  // namespace

PaperSymbols::PaperSymbols(QPainter& painter, const PixelMap& map)
    : painter_(painter), map_(map), columns_(placeCount(map.area.x.from, map.area.x.to)) {
    taken_.resize(std::size_t{columns_} * placeCount(map.area.y.from, map.area.y.to));
}

void PaperSymbols::draw(const ChartSeries& series) {
    const ChartSymbol symbol = series.style.symbol;
    if (symbol == ChartSymbol::kNone) return;
    findPlaces(series);
    if (symbol == ChartSymbol::kRing) return drawRings(series);
    if (!series.shades.empty()) return drawShaded(series);
    const int colour = series.style.colour;
    const double size = symbolSize(symbol);
    strokePlaces(places_, symbol, size, needsOutline(colour) ? chartInk() : paletteColour(colour));
    if (needsOutline(colour)) strokePlaces(places_, symbol, size - 1.6, paletteColour(colour));
}

void PaperSymbols::findPlaces(const ChartSeries& series) {
    places_.clear();
    points_.clear();
    const std::span<const double> x = series.points.x();
    const std::span<const double> y = series.points.y();
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double px = map_.pixelX(x[i]);
        const double py = map_.pixelY(y[i]);
        if (!map_.area.contains(px, py) || isHole(x[i], y[i])) continue;
        const std::uint32_t column = placeOf(px, map_.area.x.from);
        const std::uint32_t row = placeOf(py, map_.area.y.from);
        if (!take(row * columns_ + column)) continue;
        places_.emplace_back(map_.area.x.from + column / kPlacesPerPixel,
                             map_.area.y.from + row / kPlacesPerPixel);
        points_.push_back(i);
    }
    for (const std::uint32_t place : takenPlaces_)
        taken_[place] = false;
    takenPlaces_.clear();
}

bool PaperSymbols::take(std::uint32_t place) {
    if (taken_[place]) return false;
    taken_[place] = true;
    takenPlaces_.push_back(place);
    return true;
}

void PaperSymbols::drawRings(const ChartSeries& series) {
    const double size = symbolSize(ChartSymbol::kRing);
    for (const QPointF& place : places_)
        paintSymbol(painter_, QRectF(place.x() - size / 2, place.y() - size / 2, size, size),
                    ChartSymbol::kRing, series.style.colour);
}

// From the last on: where symbols overlap the first is seen, as on the screen.
void PaperSymbols::drawShaded(const ChartSeries& series) {
    const auto shadeAt = [&](std::size_t place) { return series.shades[points_[place]]; };
    for (std::size_t end = places_.size(); end > 0;) {
        std::size_t first = end - 1;
        while (first > 0 && shadeAt(first - 1) == shadeAt(end - 1))
            --first;
        strokePlaces(std::span(places_).subspan(first, end - first), series.style.symbol,
                     symbolSize(series.style.symbol), QColor::fromRgb(colourMap()[shadeAt(first)]));
        end = first;
    }
}

void PaperSymbols::strokePlaces(std::span<const QPointF> places, ChartSymbol symbol, double size,
                                const QColor& colour) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    // A diamond is a square stroke on paper turned by 45 degrees; its size is its diagonal.
    const bool turned = symbol == ChartSymbol::kDiamond;
    const double width = turned ? size * std::sqrt(0.5) : size;
    painter_.setPen(
        QPen(colour, width, Qt::SolidLine, symbol == ChartSymbol::kDisc ? Qt::RoundCap : Qt::SquareCap));
    if (turned) painter_.rotate(45);
    QTransform back;
    if (turned) back.rotate(-45);
    std::vector<QPointF> moved(places.size());
    std::transform(places.begin(), places.end(), moved.begin(),
                   [&](const QPointF& p) { return back.map(p); });
    strokeDots(painter_, moved.data(), moved.size());
    painter_.restore();
}

}  // namespace tessel
