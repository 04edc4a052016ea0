// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"
#include "drawing/Surface.h"
#include "plots/chart_series.h"

#include <QPoint>

#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace tessel {

class ChartViews;

/// A chart with axes, a header above and a read-out line (the footer) below it.
///
/// Numbering. Series are numbered from 1 to seriesCount(). The points of a series are numbered from 1 to
/// pointCount(), in the order of the sites they stand for. Beside them every series has a point 0, which
/// stands for no site, is a hole and is not counted; it may be set and read like the others. A point that has
/// not been set is a hole. A point with a coordinate of kHole (or one that is no finite number) is neither
/// drawn nor picked, and interrupts the line of its series.
/// A group, series or point that does not exist is a RunTimeError, "Subscript out of range", and changes
/// nothing.
///
/// Nothing is drawn before the next paint event, so that any number of changes made by one action costs one
/// redraw; a hidden chart costs none. Between beginBatch() and endBatch() not even paint events redraw.
///
/// When the user looks closer (the wheel over the labels of one axis zooms that axis alone), only the view
/// changes; Home or a double click returns to the limits that were set. axisRange() answers what was set, and
/// pixelToData(), dataToPixel() and nearestPoint() follow the view.
class Chart2D : public Surface {
    Q_OBJECT
  public:
    /// The data, and over them the highlighted points, which are drawn as rings unless styled otherwise.
    enum Group { kData = 1, kHighlight = 2 };
    /// The data are measured on X and Y, the highlight group on X and Y2. Y2 is drawn at the right side when
    /// its limits differ from those of Y or it has a title.
    enum class Axis { kX, kY, kY2 };

    /// In data units; a hole unless it has been set.
    struct Point {
        double x = kHole;
        double y = kHole;
        bool operator==(const Point&) const = default;
    };
    /// Data coordinates of a pixel, within the plot area or beyond it.
    struct PixelData {
        bool inPlotArea = false;
        double x = 0;
        double y = 0;
    };
    /// The point that the pointer means; -1 where there is none.
    struct Nearest {
        int series = -1;
        qsizetype point = -1;
        int distance = -1;  ///< in whole pixels, across both directions; -1 when there is no point
    };

    /// Pixels around a point within which the pointer means it.
    static constexpr int kPickDistance = 3;
    static constexpr int kAnyDistance = std::numeric_limits<int>::max();

    explicit Chart2D(QWidget* parent = nullptr);
    ~Chart2D() override;

    /// Suspends and resumes drawing; batches may be nested.
    void beginBatch();
    void endBatch();

    /// Further series come without points and in their group's first style; both groups begin with none.
    void setSeriesCount(Group group, int count);
    int seriesCount(Group group) const;
    /// Fewer points drop the last ones; more are holes.
    void setPointCount(Group group, int series, qsizetype count);
    qsizetype pointCount(Group group, int series) const;
    void setPoint(Group group, int series, qsizetype point, double x, double y);
    /// Sets the points first, first + 1, ...; requires x and y of equal length.
    void setPoints(Group group, int series, qsizetype first, std::span<const double> x,
                   std::span<const double> y);
    /// The points 1, 2, ... become these and there are no others, in one pass; point 0 becomes a hole.
    /// Requires x and y of equal length.
    void replacePoints(Group group, int series, std::span<const double> x, std::span<const double> y);
    /// Exactly what was set.
    Point point(Group group, int series, qsizetype point) const;

    /// A number of the 16-colour palette, for the symbols and the line of the series. Pale colours get a
    /// thin dark outline.
    void setSymbolColour(Group group, int series, int colour);
    /// The symbols of the points 1, 2, ... have the colours of these shades in place of the colour of the
    /// series; without shades the series has its own colour again, and so it has when its points are
    /// replaced or are more or fewer. Requires none, or one for each point.
    void setShades(Group group, int series, std::span<const Shade> shades);
    void setSeriesStyle(Group group, int series, const SeriesStyle& style);
    SeriesStyle seriesStyle(Group group, int series) const;
    /// Series with a name are explained by symbol and name above the plot, at the right.
    void setSeriesName(Group group, int series, const QString& name);

