// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/PictureBox.h"

#include "base/palette16.h"
#include "drawing/Pixels.h"
#include "drawing/point_raster.h"

#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

constexpr double kZoomStep = 0.8;
constexpr double kMoveStep = 0.1;
/// The narrowest and widest scale, and how far from the unit square it may be moved: Doubles stay exact to a
/// small part of a pixel.
constexpr double kNarrowest = 1e-6;
constexpr double kWidest = 20;
constexpr double kFarthest = 20;
constexpr int kCrossArm = 11;
constexpr double kPaperDotsPerInch = 96;
constexpr double kFinestPaper = 4;

QColor colourOf(int number) {
    return QColor::fromRgb(kBasicPalette[static_cast<std::size_t>(number & 15)]);
}

bool isUsable(const PictureBox::Scale& s) {
    return s.width > 0 && s.height > 0 && std::isfinite(s.left) && std::isfinite(s.top) &&
           std::isfinite(s.width) && std::isfinite(s.height);
}

}  // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureBox::setScale(const Scale& scale) {
    if (!isUsable(scale) || scale == scale_) return;
    scale_ = scale;
    update();
    Q_EMIT scaleChanged();
}

void PictureBox::clear() {
    picture().fill(Qt::white);
    update();
}

void PictureBox::drawPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                            const Extent& extent, int colour) {
    QImage& image = picture();
    const double resolution = image.devicePixelRatio();
    const Raster raster{reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
                        image.bytesPerLine() / 4};
    const double xUnit = image.width() / scale_.width;
    const double yUnit = image.height() / scale_.height;
    RasterMap map;
    // Half the extent, because the whole may be too large for a Double.
    map.xScale = xUnit / 2 / (extent.xMax / 2 - extent.xMin / 2);
    map.xShift = -scale_.left * xUnit - extent.xMin * map.xScale;
    map.yScale = -yUnit / 2 / (extent.yMax / 2 - extent.yMin / 2);
    map.yShift = (1 - scale_.top) * yUnit - extent.yMin * map.yScale;
    const int size = std::max(1, nearestInt(penWidth_ * resolution));
    map.left = map.top = -size;
    map.right = image.width() + size;
    map.bottom = image.height() + size;
    const Stamp stamp = penStamp(size, kBasicPalette[static_cast<std::size_t>(colour & 15)]);
    stampPoints(raster, map, stamp, x, y, skip, static_cast<std::size_t>(count), nullptr);
    update();
}

void PictureBox::drawLine(double x1, double y1, double x2, double y2, int colour) {
    QPainter painter(&picture());
    painter.setPen(QPen(colourOf(colour), penWidth_, Qt::SolidLine, Qt::FlatCap));
    // Upright and level lines are sharp without smoothing, others need it.
    painter.setRenderHint(QPainter::Antialiasing, x1 != x2 && y1 != y2);
    painter.drawLine(onCanvas(x1, y1), onCanvas(x2, y2));
    update();
}

void PictureBox::fillRectangle(double x1, double y1, double x2, double y2, int colour) {
    QPainter painter(&picture());
    painter.fillRect(rectangle(x1, y1, x2, y2), colourOf(colour));
    update();
}

void PictureBox::refresh() {
    if (!printing_) repaint();
}

void PictureBox::showRubberBand(double x1, double y1, double x2, double y2, int colour) {
    const QRect before = bandBox();
    band_ = Band{{x1, y1}, {x2, y2}, colour};
    update(before | bandBox());
}

void PictureBox::hideRubberBand() {
    update(bandBox());
    band_.reset();
}

void PictureBox::showCross(double x, double y) {
    update(crossBox());
    cross_ = QPointF(x, y);
    update(crossBox());
}

void PictureBox::hideCross() {
    update(crossBox());
    cross_.reset();
}

QPointF PictureBox::toScale(const QPointF& pixel) const {
    return {scale_.left + pixel.x() / std::max(1, width()) * scale_.width,
            scale_.top + pixel.y() / std::max(1, height()) * scale_.height};
}

QPointF PictureBox::toPixel(double x, double y) const {
    return {(x - scale_.left) / scale_.width * width(), (y - scale_.top) / scale_.height * height()};
}

