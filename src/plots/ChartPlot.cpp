// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/ChartPlot.h"

#include "plots/AxisPainter.h"
#include "plots/ChartSymbols.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace tessel {

namespace {

using Axis = ChartViews::Axis;

constexpr int kOuterMargin = 6;
constexpr QRgb kGridColour = 0xE4E4E4;

}  // namespace

ChartPlot::Sides ChartPlot::sidesFor(const QSize& size) const {
    const int height = plotHeight(size);
    const int left = uprightAxis(Axis::kY).room(height) + kOuterMargin;
    const int right = (showsSecondScale() ? uprightAxis(Axis::kY2).room(height) : 0) + kOuterMargin;
    const int over = overhang(std::max(1, size.width() - left - right));
    return {std::max(left, over), std::max(right, over)};
}

ChartPlot::Layout ChartPlot::layOut(const QRect& place, const Sides& sides) const {
    const int width = std::max(1, place.width() - sides.left - sides.right);
    const int height = plotHeight(place.size());
    const QRect area(place.left() + sides.left, place.top() + topMargin(), width, height);
    return {
        place,
        area,
        {levelTicks(views_.view(Axis::kX), width, font_), uprightTicks(views_.view(Axis::kY), height, font_),
         uprightTicks(views_.view(Axis::kY2), height, font_)}};
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

int ChartPlot::topMargin() const {
    return lineHeight(font_) / 2 + 2;
}

int ChartPlot::bottomMargin() const {
    const int titleRoom = titles_[Axis::kX].isEmpty() ? 0 : kTitlePadding + lineHeight(font_);
    return kTickLength + kLabelPadding + lineHeight(font_) + titleRoom + kOuterMargin;
}

int ChartPlot::plotHeight(const QSize& size) const {
    return std::max(1, size.height() - topMargin() - bottomMargin());
}

UprightAxis ChartPlot::uprightAxis(Axis axis) const {
    const auto side = axis == Axis::kY ? UprightAxis::Side::kLeft : UprightAxis::Side::kRight;
    return {side, views_.view(axis), titles_[axis], font_};
}

/// How far a label at the end of a horizontal axis of this width can stand over.
int ChartPlot::overhang(int width) const {
    const Interval& view = views_.view(Axis::kX);
    const TickStep ticks = levelTicks(view, width, font_);
    const double widest = std::max(labelWidth(tickLabel(view.from, ticks), font_),
                                   labelWidth(tickLabel(view.to, ticks), font_));
    return steadyWidth(widest / 2, font_) + kOuterMargin;
}

void ChartPlot::paintGrid(QPainter& painter, const Layout& layout) const {
    const PixelMap pixels = map(layout, Axis::kY);
    const Rectangle& area = pixels.area;
    painter.setPen(QPen(QColor::fromRgb(kGridColour), 1));
    for (const double tick : ticksOn(views_.view(Axis::kX), layout.ticks[Axis::kX])) {
        const double x = sharp(painter, {pixels.pixelX(tick), area.y.from}).x();
        painter.drawLine(QPointF(x, area.y.from), QPointF(x, area.y.to));
    }
    for (const double tick : ticksOn(views_.view(Axis::kY), layout.ticks[Axis::kY])) {
        const double y = sharp(painter, {area.x.from, pixels.pixelY(tick)}).y();
        painter.drawLine(QPointF(area.x.from, y), QPointF(area.x.to, y));
    }
}

void ChartPlot::paintAxes(QPainter& painter, const Layout& layout) const {
    painter.setFont(font_);
    painter.setPen(QPen(chartInk(), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(layout.area);
    paintHorizontalAxis(painter, layout);
    for (const Axis axis : {Axis::kY, Axis::kY2})
        if (axis == Axis::kY || showsSecondScale())
            uprightAxis(axis).paint(painter, layout.ticks[axis], map(layout, axis));
}

void ChartPlot::paintHorizontalAxis(QPainter& painter, const Layout& layout) const {
    const PixelMap pixels = map(layout, Axis::kY);
    const double edge = pixels.area.y.to;
    const int height = lineHeight(font_);
    const double labels = edge + kTickLength + kLabelPadding;
    for (const double tick : ticksOn(views_.view(Axis::kX), layout.ticks[Axis::kX])) {
        const double x = pixels.pixelX(tick);
        const double line = sharp(painter, {x, edge}).x();
        painter.drawLine(QPointF(line, edge), QPointF(line, edge + kTickLength));
        drawLabel(painter, {x, labels, 0, 1.0 * height}, Qt::AlignHCenter | Qt::AlignTop,
                  QString::fromStdString(tickLabel(tick, layout.ticks[Axis::kX])));
    }
    drawLabel(painter,
              {pixels.area.x.from, labels + height + kTitlePadding, pixels.area.width(), 1.0 * height},
              Qt::AlignHCenter | Qt::AlignTop, titles_[Axis::kX]);
}

}  // namespace tessel
