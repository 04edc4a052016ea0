// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/Chart2D.h"

#include "base/run_time_error.h"
#include "drawing/Pixels.h"
#include "plots/Chart2DPrivate.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

ChartViews::Axis viewAxis(Chart2D::Axis axis) {
    if (axis == Chart2D::Axis::X) return ChartViews::kX;
    return axis == Chart2D::Axis::Y ? ChartViews::kY : ChartViews::kY2;
}

SeriesStyle firstStyle(int group) {
    if (group == Chart2D::kHighlight) return {ChartSymbol::Ring, ChartLine::None, 12};
    return {};
}

}  // namespace

Chart2D::Chart2D(QWidget* parent) : QWidget(parent), d_(std::make_unique<Private>(this)) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAttribute(Qt::WA_OpaquePaintEvent);
    d_->frame.setFont(font(), logicalDpiY());
    d_->plot->setTextFont(d_->frame.textFont());
    connect(d_->plot, &QCustomPlot::afterReplot, this, &Chart2D::redrawn);
}

Chart2D::~Chart2D() = default;

void Chart2D::beginBatch() {
    ++d_->batches;
    d_->plot->hold(true);
}

void Chart2D::endBatch() {
    d_->batches = std::max(0, d_->batches - 1);
    if (d_->batches == 0) d_->plot->hold(false);
}

void Chart2D::setSeriesCount(Group group, int count) {
    if (count < 0) throw RunTimeError::subscriptOutOfRange();
    ChartSeries fresh;
    fresh.style = firstStyle(group);
    d_->group(group).resize(static_cast<std::size_t>(count), fresh);
    d_->plot->markStale();
    update();
}

int Chart2D::seriesCount(Group group) const {
    return static_cast<int>(d_->group(group).size());
}

void Chart2D::setPointCount(Group group, int series, qsizetype count) {
    ChartSeries& s = d_->series(group, series);
    if (count < 0) throw RunTimeError::subscriptOutOfRange();
    s.points.resize(static_cast<std::size_t>(count) + 1);
    d_->plot->markStale();
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
    d_->plot->markStale();
}

void Chart2D::replacePoints(Group group, int series, std::span<const double> x, std::span<const double> y) {
    ChartSeries& s = d_->series(group, series);
    if (x.size() != y.size()) throw RunTimeError::subscriptOutOfRange();
    s.points.assign(x, y);
    d_->plot->markStale();
}

Chart2D::Point Chart2D::point(Group group, int series, qsizetype point) const {
    const ChartPoints& points = d_->series(group, series).points;
    const auto i = static_cast<std::size_t>(point);
    if (point < 0 || i >= points.size()) throw RunTimeError::subscriptOutOfRange();
    return {points.x()[i], points.y()[i]};
}

void Chart2D::setSymbolColour(Group group, int series, int colour) {
    d_->series(group, series).style.colour = colour;
    d_->plot->markStale();
    update();
}

void Chart2D::setSeriesStyle(Group group, int series, const SeriesStyle& style) {
    d_->series(group, series).style = style;
    d_->plot->markStale();
    update();
}

SeriesStyle Chart2D::seriesStyle(Group group, int series) const {
    return d_->series(group, series).style;
}

void Chart2D::setSeriesName(Group group, int series, const QString& name) {
    d_->series(group, series).name = name.toStdString();
    update();
}

void Chart2D::setAxisRange(Axis axis, double minimum, double maximum) {
    d_->views.setLimits(viewAxis(axis), minimum, maximum);
    d_->showViews();
}

Chart2D::Range Chart2D::axisRange(Axis axis) const {
    const ChartViews::Limits& limits = d_->views.limits(viewAxis(axis));
    return {limits.minimum, limits.maximum};
}

void Chart2D::setAxisTitle(Axis axis, const QString& title) {
    d_->plot->setTitle(d_->plotAxis(axis), title);
}

QString Chart2D::axisTitle(Axis axis) const {
    return d_->plotAxis(axis)->label();
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
    d_->plot->setGeometry(d_->frame.plotRect(rect()));
    update();
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

Chart2D::PixelData Chart2D::pixelToData(QPoint pixel) const {
    const PixelMap map = d_->map(rect(), false);
    const double x = pixel.x() + 0.5;
    const double y = pixel.y() + 0.5;
    return {map.area.contains(x, y), map.dataX(x), map.dataY(y)};
}

QPointF Chart2D::dataToPixel(double x, double y) const {
    const PixelMap map = d_->map(rect(), false);
    return {map.pixelX(x), map.pixelY(y)};
}

Chart2D::Nearest Chart2D::nearestPoint(Group group, QPoint pixel, int within) const {
    const PixelMap map = d_->map(rect(), group == kHighlight);
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

void Chart2D::showCross(double x, double y) {
    d_->plot->setCross(QPointF(x, y));
}

void Chart2D::hideCross() {
    d_->plot->setCross(std::nullopt);
}

void Chart2D::showLevel(double y) {
    d_->plot->setLevel(y);
}

void Chart2D::hideLevel() {
    d_->plot->setLevel({});
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
    d_->shareHorizontalView();
}

void Chart2D::resetView() {
    for (Chart2D* const chart : {this, d_->companion.data()}) {
        if (chart == nullptr || !chart->isZoomed()) continue;
        chart->d_->views.reset();
        chart->d_->showViews();
    }
}

void Chart2D::alignSides(Chart2D& other) {
    d_->plot->alignSides(*other.d_->plot);
}

void Chart2D::shareHorizontalView(Chart2D& other) {
    d_->companion = &other;
    other.d_->companion = this;
}

void Chart2D::print(QPainter& painter, const QRectF& target) const {
    const ChartFrame::Sheet sheet = d_->frame.sheet(painter, target);
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(sheet.xScale, sheet.yScale);
    const QRect whole(QPoint(0, 0), sheet.size);
    d_->frame.paint(painter, whole, d_->groups);
    const QRect place = d_->frame.plotRect(whole);
    painter.translate(place.topLeft());
    d_->plot->print(painter, place.size());
    painter.restore();
}

QSize Chart2D::sizeHint() const {
    return {800, 500};
}

QSize Chart2D::minimumSizeHint() const {
    return {280, 180};
}

void Chart2D::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        d_->frame.setFont(font(), logicalDpiY());
        d_->plot->setTextFont(d_->frame.textFont());
        d_->plot->setGeometry(d_->frame.plotRect(rect()));
        update();
    }
    QWidget::changeEvent(event);
}

}  // namespace tessel
