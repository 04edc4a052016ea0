// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/Surface.h"

#include "drawing/Pixels.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

/// One notch of the wheel, one press of plus.
constexpr double kZoomStep = 0.8;
/// Part of the view that Ctrl and an arrow key move.
constexpr double kMoveStep = 0.1;
constexpr int kCrossGap = 4;
constexpr int kCrossArm = 11;

bool dragsView(const QMouseEvent& event) {
    return event.button() == Qt::MiddleButton || event.button() == Qt::RightButton;
}

}  // namespace

Surface::Surface(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Surface::showCross(double x, double y) {
    hideCross();
    cross_ = QPointF(x, y);
    updateCross();
}

void Surface::hideCross() {
    updateCross();
    cross_.reset();
}

void Surface::updateCross() {
    constexpr int kReach = kCrossArm + 2;
    if (const auto at = crossPixel())
        update(at->x() - kReach, at->y() - kReach, 2 * kReach + 1, 2 * kReach + 1);
}

std::optional<QPoint> Surface::crossPixel() const {
    if (!cross_) return {};
    const QPointF at = pixelOf(*cross_);
    const QRectF shown = area();
    const bool inView = at.x() >= shown.left() && at.x() <= shown.right() && at.y() >= shown.top() &&
                        at.y() <= shown.bottom();
    return inView ? std::optional(pixelAt(at)) : std::nullopt;
}

QSizeF Surface::sheetSize(const QPainter& painter, const QRectF& target) {
    const QTransform& toDevice = painter.combinedTransform();
    const double xDots = toDevice.map(QLineF(0, 0, target.width(), 0)).length();
    const double yDots = toDevice.map(QLineF(0, 0, 0, target.height())).length();
    return {std::max(1.0, xDots / painter.device()->logicalDpiX() * kSheetDotsPerInch),
            std::max(1.0, yDots / painter.device()->logicalDpiY() * kSheetDotsPerInch)};
}

void Surface::paintOverlays(QPainter& painter) const {
    if (const auto at = crossPixel()) {
        const QPointF centre = QPointF(*at) + QPointF(0.5, 0.5);
        for (const QPen& pen : {QPen(Qt::white, 3), QPen(Qt::black, 1)}) {
            painter.setPen(pen);
            for (const int side : {-1, 1}) {
                painter.drawLine(centre + QPointF(side * kCrossGap, 0),
                                 centre + QPointF(side * kCrossArm, 0));
                painter.drawLine(centre + QPointF(0, side * kCrossGap),
                                 centre + QPointF(0, side * kCrossArm));
            }
        }
    }
    if (!hasFocus()) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void Surface::focusInEvent(QFocusEvent*) {
    update();
}

void Surface::focusOutEvent(QFocusEvent*) {
    update();
}

void Surface::keyPressEvent(QKeyEvent* event) {
    const QPointF middle(0.5, 0.5);
    const bool moves = event->modifiers().testFlag(Qt::ControlModifier);
    const int key = event->key();
    if (key == Qt::Key_Plus) return zoomView(middle, kZoomStep, kZoomStep);
    if (key == Qt::Key_Minus) return zoomView(middle, 1 / kZoomStep, 1 / kZoomStep);
    if (key == Qt::Key_Left && moves) return moveView(-kMoveStep, 0);
    if (key == Qt::Key_Right && moves) return moveView(kMoveStep, 0);
    if (key == Qt::Key_Up && moves) return moveView(0, -kMoveStep);
    if (key == Qt::Key_Down && moves) return moveView(0, kMoveStep);
    if (key == Qt::Key_Home && returnView()) return;
    QWidget::keyPressEvent(event);
}

void Surface::leaveEvent(QEvent*) {
    Q_EMIT pointerLeft();
}

void Surface::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) follow(Pointer::kPressed, event->position());
    if (dragsView(*event)) dragged_ = event->position();
}

void Surface::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    // The first press may have toggled a point; this second one has toggled it back.
    if (event->button() == Qt::LeftButton) returnView();
}

void Surface::mouseMoveEvent(QMouseEvent* event) {
    if (!dragged_) return follow(Pointer::kMoved, event->position());
    const QPointF by = event->position() - *dragged_;
    dragged_ = event->position();
    moveView(-by.x() / area().width(), -by.y() / area().height());
}

void Surface::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) follow(Pointer::kReleased, event->position());
    if (dragsView(*event)) dragged_.reset();
}

void Surface::wheelEvent(QWheelEvent* event) {
    const QRectF shown = area();
    const QPointF at = event->position();
    const double factor = std::pow(kZoomStep, event->angleDelta().y() / 120.0);
    const QPointF around(std::clamp((at.x() - shown.left()) / shown.width(), 0.0, 1.0),
                         std::clamp((at.y() - shown.top()) / shown.height(), 0.0, 1.0));
    const bool beside = at.x() < shown.left() || at.x() > shown.right();
    const bool below = at.y() > shown.bottom() && !beside;
    zoomView(around, beside ? 1 : factor, below ? 1 : factor);
    event->accept();
}

}  // namespace tessel
