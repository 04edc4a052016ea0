// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/AxisPainter.h"
#include "plots/Chart2D.h"
#include "plots/Chart2DPrivate.h"
#include "plots/axis_ticks.h"

#include <algorithm>
#include <cmath>

// The left button on a chart, and what lies over the plot meanwhile.

namespace tessel {

namespace {

constexpr int kTextGap = 3;

QPointF nearest(const QRectF& area, const QPointF& pixel) {
    return {std::clamp(pixel.x(), area.left(), area.right()),
            std::clamp(pixel.y(), area.top(), area.bottom())};
}

}  // namespace

void Chart2D::follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) {
    if (followBox(pointer, pixel, held) || followLevel(pointer, pixel, held)) return;
    if (pointer == Pointer::kPressed) Q_EMIT pointerPressed(pixelAt(pixel));
    if (pointer == Pointer::kMoved) Q_EMIT pointerMoved(pixelAt(pixel));
}

// Boxes
// -----------------------------------------------------------------------------

void Chart2D::offerBoxes() {
    d_->offersBoxes = true;
}

bool Chart2D::followBox(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) {
    if (pointer == Pointer::kPressed) {
        d_->box.reset();
        if (!d_->offersBoxes || !held.testFlag(Qt::ShiftModifier)) return false;
        const QPointF from = nearest(area(), pixel);
        d_->box = Private::Box{pixel, from, from, held.testFlag(Qt::ControlModifier)};
        return true;
    }
    if (!d_->box) return false;
    d_->updateBox();
    d_->box->to = nearest(area(), pixel);
    d_->updateBox();
    if (pointer == Pointer::kReleased) finishBox();
    return true;
}

void Chart2D::finishBox() {
    const auto box = std::exchange(d_->box, std::nullopt);
    if (!box) return;
    update();
    if (box->isDrawn())
        Q_EMIT boxDrawn(QRectF(box->from, box->to).normalized(), box->taking);
    else
        Q_EMIT pointerPressed(pixelAt(box->pressed));
}

QRectF Chart2D::Private::drawnBox() const {
    return box && box->isDrawn() ? QRectF(box->from, box->to).normalized() : QRectF();
}

void Chart2D::Private::updateBox() const {
    if (box && box->isDrawn()) chart.update(pixelsAround(drawnBox().adjusted(-2, -2, 2, 2)));
}

void Chart2D::Private::paintBox(QPainter& painter) const {
    if (drawnBox().isNull()) return;
    painter.setPen(QPen(box->taking ? chartInk() : lineColour(kLightRed), 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(drawnBox());
}

// The level
// -----------------------------------------------------------------------------

void Chart2D::showLevel(double y, const QString& text) {
    if (d_->level == y && d_->levelText == text) return;
    d_->level = y;
    d_->levelText = text;
    update();
}

void Chart2D::hideLevel() {
    d_->level.reset();
    update();
}

void Chart2D::setLevelMovable(bool movable) {
    if (d_->levelMovable && !movable) unsetCursor();
    d_->levelMovable = movable;
    d_->movesLevel = d_->movesLevel && movable;
}

bool Chart2D::followLevel(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers held) {
    if (!d_->levelMovable) return false;
    const bool placed = pointer == Pointer::kPressed && held.testFlag(Qt::ControlModifier);
    const bool atLevel = d_->isAtLevel(pixel);
    if (pointer == Pointer::kPressed) d_->movesLevel = (placed || atLevel) && area().contains(pixel);
    if (!d_->movesLevel) {
        atLevel ? setCursor(Qt::SizeVerCursor) : unsetCursor();
        return false;
    }
    if (pointer == Pointer::kReleased) d_->movesLevel = false;
    const PixelMap map = d_->map(kData);
    if (placed || pointer == Pointer::kMoved)
        Q_EMIT levelMoved(roundedTo(map.dataY(nearest(area(), pixel).y()), std::abs(1 / map.yScale)));
    return true;
}

bool Chart2D::Private::isAtLevel(const QPointF& pixel) {
    const PixelMap pixels = map(kData);
    return level && pixels.area.contains(pixel.x(), pixel.y()) &&
           std::abs(pixels.pixelY(*level) - pixel.y()) <= kPickDistance;
}

void Chart2D::Private::paintLevel(QPainter& painter) {
    const PixelMap pixels = map(kData);
    if (!level || !pixels.area.y.contains(pixels.pixelY(*level))) return;
    painter.setPen(QPen(lineColour(kRed), 1, Qt::DashLine));
    painter.drawLine(QPointF(pixels.area.x.from, pixels.pixelY(*level)),
                     QPointF(pixels.area.x.to, pixels.pixelY(*level)));
    paintLevelText(painter, {pixels.area.x.to, pixels.pixelY(*level)});
}

// Above the line where there is room, on white, so that it can be read over any plot.
void Chart2D::Private::paintLevelText(QPainter& painter, const QPointF& end) {
    if (levelText.isEmpty()) return;
    const QFont font = frame.textFont();
    const QSizeF size(labelWidth(levelText.toStdString(), font) + 2 * kTextGap, lineHeight(font));
    const bool above = end.y() - size.height() - kTextGap >= map(kData).area.y.from;
    const QRectF place(QPointF(end.x() - size.width() - kTextGap,
                               above ? end.y() - size.height() - kTextGap : end.y() + kTextGap),
                       size);
    painter.setFont(font);
    painter.fillRect(place, Qt::white);
    painter.drawText(place, Qt::AlignCenter, levelText);
}

}  // namespace tessel
