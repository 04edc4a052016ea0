// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/Chart2D.h"

#include "drawing/Pixels.h"
#include "plots/Chart2DPrivate.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

ChartViews::Axis viewAxis(Chart2D::Axis axis) {
    if (axis == Chart2D::Axis::kX) return ChartViews::kX;
    return axis == Chart2D::Axis::kY ? ChartViews::kY : ChartViews::kY2;
}

SeriesStyle firstStyle(int group) {
    if (group == Chart2D::kHighlight) return {ChartSymbol::kRing, ChartLine::kNone, 12};
    return {};
}

}  // namespace

Chart2D::Chart2D(QWidget* parent) : Surface(parent), d_(std::make_unique<Private>(*this)) {
    d_->setFont();
}

Chart2D::~Chart2D() = default;

void Chart2D::beginBatch() {
    ++d_->batches;
}

void Chart2D::endBatch() {
    d_->batches = std::max(0, d_->batches - 1);
    if (d_->batches == 0 && d_->stale) update();
}

void Chart2D::setSeriesCount(Group group, int count) {
    if (count < 0) throw RunTimeError::subscriptOutOfRange();
    ChartSeries fresh;
    fresh.style = firstStyle(group);
    d_->group(group).resize(static_cast<std::size_t>(count), fresh);
    d_->markStale();
}

int Chart2D::seriesCount(Group group) const {
    return static_cast<int>(d_->group(group).size());
}

void Chart2D::setPointCount(Group group, int series, qsizetype count) {
    ChartSeries& s = d_->series(group, series);
    if (count < 0) throw RunTimeError::subscriptOutOfRange();
    s.points.resize(static_cast<std::size_t>(count) + 1);
    s.shades.clear();
    d_->markStale();
}

qsizetype Chart2D::pointCount(Group group, int series) const {
    return static_cast<qsizetype>(d_->series(group, series).points.size()) - 1;
}

void Chart2D::setPoint(Group group, int series, qsizetype point, double x, double y) {
    setPoints(group, series, point, {&x, 1}, {&y, 1});
}

void Chart2D::setPoints(Group group, int series, qsizetype first, std::span<const double> x,
                        std::span<const double> y) {
    ChartPoints& points = d_->series(group, series).points;
    const auto from = static_cast<std::size_t>(first);
    if (first < 0 || from > points.size() || x.size() > points.size() - from || x.size() != y.size())
        throw RunTimeError::subscriptOutOfRange();
    points.set(from, x, y);
    d_->markStale();
}

void Chart2D::replacePoints(Group group, int series, std::span<const double> x, std::span<const double> y) {
    ChartSeries& s = d_->series(group, series);
    if (x.size() != y.size()) throw RunTimeError::subscriptOutOfRange();
    s.points.assign(x, y);
    s.shades.clear();
    d_->markStale();
}

Chart2D::Point Chart2D::point(Group group, int series, qsizetype point) const {
    const ChartPoints& points = d_->series(group, series).points;
    const auto i = static_cast<std::size_t>(point);
    if (point < 0 || i >= points.size()) throw RunTimeError::subscriptOutOfRange();
    return {points.x()[i], points.y()[i]};
}

void Chart2D::setSymbolColour(Group group, int series, int colour) {
    d_->series(group, series).style.colour = colour;
    d_->markStale();
}

void Chart2D::setShades(Group group, int series, std::span<const Shade> shades) {
    ChartSeries& s = d_->series(group, series);
    if (!shades.empty() && shades.size() + 1 != s.points.size()) throw RunTimeError::subscriptOutOfRange();
    s.shades.assign(shades.empty() ? 0 : 1, 0);  // of point 0
    s.shades.insert(s.shades.end(), shades.begin(), shades.end());
    d_->markStale();
}

void Chart2D::setSeriesStyle(Group group, int series, const SeriesStyle& style) {
    d_->series(group, series).style = style;
    d_->markStale();
}

SeriesStyle Chart2D::seriesStyle(Group group, int series) const {
    return d_->series(group, series).style;
}

void Chart2D::setSeriesName(Group group, int series, const QString& name) {
    d_->series(group, series).name = name.toStdString();
    update();
}

void Chart2D::setAxisRange(Axis axis, double minimum, double maximum) {
    d_->views.setLimits(viewAxis(axis), {minimum, maximum});
    d_->markStale();
}

Interval Chart2D::axisRange(Axis axis) const {
    return d_->views.limits(viewAxis(axis));
}

void Chart2D::setAxisTitle(Axis axis, const QString& title) {
    d_->plot.setTitle(viewAxis(axis), title);
    d_->markStale();
}

QString Chart2D::axisTitle(Axis axis) const {
    return d_->plot.title(viewAxis(axis));
}

void Chart2D::setHeaderText(const QString& text, const QString& shorter) {
    if (accessibleName().isEmpty() || accessibleName() == headerText()) setAccessibleName(text);
    d_->frame.setHeader(text, shorter);
    update(d_->frame.headerRect(rect()));
}

QString Chart2D::headerText() const {
    return d_->frame.header();
}