    /// Fixes the limits and returns the view of this axis to them. Equal limits show their value in the
    /// middle, falling ones run down. Y2 follows Y until it is set itself.
    void setAxisRange(Axis axis, double minimum, double maximum);
    Interval axisRange(Axis axis) const;
    void setAxisTitle(Axis axis, const QString& title);
    QString axisTitle(Axis axis) const;

    /// Where there is no room for the text, `shorter` is shown if it is not empty.
    void setHeaderText(const QString& text, const QString& shorter = {});
    QString headerText() const;
    void setHeaderFont(double pointSize, bool bold);
    /// Redraws the footer only, and never moves the plot.
    void setFooterText(const QString& text);
    QString footerText() const;

    /// Where the data are drawn, in pixels of the widget.
    QRectF plotArea() const { return area(); }
    /// The way from data (of the data group) to pixels of the widget.
    PixelMap pixels() const;
    /// The data coordinates at the middle of a pixel, and whether it belongs to the plot area.
    PixelData pixelToData(QPoint pixel) const;
    /// Where data (of the data group) lie; the inverse of pixelToData() but for the pixel's half.
    QPointF dataToPixel(double x, double y) const;
    /// The point shown in the plot area that is nearest to a pixel. Points farther away than `within` pixels
    /// need not be found: a pointer that reads out asks for no others, and few points are looked at then.
    Nearest nearestPoint(Group group, QPoint pixel, int within = kAnyDistance) const;
    /// The points of a series that are shown within a box of pixels, its edges included, in their order.
    std::vector<qsizetype> pointsIn(Group group, int series, const QRectF& box) const;

    /// From now on boxes can be drawn over the plot: by dragging with the left button and Shift (boxDrawn). A
    /// press with Shift that comes to no drag is told like any other when the button is released.
    void offerBoxes();

    /// A thin line over the plot at a height of the Y axis, for a value that is being chosen, with this text
    /// at its end. Costs no drawing of the plot; never printed.
    void showLevel(double y, const QString& text = {});
    void hideLevel();
    /// Whether the user can move the level: by dragging it, or by a click with Ctrl at its new height. It
    /// moves when the owner shows it there (levelMoved).
    void setLevelMovable(bool movable);

    bool isZoomed() const;
    void resetView();
    /// What is shown of the axes, and what was set for them.
    const ChartViews& views() const;
    /// After limits have been set anew: shows again what was shown before of a chart that was zoomed
    /// (ChartViews::keepViews).
    void keepViews(const ChartViews& before);

    /// From now on the plot areas of both charts begin and end at the same distances from their charts'
    /// sides, whatever their labels need, on the screen and on paper. For charts of equal width, one below
    /// the other.
    void alignSides(Chart2D& other);

    /// From now on the horizontal views of both charts are one: who zooms, moves or resets the view of one
    /// does it to the other. For charts whose horizontal limits are the same.
    void shareHorizontalView(Chart2D& other);

    /// Draws header, plot as it is shown and footer into a rectangle of the painter; letters and symbols
    /// get the size on paper that they have on a screen of 96 dots an inch, at every resolution.
    void print(QPainter& painter, const QRectF& target) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void pointerPressed(QPoint pixel);  ///< left button; both presses of a double click
    void pointerMoved(QPoint pixel);
    /// A box in pixels, within the plot area; `taking` when Ctrl was held too: what it holds is to be taken
    /// away.
    void boxDrawn(const QRectF& box, bool taking);
    /// The user wants the level at this height of the Y axis, in digits as fine as pixels.
    void levelMoved(double y);
    void redrawn();  ///< the plot has been drawn anew (a footer does not count)

  protected:
    QRectF area() const override;
    QPointF pixelOf(const QPointF& place) const override { return dataToPixel(place.x(), place.y()); }
    void follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) override;
    void zoomView(const QPointF& around, double xFactor, double yFactor) override;
    void moveView(double right, double down) override;
    bool returnView() override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    bool followBox(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held);
    bool followLevel(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held);
    void finishBox();

    struct Private;
    const std::unique_ptr<Private> d_;
};

}  // namespace tessel
