// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/chart_geometry.h"

#include <QColor>
#include <QPointF>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

class QPainter;

namespace tessel {

/// Draws the symbols of series for paper: as strokes of no length with a round or square pen, a few bytes a
/// symbol, at places of a quarter of a pixel that a series uses only once. Shaded ones are drawn shade by
/// shade.
class PaperSymbols {
  public:
    PaperSymbols(QPainter& painter, const PixelMap& map);
    void draw(const ChartSeries& series);

  private:
    void findPlaces(const ChartSeries& series);
    bool take(std::uint32_t place);
    void drawRings(const ChartSeries& series);
    void drawShaded(const ChartSeries& series);
    void strokePlaces(std::span<const QPointF> places, ChartSymbol symbol, double size, const QColor& colour);

    QPainter& painter_;
    PixelMap map_;
    std::uint32_t columns_;
    std::vector<bool> taken_;
    std::vector<std::uint32_t> takenPlaces_;
    std::vector<QPointF> places_;
    std::vector<std::size_t> points_;  ///< of the series, one at each place
};

}  // namespace tessel
