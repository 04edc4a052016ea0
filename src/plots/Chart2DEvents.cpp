// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/Pixels.h"
#include "plots/Chart2DPrivate.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tessel {

// What the user does to a chart, and its painting.

namespace {

/// One notch of the wheel, one press of plus.
constexpr double kZoomStep = 0.8;
/// Part of the view that Ctrl and an arrow key move.
constexpr double kMoveStep = 0.1;

}  // namespace

void Chart2D::focusInEvent(QFocusEvent*) {
    update();
}

void Chart2D::focusOutEvent(QFocusEvent*) {
    update();
}

void Chart2D::keyPressEvent(QKeyEvent* event) {
    const bool moves = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
        case Qt::Key_Home:
            return resetView();
        case Qt::Key_Plus:
            return d_->zoom(0.5, kZoomStep, 0.5, kZoomStep);
        case Qt::Key_Minus:
            return d_->zoom(0.5, 1 / kZoomStep, 0.5, 1 / kZoomStep);
        case Qt::Key_Left:
            if (moves) return d_->move(-kMoveStep, 0);
            break;
        case Qt::Key_Right:
            if (moves) return d_->move(kMoveStep, 0);
            break;
        case Qt::Key_Up:
            if (moves) return d_->move(0, kMoveStep);
            break;
        case Qt::Key_Down:
            if (moves) return d_->move(0, -kMoveStep);
            break;
        default:
            break;
    }
    QWidget::keyPressEvent(event);
}

void Chart2D::leaveEvent(QEvent*) {
    Q_EMIT pointerLeft();
}

void Chart2D::mousePressEvent(QMouseEvent* event) {
    const QPoint pixel = pixelAt(event->position());
    if (event->button() == Qt::LeftButton) Q_EMIT pointerPressed(pixel);
    if (event->button() == Qt::MiddleButton || event->button() == Qt::RightButton) d_->dragged = pixel;
}

void Chart2D::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    // The first press may have toggled a point; this second one has toggled it back.
    if (event->button() == Qt::LeftButton) resetView();
}

void Chart2D::mouseMoveEvent(QMouseEvent* event) {
    const QPoint pixel = pixelAt(event->position());
    if (d_->dragged) {
        const PixelRect area = d_->map(rect(), false).area;
        const QPoint by = pixel - *d_->dragged;
        d_->dragged = pixel;
        d_->move(-by.x() / (area.right - area.left), by.y() / (area.bottom - area.top));
        return;
    }
    Q_EMIT pointerMoved(pixel);
}

void Chart2D::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton || event->button() == Qt::RightButton) d_->dragged.reset();
}

void Chart2D::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    d_->frame.paint(painter, rect(), d_->groups);
    if (hasFocus()) d_->frame.paintFocus(painter, rect(), palette().color(QPalette::Highlight));
}

void Chart2D::resizeEvent(QResizeEvent*) {
    d_->plot->setGeometry(d_->frame.plotRect(rect()));
}

void Chart2D::wheelEvent(QWheelEvent* event) {
    const PixelRect area = d_->map(rect(), false).area;
    const QPointF at = event->position();
    const double factor = std::pow(kZoomStep, event->angleDelta().y() / 120.0);
    const double x = std::clamp((at.x() - area.left) / (area.right - area.left), 0.0, 1.0);
    const double y = std::clamp((area.bottom - at.y()) / (area.bottom - area.top), 0.0, 1.0);
    const bool besideY = at.x() < area.left || at.x() > area.right;
    const bool belowX = at.y() > area.bottom && !besideY;
    d_->zoom(x, besideY ? 1 : factor, y, belowX ? 1 : factor);
    event->accept();
}

}  // namespace tessel
