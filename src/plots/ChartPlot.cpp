// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ChartPlot.h"

#include "base/whole_numbers.h"
#include "plots/ChartSymbols.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

using Axis = ChartViews::Axis;

constexpr int kTickLength = 5;
constexpr int kLabelPadding = 4;
constexpr int kTitlePadding = 5;
constexpr int kOuterMargin = 6;
constexpr QRgb kGridColour = 0xE4E4E4;

/// The room for labels of this width in whole steps of some letters, so that the plot does not jump each
/// time that labels grow or shrink by one while it is being moved.
int steadyWidth(double width, const QFontMetricsF& metrics) {
    const double step = 4 * metrics.averageCharWidth();
    return intAbove(std::ceil(width / step) * step);
}

double widthOf(const std::string& label, const QFontMetricsF& metrics) {
    return metrics.horizontalAdvance(QString::fromStdString(label));
}

int lineHeight(const QFont& font) {
    return intAbove(QFontMetricsF(font).height());
}

/// The nearest whole pixel of the painter's device, on which thin lines are sharp.
double sharp(const QPainter& painter, double place) {
    const double scale = painter.deviceTransform().m11();
    return std::round(place * scale) / scale;
}

void drawLabel(QPainter& painter, const QRectF& box, Qt::Alignment alignment, const QString& text) {
    painter.drawText(box, static_cast<int>(alignment.toInt()) | Qt::TextDontClip, text);
}

}  // namespace

ChartPlot::Sides ChartPlot::sidesFor(const QSize& size) const {
    const int height = plotHeight(size);
    const int left = labelRoom(Axis::kY, height);
    const int right = showsSecondScale() ? labelRoom(Axis::kY2, height) : kOuterMargin;
    const int over = overhang(std::max(1, size.width() - left - right));
    return {std::max(left, over), std::max(right, over)};
}

ChartPlot::Layout ChartPlot::layOut(const QRect& place, const Sides& sides) const {
    const int width = std::max(1, place.width() - sides.left - sides.right);
    const int height = plotHeight(place.size());
    const QRect area(place.left() + sides.left, place.top() + topMargin(), width, height);
    return {place,
            area,
            {horizontalTicks(width), verticalTicks(Axis::kY, height), verticalTicks(Axis::kY2, height)}};
}

PixelMap ChartPlot::map(const Layout& layout, Axis yAxis) const {
    const QRect& area = layout.area;
    return pixelMap(Rectangle::at(area.left(), area.top(), area.width(), area.height()),
                    views_.view(Axis::kX), views_.view(yAxis));
}

void ChartPlot::draw(QImage& picture, const Layout& layout) {
    picture.fill(Qt::white);
    const auto paint = [&](auto part) {
        QPainter painter(&picture);
        painter.setClipRect(layout.place);  // a chart may be too small for its labels
        (this->*part)(painter, layout);
    };
    paint(&ChartPlot::paintGrid);
    series_.draw(picture, groups_[0], map(layout, Axis::kY));
    series_.draw(picture, groups_[1], map(layout, Axis::kY2));
    paint(&ChartPlot::paintAxes);
}

void ChartPlot::print(QPainter& painter, const Layout& layout) {
    paintGrid(painter, layout);
    series_.print(painter, groups_[0], map(layout, Axis::kY));
    series_.print(painter, groups_[1], map(layout, Axis::kY2));
    paintAxes(painter, layout);
}

bool ChartPlot::showsSecondScale() const {
    return !titles_[Axis::kY2].isEmpty() || !(views_.view(Axis::kY2) == views_.view(Axis::kY));
}

int ChartPlot::titleRoom(Axis axis) const {
    return titles_[axis].isEmpty() ? 0 : kTitlePadding + lineHeight(font_);
}

int ChartPlot::topMargin() const {
    return lineHeight(font_) / 2 + 2;
}

int ChartPlot::bottomMargin() const {
    return kTickLength + kLabelPadding + lineHeight(font_) + titleRoom(Axis::kX) + kOuterMargin;
}

int ChartPlot::plotHeight(const QSize& size) const {
    return std::max(1, size.height() - topMargin() - bottomMargin());
}

TickStep ChartPlot::verticalTicks(Axis axis, int height) const {
    const QFontMetricsF metrics(font_);
    const auto extent = [&](const std::string&) { return metrics.height(); };
    return chooseTickStep(views_.view(axis), {double(height), 44, metrics.height() * 0.4, extent});
}

TickStep ChartPlot::horizontalTicks(int width) const {
    const QFontMetricsF metrics(font_);
    const auto extent = [&](const std::string& label) { return widthOf(label, metrics); };
    return chooseTickStep(views_.view(Axis::kX), {double(width), 90, metrics.averageCharWidth() * 2, extent});
}

