// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/MapArea.h"

#include <QPainter>

#include <algorithm>

namespace tessel {

namespace {

constexpr int kFrame = 1;

}  // namespace

void MapArea::setMap(QWidget* map) {
    map_ = map;
    place();
}

void MapArea::keepSquare(bool square) {
    square_ = square;
    place();
}

QSize MapArea::sizeHint() const {
    return {680, 680};
}

QSize MapArea::minimumSizeHint() const {
    return {200, 200};
}

void MapArea::resizeEvent(QResizeEvent*) {
    place();
}

void MapArea::place() {
    QRect room = rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
    const QPoint middle = room.center();
    if (square_) {
        const int side = std::min(room.width(), room.height());
        room.setSize({side, side});
        room.moveCenter(middle);
    }
    if (map_ != nullptr) map_->setGeometry(room);
    update();
}

void MapArea::paintEvent(QPaintEvent*) {
    if (map_ == nullptr) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(map_->geometry().adjusted(-kFrame, -kFrame, kFrame - 1, kFrame - 1));
}

}  // namespace tessel
