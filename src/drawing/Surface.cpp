// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/Surface.h"

#include "drawing/Pixels.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
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
/// How far the pointer moves (pixels) in a hand that does not drag.
constexpr double kShaking = 3;
constexpr int kCrossGap = 4;
constexpr int kCrossArm = 11;

bool dragsView(const QMouseEvent& event) {
    return event.button() == Qt::MiddleButton || event.button() == Qt::RightButton;
}

// A picture to a screen reader, and not just something.
QAccessibleInterface* spokenSurface(const QString& /*className*/, QObject* object) {
    auto* const surface = qobject_cast<Surface*>(object);
    return surface ? new QAccessibleWidget(surface, QAccessible::Graphic) : nullptr;
}

}  // namespace

Surface::Surface(QWidget* parent) : QWidget(parent) {
    QAccessible::installFactory(spokenSurface);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
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
    if (event->matches(QKeySequence::Copy)) return copyWanted();
    if (event->modifiers().testFlag(Qt::ControlModifier) && moveByKey(event->key())) return;
    if (zoomByKey(event->key())) return;
    if (event->key() == Qt::Key_Home && returnView()) return;
    QWidget::keyPressEvent(event);
}

// The equals sign is plus without the shift key.
bool Surface::zoomByKey(int key) {
    const QPointF middle(0.5, 0.5);
    const bool closer = key == Qt::Key_Plus || key == Qt::Key_Equal;
    if (closer) zoomView(middle, kZoomStep, kZoomStep);
    if (key == Qt::Key_Minus) zoomView(middle, 1 / kZoomStep, 1 / kZoomStep);
    return closer || key == Qt::Key_Minus;
}

bool Surface::moveByKey(int key) {
    const int right = (key == Qt::Key_Right) - (key == Qt::Key_Left);
    const int down = (key == Qt::Key_Down) - (key == Qt::Key_Up);
    if (right != 0 || down != 0) moveView(right * kMoveStep, down * kMoveStep);
    return right != 0 || down != 0;
}

// Of the right button the release tells whether a menu is meant or the view was dragged.
void Surface::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) showMenu(mapToGlobal(nearestPixel(area().center())));
    event->accept();
}

void Surface::showMenu(const QPoint& place) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (canZoom()) addViewItems(*menu);
    menu->addAction(tr("&Copy the picture\tCtrl+C"), this, &Surface::copyWanted);
    menu->addAction(tr("&Save the plot as a picture"), this, &Surface::pictureWanted)
        ->setObjectName(QStringLiteral("mnuSavePicture"));
    menu->popup(place);
}

void Surface::addViewItems(QMenu& menu) {
    const auto add = [&](const QString& text, auto act) { menu.addAction(text, this, act); };
    add(tr("Zoom &in\t+"), [this] { zoomByKey(Qt::Key_Plus); });
    add(tr("Zoom &out\t-"), [this] { zoomByKey(Qt::Key_Minus); });
    add(tr("&Whole view\tHome"), [this] { returnView(); });
    menu.addSeparator();
    add(tr("Move &left\tCtrl+Left"), [this] { moveByKey(Qt::Key_Left); });
    add(tr("Move &right\tCtrl+Right"), [this] { moveByKey(Qt::Key_Right); });
    add(tr("Move &up\tCtrl+Up"), [this] { moveByKey(Qt::Key_Up); });
    add(tr("Move &down\tCtrl+Down"), [this] { moveByKey(Qt::Key_Down); });
    menu.addSeparator();
}

void Surface::leaveEvent(QEvent*) {
    Q_EMIT pointerLeft();
}

void Surface::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) follow(Pointer::kPressed, event->position(), event->modifiers());
    if (!dragsView(*event)) return;
    dragged_ = pressed_ = event->position();
    hasMoved_ = false;
}

void Surface::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    // The first press may have toggled a point; this second one has toggled it back.
    if (event->button() == Qt::LeftButton && returnsByDoubleClick()) returnView();
}

void Surface::mouseMoveEvent(QMouseEvent* event) {
    if (!dragged_) return follow(Pointer::kMoved, event->position(), event->modifiers());
    hasMoved_ = hasMoved_ || (event->position() - pressed_).manhattanLength() > kShaking;
    const QPointF by = event->position() - *dragged_;
    dragged_ = event->position();
    moveView(-by.x() / area().width(), -by.y() / area().height());
}

void Surface::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) follow(Pointer::kReleased, event->position(), event->modifiers());
    if (!dragsView(*event) || !dragged_) return;
    dragged_.reset();
    if (event->button() == Qt::RightButton && !hasMoved_) showMenu(nearestPixel(event->globalPosition()));
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
