// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/PictureBox.h"

#include "base/palette16.h"
#include "drawing/Pixels.h"

#include <QMetaMethod>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>
#include <vector>

namespace tessel {

namespace {

/// The narrowest and widest scale, and how far from the unit square it may be moved: Doubles stay exact to a
/// small part of a pixel.
constexpr double kNarrowest = 1e-6;
constexpr double kWidest = 20;
constexpr Interval kReach{-20, 20};
/// Of a picture among strokes and on pixels, in pixels to one of 96 an inch.
constexpr double kCoarsestPaper = 3;
constexpr double kFinestPaper = 4;

QColor colourOf(int number) {
    return QColor::fromRgb(kBasicPalette[static_cast<std::size_t>(number & 15)]);
}

PixelMap mapOnto(const QSizeF& size, const Rectangle& extent, const Rectangle& scale) {
    const double xUnit = size.width() / scale.width();
    const double yUnit = size.height() / scale.height();
    PixelMap map;
    map.area = Rectangle::at(0, 0, size.width(), size.height());
    map.xScale = xUnit / 2 / extent.x.halfLength();
    map.xShift = -scale.x.from * xUnit - extent.x.from * map.xScale;
    map.yScale = -yUnit / 2 / extent.y.halfLength();
    map.yShift = (1 - scale.y.from) * yUnit - extent.y.from * map.yScale;
    return map;
}

bool isUsable(const Interval& side) {
    return side.length() > 0 && std::isfinite(side.from) && std::isfinite(side.length());
}

}  // namespace

PictureBox::PictureBox(QWidget* parent) : Surface(parent) {}

void PictureBox::setScale(const Rectangle& scale) {
    if (!isUsable(scale.x) || !isUsable(scale.y)) return;
    home_ = scale;
    if (scale == scale_) return;
    setShown(scale);
}

void PictureBox::setShown(const Rectangle& scale) {
    scale_ = scale;
    update();
    Q_EMIT scaleChanged();
}

void PictureBox::clear() {
    picture().fill(Qt::white);
    strokes_.clear();
    update();
}

void PictureBox::drawPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                            const Rectangle& extent, int colour) {
    const PixelMap map = pixelsOf(extent);
    const Stamp stamp = penStamp(penSize(), kBasicPalette[static_cast<std::size_t>(colour & 15)]);
    stampPoints(rasterOf(picture_), map, stamp, x, y, skip, static_cast<std::size_t>(count), nullptr);
    recordPoints(x, y, skip, count, map, [colour](qsizetype) { return colourOf(colour).rgb(); });
    update();
}

void PictureBox::drawPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                            const Rectangle& extent, const Shade* shades) {
    const PixelMap map = pixelsOf(extent);
    const Stamp stamp = penStamp(penSize(), 0);
    stampPoints(rasterOf(picture_), map, stamp, shades, x, y, skip, static_cast<std::size_t>(count), nullptr);
    mostDots_ = kMostColouredStrokes;
    recordPoints(x, y, skip, count, map, [shades](qsizetype i) { return colourMap()[shades[i]]; });
    update();
}

int PictureBox::penSize() const {
    return std::max(1, nearestInt(penWidth_ * picture_.devicePixelRatio()));
}

/// Of the picture, which is renewed first where it has to be.
PixelMap PictureBox::pixelsOf(const Rectangle& extent) {
    const QImage& image = picture();
    const int size = penSize();
    PixelMap map = mapOnto(image.size(), extent, scale_);
    map.area = {{-1.0 * size, 1.0 * image.width() + size}, {-1.0 * size, 1.0 * image.height() + size}};
    return map;
}

// Only as many as there may be strokes; with one more there is a picture.
template <typename ColourOf>
void PictureBox::recordPoints(const double* x, const double* y, const std::uint8_t* skip, qsizetype count,
                              const PixelMap& map, const ColourOf& colourOf) {
    if (!printing_) return;
    const double resolution = picture_.devicePixelRatio();
    const Rectangle seen = Rectangle::at(0, 0, picture_.width(), picture_.height());
    std::vector<QPointF> places;  // of one colour, one behind the other
    QRgb colour = 0;
    const auto add = [&] {
        if (!places.empty()) strokes_.addDots(std::exchange(places, {}), penWidth_, QColor::fromRgb(colour));
    };
    for (qsizetype i = 0; i < count && strokes_.dotCount() + places.size() <= mostDots_; ++i) {
        const QPointF at(map.pixelX(x[i]), map.pixelY(y[i]));
        if (!seen.contains(at.x(), at.y()) || (skip && skip[i])) continue;
        if (colourOf(i) != colour) add();
        colour = colourOf(i);
        places.push_back(at / resolution);
    }
    add();
}

void PictureBox::paint(const PaperStrokes::Stroke& stroke) {
    QPainter painter(&picture());
    stroke(painter);
    if (printing_) strokes_.add(stroke);
    update();
}

void PictureBox::drawLine(double x1, double y1, double x2, double y2, int colour) {
    picture();
    const QPen pen(colourOf(colour), penWidth_, Qt::SolidLine, Qt::FlatCap);
    // Upright and level lines are sharp without smoothing, others need it.
    paint([=, smooth = x1 != x2 && y1 != y2, from = onCanvas(x1, y1),
           to = onCanvas(x2, y2)](QPainter& painter) {
        painter.setPen(pen);
        painter.setRenderHint(QPainter::Antialiasing, smooth);
        painter.drawLine(from, to);
    });
}