QSizeF PictureBox::pixelSize() const {
    return {scale_.width / std::max(1, width()), scale_.height / std::max(1, height())};
}

void PictureBox::print(QPainter& painter, const QRectF& target) {
    const QTransform& toDevice = painter.combinedTransform();
    const double dots = toDevice.map(QLineF(0, 0, target.width(), 0)).length();
    const double width = std::max(1.0, dots / painter.device()->logicalDpiX() * kPaperDotsPerInch);
    const double height = std::max(1.0, width * target.height() / std::max(1.0, target.width()));
    const QImage shown = picture();
    const auto back = qScopeGuard([&] {
        picture_ = shown;
        printing_ = false;
        update();
    });
    printing_ = true;
    if (isSignalConnected(QMetaMethod::fromSignal(&PictureBox::redrawNeeded))) {
        renew({nearestInt(width), nearestInt(height)}, std::clamp(dots / width, 1.0, kFinestPaper));
        Q_EMIT redrawNeeded();
    }
    painter.drawImage(target, picture_);
}

QSize PictureBox::sizeHint() const {
    return {480, 360};
}

QSize PictureBox::minimumSizeHint() const {
    return {120, 80};
}

void PictureBox::focusInEvent(QFocusEvent*) {
    update();
}

void PictureBox::focusOutEvent(QFocusEvent*) {
    update();
}

void PictureBox::keyPressEvent(QKeyEvent* event) {
    const QPointF middle = QRectF(rect()).center();
    const bool moves = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
        case Qt::Key_Plus:
            return zoom(middle, kZoomStep);
        case Qt::Key_Minus:
            return zoom(middle, 1 / kZoomStep);
        case Qt::Key_Left:
            if (moves) return move(-kMoveStep, 0);
            break;
        case Qt::Key_Right:
            if (moves) return move(kMoveStep, 0);
            break;
        case Qt::Key_Up:
            if (moves) return move(0, -kMoveStep);
            break;
        case Qt::Key_Down:
            if (moves) return move(0, kMoveStep);
            break;
        default:
            break;
    }
    QWidget::keyPressEvent(event);
}

void PictureBox::leaveEvent(QEvent*) {
    Q_EMIT pointerLeft();
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const QPointF place = toScale(event->position());
        Q_EMIT pointerPressed(place.x(), place.y());
    }
    if (event->button() == Qt::MiddleButton || event->button() == Qt::RightButton)
        dragged_ = event->position();
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    if (dragged_) {
        const QPointF by = event->position() - *dragged_;
        dragged_ = event->position();
        return move(-by.x() / std::max(1, width()), -by.y() / std::max(1, height()));
    }
    const QPointF place = toScale(event->position());
    Q_EMIT pointerMoved(place.x(), place.y());
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const QPointF place = toScale(event->position());
        Q_EMIT pointerReleased(place.x(), place.y());
    }
    if (event->button() == Qt::MiddleButton || event->button() == Qt::RightButton) dragged_.reset();
}

void PictureBox::wheelEvent(QWheelEvent* event) {
    zoom(event->position(), std::pow(kZoomStep, event->angleDelta().y() / 120.0));
    event->accept();
}

void PictureBox::resizeEvent(QResizeEvent*) {
    if (fitsDisplay()) return;
    renew(size(), devicePixelRatioF());
    Q_EMIT redrawNeeded();
}

void PictureBox::showEvent(QShowEvent*) {
    // What was drawn before the first show was drawn at the size that the box has kept since, or is renewed.
    if (!fitsDisplay()) resizeEvent(nullptr);
}

void PictureBox::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!fitsDisplay() && !printing_) {
        // The display's resolution has changed. The owner draws, but not inside a paint event.
        renew(size(), devicePixelRatioF());
        QMetaObject::invokeMethod(this, &PictureBox::redrawNeeded, Qt::QueuedConnection);
    }
    painter.setClipRegion(event->region());
    painter.drawImage(QPoint(0, 0), picture_);
    paintOverlays(painter);
}

void PictureBox::renew(const QSize& size, double resolution) {
    const QSize pixels(std::max(1, nearestInt(size.width() * resolution)),
                       std::max(1, nearestInt(size.height() * resolution)));
    picture_ = QImage(pixels, QImage::Format_RGB32);
    picture_.setDevicePixelRatio(resolution);
    picture_.fill(Qt::white);
    update();
}

