// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <optional>

class QMenu;

namespace tessel {

/// White paper in every theme, on which the user looks closer: what charts, maps and histograms have in
/// common.
///
/// The wheel zooms around the pointer (beside or below the area of the view, where labels are, in that
/// direction alone), plus and minus around the middle; dragging with the middle or right button and Ctrl with
/// the arrow keys move the view, Home returns to the view that was set. A right click without dragging, or
/// the menu key, opens a menu that offers the same, and a picture of what is shown; Ctrl+C copies that. All
/// other keys are left to the parent. All pixels are device-independent and count from the widget's upper
/// left corner.
class Surface : public QWidget {
    Q_OBJECT
  public:
    explicit Surface(QWidget* parent = nullptr);

    /// A cross over what is drawn, for who moves by keyboard; shown while its place, in the coordinates of
    /// what is drawn, is in view. Costs no drawing of the rest; never printed.
    void showCross(double x, double y);
    void hideCross();

    /// Draws what is shown into a rectangle of the painter, at the resolution of the paper and without what
    /// lies over it.
    virtual void print(QPainter& painter, const QRectF& target) = 0;

    static constexpr double kSheetDotsPerInch = 96;
    /// The size of a part of a page in pixels of that many to the inch.
    static QSizeF sheetSize(const QPainter& painter, const QRectF& target);

  Q_SIGNALS:
    void pointerLeft();
    /// A picture is to be saved in a file, or copied to the clipboard.
    void pictureWanted();
    void copyWanted();

  protected:
    enum class Pointer { kPressed, kMoved, kReleased };

    /// The part of the widget in which the view lies.
    virtual QRectF area() const = 0;
    virtual QPointF pixelOf(const QPointF& place) const = 0;
    /// The pointer at a place in pixels: its left button pressed (both presses of a double click too) or
    /// released, or no view being dragged; and the keys that are held.
    virtual void follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) = 0;
    /// Makes the view so many times as wide and high around a place given in parts of the area, from its
    /// upper left corner.
    virtual void zoomView(const QPointF& around, double xFactor, double yFactor) = 0;
    /// Moves the view by parts of its width and height, to the right and downwards.
    virtual void moveView(double right, double down) = 0;
    /// Returns to the view that was set; false where a view has no other.
    virtual bool returnView() { return false; }
    virtual bool returnsByDoubleClick() const { return true; }
    virtual bool canZoom() const { return true; }

    /// The cross, and the frame that tells who has the keyboard.
    void paintOverlays(QPainter& painter) const;

    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    std::optional<QPoint> crossPixel() const;
    void updateCross();
    void showMenu(const QPoint& place);
    void addViewItems(QMenu& menu);
    bool zoomByKey(int key);
    bool moveByKey(int key);

    std::optional<QPointF> cross_;
    std::optional<QPointF> dragged_;  ///< where the pointer was when the view was last moved
    QPointF pressed_;                 ///< where the button that drags the view was pressed
    bool hasMoved_ = false;           ///< since then, by more than a hand shakes
};

}  // namespace tessel