void Chart2D::setHeaderFont(double pointSize, bool bold) {
    d_->frame.setHeaderFont(pointSize, bold);
    d_->markStale();
}

void Chart2D::setFooterText(const QString& text) {
    if (text == footerText()) return;
    d_->frame.setFooter(text);
    setAccessibleDescription(text);
    update(d_->frame.footerRect(rect()));
}

QString Chart2D::footerText() const {
    return d_->frame.footer();
}

std::vector<qsizetype> Chart2D::pointsIn(Group group, int series, const QRectF& box) const {
    const Rectangle pixels = Rectangle::at(box.left(), box.top(), box.width(), box.height());
    const std::vector<std::int64_t> found =
        tessel::pointsIn(d_->series(group, series).points, d_->map(group), pixels);
    return {found.begin(), found.end()};
}

Chart2D::PixelData Chart2D::pixelToData(QPoint pixel) const {
    const PixelMap map = d_->map(kData);
    const double x = pixel.x() + 0.5;
    const double y = pixel.y() + 0.5;
    return {map.area.contains(x, y), map.dataX(x), map.dataY(y)};
}

PixelMap Chart2D::pixels() const {
    return d_->map(kData);
}

QPointF Chart2D::dataToPixel(double x, double y) const {
    const PixelMap map = d_->map(kData);
    return {map.pixelX(x), map.pixelY(y)};
}

Chart2D::Nearest Chart2D::nearestPoint(Group group, QPoint pixel, int within) const {
    const PixelMap map = d_->map(group);
    // Distances are told between pixels, which lie up to one and a half apart from the places in them.
    const double reach = within == kAnyDistance ? std::numeric_limits<double>::infinity() : within + 2.0;
    const NearestPoint found =
        tessel::nearestPoint(d_->group(group), map, pixel.x() + 0.5, pixel.y() + 0.5, reach);
    if (found.series < 0) return {};
    // Between the pixel that is pointed at and the pixel that the point falls on.
    const Point at = point(group, found.series, static_cast<qsizetype>(found.point));
    const double across = std::floor(map.pixelX(at.x)) - pixel.x();
    const double down = std::floor(map.pixelY(at.y)) - pixel.y();
    return {found.series, static_cast<qsizetype>(found.point), nearestInt(std::hypot(across, down))};
}

bool Chart2D::isZoomed() const {
    return d_->views.isZoomed();
}

const ChartViews& Chart2D::views() const {
    return d_->views;
}

void Chart2D::keepViews(const ChartViews& before) {
    d_->views.keepViews(before);
    d_->showViews();
}

void Chart2D::resetView() {
    for (Chart2D* const chart : {this, d_->companion.data()}) {
        if (chart == nullptr || !chart->isZoomed()) continue;
        chart->d_->views.reset();
        chart->d_->markStale();
    }
}

void Chart2D::alignSides(Chart2D& other) {
    for (Chart2D* const chart : {this, &other}) {
        chart->d_->aligned = chart == this ? &other : this;
        chart->d_->markStale();
    }
}

void Chart2D::shareHorizontalView(Chart2D& other) {
    d_->companion = &other;
    other.d_->companion = this;
}

void Chart2D::print(QPainter& painter, const QRectF& target) {
    const ChartFrame::Sheet sheet = d_->frame.sheet(painter, target);
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(sheet.xScale, sheet.yScale);
    const QRect whole(QPoint(0, 0), sheet.size);
    painter.fillRect(whole, Qt::white);
    d_->frame.paint(painter, whole, d_->groups);
    const QRect place = d_->frame.plotRect(whole);
    d_->plot.print(painter, d_->layOut(place, place.size()));
    painter.restore();
}

QSize Chart2D::sizeHint() const {
    return {800, 500};
}

QSize Chart2D::minimumSizeHint() const {
    return {280, 180};
}

void Chart2D::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) d_->setFont();
    QWidget::changeEvent(event);
}

// What the user does, and painting
// -----------------------------------------------------------------------------

QRectF Chart2D::area() const {
    return d_->laidOut().area;
}

void Chart2D::zoomView(const QPointF& around, double xFactor, double yFactor) {
    d_->views.zoom(around.x(), xFactor, 1 - around.y(), yFactor);
    d_->showViews();
}

void Chart2D::moveView(double right, double down) {
    d_->views.move(right, -down);
    d_->showViews();
}

bool Chart2D::returnView() {
    // The second press of a double click takes back what the first one did, in the view that both meant.
    finishBox();
    resetView();
    return true;
}

void Chart2D::resizeEvent(QResizeEvent*) {
    d_->markStale();
}

void Chart2D::paintEvent(QPaintEvent*) {
    d_->draw();
    QPainter painter(this);
    if (d_->picture.deviceIndependentSize() != QSizeF(size())) painter.fillRect(rect(), Qt::white);
    painter.drawImage(QPoint(0, 0), d_->picture);
    d_->frame.paint(painter, rect(), d_->groups);
    d_->paintLevel(painter);
    d_->paintBox(painter);
    paintOverlays(painter);
}

}  // namespace tessel
