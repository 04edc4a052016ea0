// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"
#include "drawing/PaperStrokes.h"
#include "drawing/Surface.h"
#include "drawing/colour_map.h"

#include <QImage>

#include <cstdint>
#include <optional>

namespace tessel {

/// A surface with a scale of its own, on which single points, lines and rectangles are drawn in colours of
/// the 16-colour palette. What has been drawn stays until clear().
///
/// The scale is the rectangle of its coordinates that the box shows, y downwards; at first the unit square.
/// What is drawn is kept as a picture at the display's resolution; overlays (rubber band and cross) lie over
/// it and cost the same whatever the picture holds.
class PictureBox : public Surface {
    Q_OBJECT
  public:
    explicit PictureBox(QWidget* parent = nullptr);

    const Rectangle& scale() const { return scale_; }
    /// Draws nothing and does not ask for a redraw: who sets the scale draws afterwards. Emits scaleChanged()
    /// when it differs. Requires positive width and height, else nothing happens.
    void setScale(const Rectangle& scale);

    /// Whether the user may zoom and move the scale, as at first.
    void setZoomable(bool on) { zoomable_ = on; }

    /// In device-independent pixels, 1 at first; for points, lines and outlines.
    void setPenWidth(double pixels) { penWidth_ = pixels; }

    void clear();
    /// Draws many points given in data units, of which `extent` is the unit square, large y up. Those whose
    /// entry in `skip` is not 0 are left out; `skip` may be null. Points that are not finite numbers or lie
    /// outside the box cost next to nothing.
    void drawPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                    const Rectangle& extent, int colour);
    /// The same with every point in the colour of its shade.
    void drawPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                    const Rectangle& extent, const Shade* shades);
    void drawLine(double x1, double y1, double x2, double y2, int colour);
    /// Two opposite corners, in any order.
    void fillRectangle(double x1, double y1, double x2, double y2, int colour);
    /// Brings what has been drawn to the screen at once; without it, it appears with the next paint event.
    void refresh();

    /// An outline one pixel wide over the picture.
    void showRubberBand(double x1, double y1, double x2, double y2, int colour);
    void hideRubberBand();

    /// Box coordinates of a place in widget pixels, and back.
    QPointF toScale(const QPointF& pixel) const;
    QPointF toPixel(double x, double y) const;
    /// The way from the data units of drawPoints() to widget pixels.
    PixelMap pixelsShown(const Rectangle& extent) const;
    /// The box coordinates that one pixel is wide and high.
    QSizeF pixelSize() const;

    /// Asks for a redraw (redrawNeeded()) onto paper: lines, rectangles and points are strokes; but of more
    /// than kMostStrokes points, and where nobody redraws, there is a picture in their place.
    void print(QPainter& painter, const QRectF& target) override;
    static constexpr std::size_t kMostStrokes = 50000;
    static constexpr std::size_t kMostColouredStrokes = 20000;
    /// Who is asked for a redraw now draws before the signal returns.
    bool isPrinting() const { return printing_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void pointerMoved(double px, double py);
    void pointerPressed(double px, double py);   ///< left button; both presses of a double click
    void pointerReleased(double px, double py);  ///< left button
    void scaleChanged();
    /// The picture is empty because its size or resolution is new, or shows another scale because the user
    /// zoomed or moved it: the owner clears and draws.
    void redrawNeeded();

  protected:
    QRectF area() const override;
    QPointF pixelOf(const QPointF& place) const override { return toPixel(place.x(), place.y()); }
    void follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) override;
    void zoomView(const QPointF& around, double xFactor, double yFactor) override;
    void moveView(double right, double down) override;
    bool returnView() override;
    /// Both presses of a double click are the owner's.
    bool returnsByDoubleClick() const override { return false; }
    bool canZoom() const override { return zoomable_; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    struct Band {
        QPointF from, to;
        int colour = 0;
    };
    int penSize() const;
    PixelMap pixelsOf(const Rectangle& extent);
    void renew(const QSize& size, double resolution);
    bool fitsDisplay() const;
    QImage& picture();
    QSizeF canvas() const;
    QPointF onCanvas(double x, double y) const;
    QRectF rectangle(double x1, double y1, double x2, double y2) const;
    void changeScaleByUser(const Interval& x, const Interval& y);
    void setShown(const Rectangle& scale);
    void paint(const PaperStrokes::Stroke& stroke);
    template <typename ColourOf>
    void recordPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                      const PixelMap& map, const ColourOf& colourOf);
    QRect bandBox() const;
    void paintBand(QPainter& painter) const;

    Rectangle home_;  ///< that was set
    Rectangle scale_;
    bool zoomable_ = true;
    double penWidth_ = 1;
    QImage picture_;
    std::optional<Band> band_;
    bool printing_ = false;
    PaperStrokes strokes_;  ///< while printing
    std::size_t mostDots_ = kMostStrokes;
};

}  // namespace tessel
