// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/CustomPlot.h"
#include "plots/SymbolPlottable.h"
#include "plots/axis_ticks.h"

#include <QPointer>

#include <optional>
#include <vector>

namespace tessel {

/// The plot area of a chart with its axes, drawn lazily: a change only marks it stale, the next paint event
/// draws it anew, once, however much has changed. Draws the same on the screen and on paper.
class ChartPlot : public QCustomPlot {
  public:
    ChartPlot(const std::vector<ChartSeries>& dataSeries, const std::vector<ChartSeries>& highlightSeries,
              QWidget* parent);

    void setViews(const AxisView& x, const AxisView& y, const AxisView& y2);
    void setTitle(QCPAxis* axis, const QString& text);
    /// The font of titles and tick labels; its pixel size counts.
    void setTextFont(const QFont& font);

    /// Both plots get the margins at their sides that the needier of them needs.
    void alignSides(ChartPlot& other);

    void markStale();
    /// While held, paint events show the plot as it was.
    void hold(bool on);

    /// The way from data to pixels of this widget, laid out for its present size whether it has been drawn
    /// or not. `highlight` asks for that of the highlight group, which is measured on the second Y axis.
    PixelMap map(bool highlight);

    /// A cross that is drawn over the plot without drawing the plot anew; in data coordinates.
    void setCross(std::optional<QPointF> place);

    /// A line across the plot, drawn over it likewise; in data coordinates of the Y axis.
    void setLevel(std::optional<double> y);

    /// Draws the plot, `size` pixels large, at the origin of the painter.
    void print(QPainter& painter, const QSize& size);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    class Ticker;
    /// The margins at the sides of the plot area.
    struct Sides {
        int left = 0;
        int right = 0;
        bool operator==(const Sides&) const = default;
    };
    void styleAxes();
    void layOut(const QSize& size, const QSize& companionSize);
    /// The margins that the labels of this plot need when it is of this size.
    Sides ownSides(const QSize& size) const;
    int topMargin() const;
    int bottomMargin() const;
    int plotHeight(const QSize& size) const;
    int titleRoom(const QCPAxis& axis) const;
    TickStep verticalTicks(const QCPAxis& axis, int height) const;
    TickStep horizontalTicks(int width) const;
    int labelRoom(const QCPAxis& axis, int height) const;
    int overhang(int width) const;
    bool showsSecondScale() const;
    QRect crossRect();
    void drawCross();
    void drawLevel();

    SymbolPlottable* data_;
    SymbolPlottable* highlight_;
    QSharedPointer<Ticker> xTicker_, yTicker_, y2Ticker_;
    std::optional<QPointF> cross_;
    std::optional<double> level_;
    QPointer<ChartPlot> companion_;
    Sides sides_;  ///< those that were needed when this plot was laid out last
    bool stale_ = true;
    bool layoutStale_ = true;
    bool held_ = false;
};

}  // namespace tessel
