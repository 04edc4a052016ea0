// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/PaperStrokes.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tessel {

void PaperStrokes::clear() {
    strokes_.clear();
    dotCount_ = 0;
}

void PaperStrokes::addDots(std::vector<QPointF> places, double width, const QColor& colour) {
    dotCount_ += places.size();
    add([places = std::move(places), width, colour](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colour, width, Qt::SolidLine, width > 2 ? Qt::RoundCap : Qt::SquareCap));
        strokeDots(painter, places.data(), places.size());
    });
}

void PaperStrokes::draw(QPainter& painter) const {
    for (const Stroke& stroke : strokes_) {
        painter.save();
        stroke(painter);
        painter.restore();
    }
}

void strokeDots(QPainter& painter, const QPointF* places, std::size_t count) {
    constexpr std::size_t kStrokesPerPath = 5000;  // longer paths make some viewers slow
    constexpr double kStroke = 0.001;              // a stroke needs some length, or it is left out
    painter.setBrush(Qt::NoBrush);
    for (std::size_t begin = 0; begin < count; begin += kStrokesPerPath) {
        QPainterPath path;
        for (std::size_t i = begin; i < std::min(begin + kStrokesPerPath, count); ++i) {
            path.moveTo(places[i]);
            path.lineTo(places[i] + QPointF(kStroke, 0));
        }
        painter.drawPath(path);
    }
}

double pictureResolution(double wanted, const QSizeF& size) {
    constexpr double kMostPixels = 3e6;
    return std::min(wanted, std::sqrt(kMostPixels / std::max(1.0, size.width() * size.height())));
}

}  // namespace tessel
