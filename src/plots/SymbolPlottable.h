// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/ChartSymbols.h"
#include "plots/CustomPlot.h"
#include "plots/chart_geometry.h"

#include <QImage>
#include <QLineF>

#include <span>
#include <vector>

namespace tessel {

/// Draws all series of one chart group: first their lines, then their symbols. On the screen a symbol is a
/// stamp written straight into a picture, and a series writes a pixel only once, so that the cost of a
/// million points is that of reading them. On paper everything is a path, with places of a quarter of a
/// pixel drawn only once.
class SymbolPlottable : public QCPAbstractPlottable {
  public:
    /// Draws `series`, which must outlive the plottable. The axes' plot takes ownership.
    SymbolPlottable(QCPAxis* xAxis, QCPAxis* yAxis, const std::vector<ChartSeries>& series);

    /// The way from data to pixels for the axes as they are laid out now.
    PixelMap map() const;

    double selectTest(const QPointF& position, bool onlySelectable, QVariant* details) const override;
    QCPRange getKeyRange(bool& found, QCP::SignDomain domain) const override;
    QCPRange getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& inKeyRange) const override;

  protected:
    QRect clipRect() const override;
    void draw(QCPPainter* painter) override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

  private:
    void drawLines(QCPPainter& painter, const PixelMap& map, double columnsPerPixel);
    void drawLine(QCPPainter& painter, const ChartSeries& series);
    void drawWhole(QCPPainter& painter, std::span<const PixelPoint> points);
    void drawInParts(QCPPainter& painter, std::span<const PixelPoint> points);
    void stampSymbols(QCPPainter& painter, const PixelMap& map);
    void printSymbols(QCPPainter& painter, const PixelMap& map);

    const std::vector<ChartSeries>& series_;
    PixelLines lines_;
    QList<QLineF> parts_;
    QImage picture_;
    StampMarks marks_;
    StampCache stamps_;
};

}  // namespace tessel
