// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>

#include <cstdint>
#include <optional>

class QPainter;

namespace tessel {

/// A white surface with a scale of its own, on which single points, lines and rectangles are drawn in
/// colours of the 16-colour palette. What has been drawn stays until clear().
///
/// Coordinates are those of the scale: `left` and `top` are the upper left corner, `width` and `height` the
/// extent of the box, y downwards; at first 0, 0, 1, 1. What is drawn is kept as a picture at the display's
/// resolution; overlays (rubber band and cross) lie over it and cost the same whatever the picture holds.
///
/// The wheel zooms the scale around the pointer, plus and minus around the middle; dragging with the middle
/// or right button and Ctrl with the arrow keys move it. All other keys are left to the parent.
class PictureBox : public QWidget {
    Q_OBJECT
  public:
    /// The part of the plane that is shown; its upper left corner, width and height.
    struct Scale {
        double left = 0, top = 0, width = 1, height = 1;
        bool operator==(const Scale&) const = default;
    };
    /// The data extents that the unit square stands for: x at xMin is drawn at 0 and at xMax at 1, y at yMax
    /// at 0 and at yMin at 1, so that large y are up.
    struct Extent {
        double xMin = 0, xMax = 1, yMin = 0, yMax = 1;
    };

    explicit PictureBox(QWidget* parent = nullptr);

    Scale scale() const { return scale_; }
    /// Draws nothing and does not ask for a redraw: who sets the scale draws afterwards. Emits scaleChanged()
    /// when it differs. Requires positive width and height, else nothing happens.
    void setScale(const Scale& scale);

    /// Whether the user may zoom and move the scale, as at first.
    void setZoomable(bool on) { zoomable_ = on; }

    /// In device-independent pixels, 1 at first; for points, lines and outlines.
    void setPenWidth(double pixels) { penWidth_ = pixels; }

    void clear();
    /// Draws many points given in data units. Those whose entry in `skip` is not 0 are left out; `skip` may
    /// be null. Points that are not finite numbers or lie outside the box cost next to nothing.
    void drawPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                    const Extent& extent, int colour);
    void drawLine(double x1, double y1, double x2, double y2, int colour);
    /// Two opposite corners, in any order.
    void fillRectangle(double x1, double y1, double x2, double y2, int colour);
    /// Brings what has been drawn to the screen at once; without it, it appears with the next paint event.
    void refresh();

    /// An outline one pixel wide over the picture.
    void showRubberBand(double x1, double y1, double x2, double y2, int colour);
    void hideRubberBand();
    /// A cross over the picture, for who moves by keyboard.
    void showCross(double x, double y);
    void hideCross();

    /// Box coordinates of a place in widget pixels, and back.
    QPointF toScale(const QPointF& pixel) const;
    QPointF toPixel(double x, double y) const;
    /// The box coordinates that one pixel is wide and high.
    QSizeF pixelSize() const;

    /// Draws what the box shows into a rectangle of the painter, at the resolution of the paper: asks for a
    /// redraw (redrawNeeded()) onto a finer picture. Overlays are not printed.
    void print(QPainter& painter, const QRectF& target);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void pointerMoved(double px, double py);
    void pointerPressed(double px, double py);   ///< left button; both presses of a double click
    void pointerReleased(double px, double py);  ///< left button
    void pointerLeft();
    void scaleChanged();
    /// The picture is empty because its size or resolution is new, or shows another scale because the user
    /// zoomed or moved it: the owner clears and draws.
    void redrawNeeded();

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    struct Band {
        QPointF from, to;
        int colour = 0;
    };
    void renew(const QSize& size, double resolution);
    bool fitsDisplay() const;
    QImage& picture();
    QSizeF canvas() const;
    QPointF onCanvas(double x, double y) const;
    QRectF rectangle(double x1, double y1, double x2, double y2) const;
    void zoom(const QPointF& fixed, double factor);
    void move(double xPart, double yPart);
    void changeScaleByUser(const Scale& scale);
    QRect bandBox() const;
    QRect crossBox() const;
    void paintOverlays(QPainter& painter) const;

    Scale scale_;
    bool zoomable_ = true;
    double penWidth_ = 1;
    QImage picture_;
    std::optional<Band> band_;
    std::optional<QPointF> cross_;
    std::optional<QPointF> dragged_;
    bool printing_ = false;
};

}  // namespace tessel
