// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/AxisPainter.h"
#include "plots/SeriesPainter.h"
#include "plots/chart_views.h"

#include <QFont>
#include <QRect>
#include <QString>

#include <algorithm>
#include <array>
#include <vector>

class QImage;
class QPainter;

namespace tessel {

/// The plot of a chart: axes with ticks, labels and titles around an area in which the series are drawn,
/// alike on the screen and on paper.
class ChartPlot {
  public:
    using Groups = std::array<std::vector<ChartSeries>, 2>;

    /// The margins at the sides of the area.
    struct Sides {
        int left = 0;
        int right = 0;
        bool operator==(const Sides&) const = default;
        Sides with(const Sides& other) const {
            return {std::max(left, other.left), std::max(right, other.right)};
        }
    };
    /// Where things stand when the plot has been laid out.
    struct Layout {
        QRect place, area;
        std::array<TickStep, 3> ticks;  ///< by ChartViews::Axis
    };

    /// Draws the first group on X and Y and the second one on X and Y2; both parameters must outlive the
    /// plot.
    ChartPlot(const ChartViews& views, const Groups& groups) : views_(views), groups_(groups) {}

    /// The font of titles and tick labels; its pixel size counts.
    void setFont(const QFont& font) { font_ = font; }
    void setTitle(ChartViews::Axis axis, const QString& text) { titles_[axis] = text; }
    const QString& title(ChartViews::Axis axis) const { return titles_[axis]; }

    /// The sides that the labels need where the plot is of this size.
    Sides sidesFor(const QSize& size) const;
    Layout layOut(const QRect& place, const Sides& sides) const;
    PixelMap map(const Layout& layout, ChartViews::Axis yAxis) const;

    void draw(QImage& picture, const Layout& layout);
    void print(QPainter& painter, const Layout& layout);

  private:
    bool showsSecondScale() const;
    int topMargin() const;
    int bottomMargin() const;
    int plotHeight(const QSize& size) const;
    UprightAxis uprightAxis(ChartViews::Axis axis) const;
    int overhang(int width) const;
    void paintGrid(QPainter& painter, const Layout& layout) const;
    void paintAxes(QPainter& painter, const Layout& layout) const;
    void paintHorizontalAxis(QPainter& painter, const Layout& layout) const;

    const ChartViews& views_;
    const Groups& groups_;
    SeriesPainter series_;
    QFont font_;
    std::array<QString, 3> titles_;
};

}  // namespace tessel
