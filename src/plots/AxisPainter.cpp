// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/AxisPainter.h"

#include "base/whole_numbers.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

/// Between two ticks, in pixels, where labels allow it: labels beside an axis need less of its length than
/// labels below one.
constexpr double kUprightTickDistance = 44;
constexpr double kLevelTickDistance = 90;

/// The way to the device of one direction: `scale` dots a unit, from `shift` on.
double onWholeDot(double place, double scale, double shift) {
    return (std::round(place * scale + shift) - shift) / scale;
}

}  // namespace

QPointF sharp(const QPainter& painter, const QPointF& place) {
    const QTransform toDevice = painter.deviceTransform();
    return {onWholeDot(place.x(), toDevice.m11(), toDevice.dx()),
            onWholeDot(place.y(), toDevice.m22(), toDevice.dy())};
}

void drawLabel(QPainter& painter, const QRectF& box, Qt::Alignment alignment, const QString& text) {
    painter.drawText(box, static_cast<int>(alignment.toInt()) | Qt::TextDontClip, text);
}

int lineHeight(const QFont& font) {
    return intAbove(QFontMetricsF(font).height());
}

double labelWidth(const std::string& label, const QFont& font) {
    return QFontMetricsF(font).horizontalAdvance(QString::fromStdString(label));
}

int steadyWidth(double width, const QFont& font) {
    const double step = 4 * QFontMetricsF(font).averageCharWidth();
    return intAbove(std::ceil(width / step) * step);
}

TickStep levelTicks(const Interval& view, int width, const QFont& font) {
    const auto extent = [&](const std::string& label) { return labelWidth(label, font); };
    const double gap = QFontMetricsF(font).averageCharWidth() * 2;
    return chooseTickStep(view, {double(width), kLevelTickDistance, gap, extent});
}

TickStep uprightTicks(const Interval& view, int height, const QFont& font) {
    const double line = QFontMetricsF(font).height();
    const auto extent = [&](const std::string&) { return line; };
    return chooseTickStep(view, {double(height), kUprightTickDistance, line * 0.4, extent});
}

double UprightAxis::widestLabel(const TickStep& ticks) const {
    double widest = 0;
    for (const double tick : ticksOn(view, ticks))
        widest = std::max(widest, labelWidth(tickLabel(tick, ticks), font));
    return widest;
}

int UprightAxis::room(int height) const {
    const int titleRoom = title.isEmpty() ? 0 : kTitlePadding + lineHeight(font);
    return kTickLength + kLabelPadding + steadyWidth(widestLabel(uprightTicks(view, height, font)), font) +
           titleRoom;
}

void UprightAxis::paint(QPainter& painter, const TickStep& ticks, const PixelMap& pixels) const {
    const int outwards = side == Side::kLeft ? -1 : 1;
    const double edge = side == Side::kLeft ? pixels.area.x.from : pixels.area.x.to;
    const double labels = edge + outwards * (kTickLength + kLabelPadding);
    for (const double tick : ticksOn(view, ticks)) {
        const double place = pixels.pixelY(tick);
        const double line = sharp(painter, {edge, place}).y();
        painter.drawLine(QPointF(edge, line), QPointF(edge + outwards * kTickLength, line));
        drawLabel(painter, {labels, place, 0, 0},
                  Qt::AlignVCenter | (outwards < 0 ? Qt::AlignRight : Qt::AlignLeft),
                  QString::fromStdString(tickLabel(tick, ticks)));
    }
    // Read with the head to the left at the left side and to the right at the right one.
    painter.save();
    painter.translate(labels + outwards * (std::ceil(widestLabel(ticks)) + kTitlePadding),
                      pixels.area.y.at(0.5));
    painter.rotate(90 * outwards);
    drawLabel(painter, {0, 0, 0, 0}, Qt::AlignHCenter | Qt::AlignBottom, title);
    painter.restore();
}

}  // namespace tessel