bool PictureBox::fitsDisplay() const {
    const double resolution = devicePixelRatioF();
    return !picture_.isNull() && picture_.devicePixelRatio() == resolution &&
           picture_.width() == std::max(1, nearestInt(width() * resolution)) &&
           picture_.height() == std::max(1, nearestInt(height() * resolution));
}

QImage& PictureBox::picture() {
    if (!printing_ && !fitsDisplay()) renew(size(), devicePixelRatioF());
    return picture_;
}

QSizeF PictureBox::canvas() const {
    return picture_.deviceIndependentSize();
}

QPointF PictureBox::onCanvas(double x, double y) const {
    // A painter clips what lies far outside only while its numbers stay small.
    const auto near = [](double value) { return std::clamp(value, -1e6, 1e6); };
    return {near((x - scale_.left) / scale_.width * canvas().width()),
            near((y - scale_.top) / scale_.height * canvas().height())};
}

QRectF PictureBox::rectangle(double x1, double y1, double x2, double y2) const {
    return QRectF(onCanvas(x1, y1), onCanvas(x2, y2)).normalized();
}

void PictureBox::zoom(const QPointF& fixed, double factor) {
    const QPointF place = toScale(fixed);
    // Width and height keep their ratio at the limits, too.
    factor = std::max(factor, kNarrowest / std::min(scale_.width, scale_.height));
    factor = std::min(factor, kWidest / std::max(scale_.width, scale_.height));
    Scale wanted;
    wanted.width = scale_.width * factor;
    wanted.height = scale_.height * factor;
    wanted.left = place.x() - fixed.x() / std::max(1, width()) * wanted.width;
    wanted.top = place.y() - fixed.y() / std::max(1, height()) * wanted.height;
    changeScaleByUser(wanted);
}

void PictureBox::move(double xPart, double yPart) {
    Scale wanted = scale_;
    wanted.left += xPart * scale_.width;
    wanted.top += yPart * scale_.height;
    changeScaleByUser(wanted);
}

void PictureBox::changeScaleByUser(const Scale& scale) {
    Scale wanted = scale;
    wanted.left = std::clamp(wanted.left, -kFarthest, kFarthest);
    wanted.top = std::clamp(wanted.top, -kFarthest, kFarthest);
    if (!zoomable_ || wanted == scale_) return;
    setScale(wanted);
    Q_EMIT redrawNeeded();
}

QRect PictureBox::bandBox() const {
    if (!band_) return {};
    const QRectF box(toPixel(band_->from.x(), band_->from.y()), toPixel(band_->to.x(), band_->to.y()));
    return pixelsAround(box.normalized().adjusted(-2, -2, 2, 2) & QRectF(rect()).adjusted(-4, -4, 4, 4));
}

QRect PictureBox::crossBox() const {
    if (!cross_) return {};
    const QPointF centre = toPixel(cross_->x(), cross_->y());
    const double reach = kCrossArm + 2;
    return pixelsAround(QRectF(centre.x() - reach, centre.y() - reach, 2 * reach, 2 * reach) &
                        QRectF(rect()));
}

void PictureBox::paintOverlays(QPainter& painter) const {
    if (band_) {
        painter.setPen(QPen(colourOf(band_->colour), 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        const QRectF far = QRectF(rect()).adjusted(-8, -8, 8, 8);
        const QRectF box(toPixel(band_->from.x(), band_->from.y()), toPixel(band_->to.x(), band_->to.y()));
        painter.drawRect(box.normalized() & far);
    }
    if (cross_) {
        const QPointF c = toPixel(cross_->x(), cross_->y());
        for (const QPen& pen : {QPen(Qt::white, 3), QPen(Qt::black, 1)}) {
            painter.setPen(pen);
            for (const int side : {-1, 1}) {
                painter.drawLine(c + QPointF(side * 4, 0), c + QPointF(side * kCrossArm, 0));
                painter.drawLine(c + QPointF(0, side * 4), c + QPointF(0, side * kCrossArm));
            }
        }
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

}  // namespace tessel