double ChartPlot::widestLabel(Axis axis, const TickStep& ticks) const {
    const QFontMetricsF metrics(font_);
    double widest = 0;
    for (const double tick : ticksOn(views_.view(axis), ticks))
        widest = std::max(widest, widthOf(tickLabel(tick, ticks), metrics));
    return widest;
}

/// The room beside a vertical axis of this height.
int ChartPlot::labelRoom(Axis axis, int height) const {
    const double widest = widestLabel(axis, verticalTicks(axis, height));
    return kTickLength + kLabelPadding + steadyWidth(widest, QFontMetricsF(font_)) + titleRoom(axis) +
           kOuterMargin;
}

/// How far a label at the end of a horizontal axis of this width can stand over.
int ChartPlot::overhang(int width) const {
    const QFontMetricsF metrics(font_);
    const TickStep ticks = horizontalTicks(width);
    const Interval& view = views_.view(Axis::kX);
    const double widest =
        std::max(widthOf(tickLabel(view.from, ticks), metrics), widthOf(tickLabel(view.to, ticks), metrics));
    return steadyWidth(widest / 2, metrics) + kOuterMargin;
}

void ChartPlot::paintGrid(QPainter& painter, const Layout& layout) const {
    const PixelMap pixels = map(layout, Axis::kY);
    const Rectangle& area = pixels.area;
    painter.setPen(QPen(QColor::fromRgb(kGridColour), 1));
    for (const double tick : ticksOn(views_.view(Axis::kX), layout.ticks[Axis::kX])) {
        const double x = sharp(painter, pixels.pixelX(tick));
        painter.drawLine(QPointF(x, area.y.from), QPointF(x, area.y.to));
    }
    for (const double tick : ticksOn(views_.view(Axis::kY), layout.ticks[Axis::kY])) {
        const double y = sharp(painter, pixels.pixelY(tick));
        painter.drawLine(QPointF(area.x.from, y), QPointF(area.x.to, y));
    }
}

void ChartPlot::paintAxes(QPainter& painter, const Layout& layout) const {
    painter.setFont(font_);
    painter.setPen(QPen(chartInk(), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(layout.area);
    paintHorizontalAxis(painter, layout);
    paintVerticalAxis(painter, layout, Axis::kY);
    if (showsSecondScale()) paintVerticalAxis(painter, layout, Axis::kY2);
}

void ChartPlot::paintHorizontalAxis(QPainter& painter, const Layout& layout) const {
    const PixelMap pixels = map(layout, Axis::kY);
    const double edge = pixels.area.y.to;
    const int height = lineHeight(font_);
    const double labels = edge + kTickLength + kLabelPadding;
    for (const double tick : ticksOn(views_.view(Axis::kX), layout.ticks[Axis::kX])) {
        const double x = pixels.pixelX(tick);
        painter.drawLine(QPointF(sharp(painter, x), edge), QPointF(sharp(painter, x), edge + kTickLength));
        drawLabel(painter, {x, labels, 0, 1.0 * height}, Qt::AlignHCenter | Qt::AlignTop,
                  QString::fromStdString(tickLabel(tick, layout.ticks[Axis::kX])));
    }
    drawLabel(painter,
              {pixels.area.x.from, labels + height + kTitlePadding, pixels.area.width(), 1.0 * height},
              Qt::AlignHCenter | Qt::AlignTop, titles_[Axis::kX]);
}

void ChartPlot::paintVerticalAxis(QPainter& painter, const Layout& layout, Axis axis) const {
    const PixelMap pixels = map(layout, axis);
    const TickStep& ticks = layout.ticks[axis];
    const int outwards = axis == Axis::kY ? -1 : 1;
    const double edge = axis == Axis::kY ? pixels.area.x.from : pixels.area.x.to;
    const double labels = edge + outwards * (kTickLength + kLabelPadding);
    for (const double tick : ticksOn(views_.view(axis), ticks)) {
        const double y = pixels.pixelY(tick);
        painter.drawLine(QPointF(edge, sharp(painter, y)),
                         QPointF(edge + outwards * kTickLength, sharp(painter, y)));
        drawLabel(painter, {labels, y, 0, 0},
                  Qt::AlignVCenter | (outwards < 0 ? Qt::AlignRight : Qt::AlignLeft),
                  QString::fromStdString(tickLabel(tick, ticks)));
    }
    // Read with the head to the left beside the first axis and to the right beside the second one.
    painter.save();
    painter.translate(labels + outwards * (std::ceil(widestLabel(axis, ticks)) + kTitlePadding),
                      layout.area.top() + layout.area.height() / 2.0);
    painter.rotate(90 * outwards);
    drawLabel(painter, {0, 0, 0, 0}, Qt::AlignHCenter | Qt::AlignBottom, titles_[axis]);
    painter.restore();
}

}  // namespace tessel