void PictureBox::fillRectangle(double x1, double y1, double x2, double y2, int colour) {
    picture();
    paint([box = rectangle(x1, y1, x2, y2), fill = colourOf(colour)](QPainter& painter) {
        painter.fillRect(box, fill);
    });
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

QPointF PictureBox::toScale(const QPointF& pixel) const {
    return {scale_.x.at(pixel.x() / area().width()), scale_.y.at(pixel.y() / area().height())};
}

QPointF PictureBox::toPixel(double x, double y) const {
    return {scale_.x.partOf(x) * width(), scale_.y.partOf(y) * height()};
}

PixelMap PictureBox::pixelsShown(const Rectangle& extent) const {
    return mapOnto(area().size(), extent, scale_);
}

QSizeF PictureBox::pixelSize() const {
    return {scale_.width() / area().width(), scale_.height() / area().height()};
}

void PictureBox::print(QPainter& painter, const QRectF& target) {
    const QSizeF sheet = sheetSize(painter, target);
    const bool onPixels = painter.paintEngine()->type() == QPaintEngine::Raster;
    const double resolution = painter.device()->logicalDpiX() / kSheetDotsPerInch;
    const QImage shown = picture();
    const auto back = qScopeGuard([&] {
        picture_ = shown;
        printing_ = false;
        strokes_.clear();
        update();
    });
    printing_ = true;
    mostDots_ = kMostStrokes;
    const bool isDrawn = isSignalConnected(QMetaMethod::fromSignal(&PictureBox::redrawNeeded));
    if (isDrawn) {
        renew({nearestInt(sheet.width()), nearestInt(sheet.height())},
              onPixels ? std::clamp(resolution, 1.0, kFinestPaper)
                       : pictureResolution(std::clamp(resolution, kCoarsestPaper, kFinestPaper), sheet));
        Q_EMIT redrawNeeded();
    }
    if (!isDrawn || strokes_.dotCount() > mostDots_) return painter.drawImage(target, picture_);
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / canvas().width(), target.height() / canvas().height());
    painter.fillRect(QRectF({}, canvas()), Qt::white);
    strokes_.draw(painter);
    painter.restore();
}

QSize PictureBox::sizeHint() const {
    return {480, 360};
}

QSize PictureBox::minimumSizeHint() const {
    return {120, 80};
}

QRectF PictureBox::area() const {
    return {0, 0, std::max(1.0, 1.0 * width()), std::max(1.0, 1.0 * height())};
}

void PictureBox::follow(Pointer pointer, const QPointF& pixel, Qt::KeyboardModifiers) {
    const QPointF place = toScale(pixel);
    if (pointer == Pointer::kPressed) Q_EMIT pointerPressed(place.x(), place.y());
    if (pointer == Pointer::kReleased) Q_EMIT pointerReleased(place.x(), place.y());
    if (pointer == Pointer::kMoved) Q_EMIT pointerMoved(place.x(), place.y());
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
    paintBand(painter);
    paintOverlays(painter);
}

void PictureBox::renew(const QSize& size, double resolution) {
    const QSize pixels(std::max(1, nearestInt(size.width() * resolution)),
                       std::max(1, nearestInt(size.height() * resolution)));
    picture_ = QImage(pixels, QImage::Format_RGB32);
    if (picture_.isNull() && printing_) throw std::bad_alloc();
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
    return {near(scale_.x.partOf(x) * canvas().width()), near(scale_.y.partOf(y) * canvas().height())};
}

QRectF PictureBox::rectangle(double x1, double y1, double x2, double y2) const {
    return QRectF(onCanvas(x1, y1), onCanvas(x2, y2)).normalized();
}

// Width and height keep their ratio at the limits, too.
void PictureBox::zoomView(const QPointF& around, double xFactor, double) {
    double factor = std::max(xFactor, kNarrowest / std::min(scale_.width(), scale_.height()));
    factor = std::min(factor, kWidest / std::max(scale_.width(), scale_.height()));
    changeScaleByUser(scale_.x.stretched(around.x(), factor), scale_.y.stretched(around.y(), factor));
}

void PictureBox::moveView(double right, double down) {
    changeScaleByUser(scale_.x.startingAt(scale_.x.at(right)), scale_.y.startingAt(scale_.y.at(down)));
}

bool PictureBox::returnView() {
    changeScaleByUser(home_.x, home_.y);
    return zoomable_;
}

void PictureBox::changeScaleByUser(const Interval& x, const Interval& y) {
    const Rectangle wanted{x.startingAt(kReach.nearest(x.from)), y.startingAt(kReach.nearest(y.from))};
    if (!zoomable_ || wanted == scale_) return;
    setShown(wanted);
    Q_EMIT redrawNeeded();
}

QRect PictureBox::bandBox() const {
    if (!band_) return {};
    const QRectF box(toPixel(band_->from.x(), band_->from.y()), toPixel(band_->to.x(), band_->to.y()));
    return pixelsAround(box.normalized().adjusted(-2, -2, 2, 2) & QRectF(rect()).adjusted(-4, -4, 4, 4));
}

void PictureBox::paintBand(QPainter& painter) const {
    if (!band_) return;
    painter.setPen(QPen(colourOf(band_->colour), 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    const QRectF far = QRectF(rect()).adjusted(-8, -8, 8, 8);
    const QRectF box(toPixel(band_->from.x(), band_->from.y()), toPixel(band_->to.x(), band_->to.y()));
    painter.drawRect(box.normalized() & far);
}

}  // namespace tessel
