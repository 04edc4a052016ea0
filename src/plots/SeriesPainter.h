// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "drawing/point_raster.h"
#include "plots/ChartSymbols.h"
#include "plots/chart_geometry.h"

#include <QLineF>
#include <QList>

#include <span>
#include <vector>

class QImage;
class QPainter;

namespace tessel {

/// Draws series: first their lines, then their symbols. On the screen a symbol is a stamp written straight
/// into the picture, and a series writes a pixel only once, so that the cost of a million points is that of
/// reading them. On paper everything is a path, with places of a quarter of a pixel drawn only once.
class SeriesPainter {
  public:
    void draw(QImage& picture, const std::vector<ChartSeries>& series, const PixelMap& map);
    void print(QPainter& painter, const std::vector<ChartSeries>& series, const PixelMap& map);

  private:
    enum class Medium { kScreen, kPaper };
    void drawLines(QPainter& painter, const std::vector<ChartSeries>& all, const PixelMap& map,
                   Medium medium);
    void drawLine(QPainter& painter, int colour, Medium medium);
    void drawInParts(QPainter& painter, std::span<const PixelPoint> points);
    void stampSymbols(QImage& picture, const std::vector<ChartSeries>& all, const PixelMap& map);

    PixelLines lines_;
    QList<QLineF> parts_;
    StampMarks marks_;
    StampCache stamps_;
};

}  // namespace tessel
