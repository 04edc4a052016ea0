// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ColourScale.h"

#include "base/whole_numbers.h"
#include "drawing/colour_map.h"
#include "plots/AxisPainter.h"
#include "plots/ChartFrame.h"
#include "plots/ChartSymbols.h"
#include "plots/chart_views.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tessel {

namespace {

constexpr int kGap = 8;  // to the plot
constexpr int kStripWidth = 16;
constexpr int kOuterMargin = 6;
constexpr double kDragDistance = 3;  // pixels; less is a click

/// All colours, the highest first.
QImage colours() {
    QImage picture(1, static_cast<int>(kShades), QImage::Format_RGB32);
    for (int i = 0; i < picture.height(); ++i)
        picture.setPixel(0, i, 0xFF000000U | colourMap()[kShades - 1 - static_cast<std::size_t>(i)]);
    return picture;
}

}  // namespace

ColourScale::ColourScale(QWidget* parent) : Surface(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setTitle(tr("EM reading (mS/m)"));
    setToolTip(
        tr("Drag over a part of the scale to spread the colours over it; a double click or Home goes "
           "back."));
    above_ = below_ = lineHeight(textFont()) / 2.0 + 2;
}

void ColourScale::setTitle(const QString& title) {
    title_ = title;
    setAccessibleName(title);
    updateGeometry();
    update();
}

void ColourScale::setRange(const Interval& range) {
    home_ = view_ = viewOfLimits(range);
    updateGeometry();
    update();
}

void ColourScale::followRange(const Interval& range) {
    const Interval chosen = view_;
    const bool keep = isChosen();
    setRange(range);
    if (keep && stillMakesSense(chosen, home_)) view_ = chosen;
}

void ColourScale::alignWith(double top, double bottom) {
    const double below = height() - bottom;
    if (above_ == top && below_ == below) return;
    above_ = top;
    below_ = below;
    updateGeometry();
    update();
}

QFont ColourScale::textFont() const {
    ChartFrame frame;
    frame.setFont(font(), logicalDpiY());
    return frame.textFont();
}

QRectF ColourScale::strip(const QRectF& whole) const {
    return {whole.left() + kGap, whole.top() + above_, kStripWidth,
            std::max(1.0, whole.height() - above_ - below_)};
}

QPointF ColourScale::pixelOf(const QPointF& place) const {
    return {area().center().x(), area().bottom() - view_.partOf(place.y()) * area().height()};
}

double ColourScale::readingAt(double pixel) const {
    return view_.nearest(view_.at((area().bottom() - pixel) / area().height()));
}

void ColourScale::follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers) {
    if (pointer == Pointer::kPressed) dragged_ = Interval{pixel.y(), pixel.y()};
    if (!dragged_) return;
    dragged_->to = pixel.y();
    if (pointer == Pointer::kReleased) finishDrag();
    update();
}

void ColourScale::finishDrag() {
    const Interval drag = *dragged_;
    dragged_.reset();
    if (drag.high() - drag.low() > kDragDistance)
        choose(viewOfLimits({readingAt(drag.high()), readingAt(drag.low())}));
}

void ColourScale::zoomView(const QPointF& around, double, double yFactor) {
    choose(zoomed(view_, home_, 1 - around.y(), yFactor));
}

void ColourScale::moveView(double, double down) {
    choose(moved(view_, home_, -down));
}

bool ColourScale::returnView() {
    choose(home_);
    return true;
}

void ColourScale::choose(const Interval& range) {
    if (std::exchange(view_, range) == range) return;
    updateGeometry();
    update();
    Q_EMIT rangeChosen();
}

// A longer scale may have ticks with longer labels.
void ColourScale::resizeEvent(QResizeEvent*) {
    updateGeometry();
}

void ColourScale::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    paintScale(painter, rect());
    paintDrag(painter);
    paintOverlays(painter);
}

void ColourScale::print(QPainter& painter, const QRectF& target) {
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / width(), target.height() / height());
    paintScale(painter, rect());
    painter.restore();
}

void ColourScale::paintScale(QPainter& painter, const QRectF& whole) const {
    const QRectF place = strip(whole);
    painter.drawImage(place, colours());
    painter.setPen(QPen(chartInk(), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place);
    const UprightAxis axis{UprightAxis::Side::kRight, view_, title_, textFont()};
    painter.setFont(axis.font);
    const Rectangle pixels = Rectangle::at(place.left(), place.top(), place.width(), place.height());
    axis.paint(painter, uprightTicks(view_, intWithin(place.height()), axis.font),
               pixelMap(pixels, {0, 1}, view_));
}

void ColourScale::paintDrag(QPainter& painter) const {
    if (!dragged_) return;
    constexpr double kOverhang = 3;
    const Interval strip{area().top(), area().bottom()};
    const QRectF part(QPointF(area().left() - kOverhang, strip.nearest(dragged_->from)),
                      QPointF(area().right() + kOverhang, strip.nearest(dragged_->to)));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(part.normalized());
}

QSize ColourScale::sizeHint() const {
    const UprightAxis axis{UprightAxis::Side::kRight, view_, title_, textFont()};
    return {kGap + kStripWidth + axis.room(std::max(1, intWithin(area().height()))) + kOuterMargin, 200};
}

QSize ColourScale::minimumSizeHint() const {
    return {sizeHint().width(), 80};
}

}  // namespace tessel
