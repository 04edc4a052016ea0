// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "drawing/point_raster.h"
#include "plots/ChartSymbols.h"
#include "plots/chart_geometry.h"

#include <QLineF>
#include <QList>

#include <cstdint>
#include <span>
#include <vector>

class QImage;
class QPainter;

namespace tessel {

/// Draws series: first their lines, then their symbols. On the screen a symbol is a stamp written straight
/// into the picture, and a series writes a pixel only once, so that the cost of a million points is that of
/// reading them. On paper everything is a path, with places of a quarter of a pixel drawn only once; but of
/// more than kMostStrokes symbols (or, each with its colour, kMostColouredStrokes) there is a fine picture in
/// their place, as a file of strokes would be large and slow.
class SeriesPainter {
  public:
    static constexpr std::int64_t kMostStrokes = 50000;
    static constexpr std::int64_t kMostColouredStrokes = 20000;

    void draw(QImage& picture, const std::vector<ChartSeries>& series, const PixelMap& map);
    void print(QPainter& painter, const std::vector<ChartSeries>& series, const PixelMap& map);

  private:
    enum class Medium { kScreen, kPaper };
    void drawLines(QPainter& painter, const std::vector<ChartSeries>& all, const PixelMap& map,
                   Medium medium);
    void drawLine(QPainter& painter, int colour, Medium medium);
    void drawInParts(QPainter& painter, std::span<const PixelPoint> points);
    void printSymbols(QPainter& painter, const std::vector<ChartSeries>& all, const PixelMap& map);
    void printPicture(QPainter& painter, const std::vector<ChartSeries>& all, const PixelMap& map);
    void stampSymbols(QImage& picture, const std::vector<ChartSeries>& all, const PixelMap& map,
                      StampMarks& marks);

    PixelLines lines_;
    QList<QLineF> parts_;
    StampMarks marks_;
    StampCache stamps_;
};

}  // namespace tessel
