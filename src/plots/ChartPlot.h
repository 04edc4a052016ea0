#pragma once

#include "plots/CustomPlot.h"
#include "plots/SymbolPlottable.h"

#include <array>
#include <optional>
#include <vector>

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

    void markStale();
    /// While held, paint events show the plot as it was.
    void hold(bool on);

    /// The way from data to pixels of this widget, laid out for its present size whether it has been drawn
    /// or not. `highlight` asks for that of the highlight group, which is measured on the second Y axis.
    PixelMap map(bool highlight);

    /// A cross that is drawn over the plot without drawing the plot anew; in data coordinates.
    void setCross(std::optional<QPointF> place);

    /// Draws the plot, `size` pixels large, at the origin of the painter.
    void print(QPainter& painter, const QSize& size);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    class Ticker;
    void styleAxes();
    void layOut(const QSize& size);
    int titleRoom(const QCPAxis& axis) const;
    int layOutVertical(QCPAxis& axis, Ticker& ticker, int height);
    int layOutHorizontal(int width);
    bool showsSecondScale() const;
    QRect crossRect();
    void drawCross();

    SymbolPlottable* data_;
    SymbolPlottable* highlight_;
    QSharedPointer<Ticker> xTicker_, yTicker_, y2Ticker_;
    std::optional<QPointF> cross_;
    bool stale_ = true;
    bool layoutStale_ = true;
    bool held_ = false;
};
