// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/frmClip.h"

#include <QKeyEvent>

namespace tessel {

// The keyboard's way over the map.

namespace {

constexpr double kCrossStep = 10;     // pixels an arrow key moves the cross
constexpr double kCrossFineStep = 1;  // with Shift

}  // namespace

void frmClip::escape() {
    if (rectangleIsOpen())
        abandonRectangle();
    else
        close();
}

void frmClip::abandonRectangle() {
    ClickPhase = 1;
    dragging_ = false;
    picMapZoom->hideRubberBand();
    cmdClipOff->setEnabled(true);
    followSteps();
    showState();
}

void frmClip::keyPressEvent(QKeyEvent* event) {
    if (!mapShown_ || !picMapZoom->hasFocus()) return QMainWindow::keyPressEvent(event);
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? kCrossFineStep : kCrossStep;
    switch (event->key()) {
        case Qt::Key_Left:
            return moveCross(-step, 0);
        case Qt::Key_Right:
            return moveCross(step, 0);
        case Qt::Key_Up:
            return moveCross(0, -step);
        case Qt::Key_Down:
            return moveCross(0, step);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return setCornerAtCross();
        default:
            QMainWindow::keyPressEvent(event);
    }
}

// Moves the cross by so many pixels, from where the pointer was last or from the middle when that is out of
// sight.
void frmClip::moveCross(double right, double down) {
    const Rectangle& shown = picMapZoom->scale();
    const bool inSight = cross_ && shown.contains(cross_->x(), cross_->y());
    const QPointF from = inSight ? *cross_ : QPointF(shown.x.at(0.5), shown.y.at(0.5));
    const QSizeF pixel = picMapZoom->pixelSize();
    const double x = shown.x.nearest(from.x() + right * pixel.width());
    const double y = shown.y.nearest(from.y() + down * pixel.height());
    crossShown_ = true;
    picMapZoom->showCross(x, y);
    picMapZoom_MouseMove(x, y);
}

void frmClip::setCornerAtCross() {
    // A corner that nobody sees coming is none: the first Enter shows where the cross is.
    if (!crossShown_) return moveCross(0, 0);
    picMapZoom_MouseDown(cross_->x(), cross_->y());
}

}  // namespace tessel
