// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"
#include "drawing/Surface.h"

#include <QString>

#include <optional>

namespace tessel {

/// The colours of readings with their numbers, beside the plot that is drawn in them.
///
/// A range is set; the user chooses another: drags over the part of the scale over which all colours are to
/// be spread, or zooms and moves the scale as every surface. A double click or Home returns to the range that
/// was set.
class ColourScale : public Surface {
    Q_OBJECT
  public:
    explicit ColourScale(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    QString title() const { return title_; }

    /// Sets the range and returns to it; one without length is shown in the middle of the scale. Emits no
    /// signal. Requires finite ends that do not fall.
    void setRange(const Interval& range);
    /// The same, but a range of the user's stays.
    void followRange(const Interval& range);
    /// What the colours stand for now.
    const Interval& range() const { return view_; }
    bool isChosen() const { return !(view_ == home_); }

    /// The strip of colours begins and ends at these heights, in pixels of the widget.
    void alignWith(double top, double bottom);

    void print(QPainter& painter, const QRectF& target) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void rangeChosen();

  protected:
    QRectF area() const override { return strip(rect()); }
    QPointF pixelOf(const QPointF& place) const override;
    void follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) override;
    void zoomView(const QPointF& around, double xFactor, double yFactor) override;
    void moveView(double right, double down) override;
    bool returnView() override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QFont textFont() const;
    QRectF strip(const QRectF& whole) const;
    double readingAt(double pixel) const;
    void choose(const Interval& range);
    void finishDrag();
    void paintScale(QPainter& painter, const QRectF& whole) const;
    void paintDrag(QPainter& painter) const;

    QString title_;
    Interval home_, view_;
    std::optional<Interval> dragged_;  ///< from where to where, in pixels
    double above_, below_;             ///< room above and below the strip, in pixels
};

}  // namespace tessel
