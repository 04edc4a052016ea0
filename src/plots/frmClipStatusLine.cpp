// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/frmClip.h"
#include "plots/map_zones.h"

#include <QAction>

#include <algorithm>

// The line under the map: what can be done now, and what part of the field is shown.

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// What the user can do in this state, in one line.
const char* textOf(MapState state) {
    switch (state) {
        case MapState::kNotShown:
            return "Choose a full map in the View menu.";
        case MapState::kBrowsing:
            return "Clip Grid begins to mask sites in rectangles.";
        case MapState::kFirstCorner:
            return "Click the first corner of a rectangle, or drag over it. Finished ends clipping.";
        case MapState::kSecondCorner:
            return "Click the second corner, or press Esc to give the rectangle up.";
    }
    return "";
}

QString lineOf(MapState state, const QString& zone, bool trueScale) {
    QString text = frmClip::tr(textOf(state));
    if (state == MapState::kNotShown) return text;
    return frmClip::tr("%1 Shown: %2, %3 resolution.")
        .arg(text, zone, trueScale ? frmClip::tr("true") : frmClip::tr("max"));
}

}  // namespace

MapState frmClip::state() const {
    if (!mapShown_) return MapState::kNotShown;
    if (!ClipMode) return MapState::kBrowsing;
    return rectangleIsOpen() ? MapState::kSecondCorner : MapState::kFirstCorner;
}

QString frmClip::zoneShown() const {
    const Rectangle& shown = picMapZoom->scale();
    if (shown == kFullMap) return tr("full map");
    for (const MapZone& zone : kMapZones)
        if (zone.window == shown)
            return findChild<QAction*>(
                       QLatin1StringView(zone.item.data(), static_cast<qsizetype>(zone.item.size())))
                ->text()
                .remove(u'&');
    return tr("a view of your own");
}

void frmClip::showState() {
    lblState->setText(lineOf(state(), zoneShown(), trueScale_));
}

// The line has the room of the longest text, so that no text changes the size of the map.
void frmClip::reserveStateLine() {
    const QRect width(0, 0, lblState->width(), 0);
    int height = 0;
    for (const MapState state :
         {MapState::kNotShown, MapState::kBrowsing, MapState::kFirstCorner, MapState::kSecondCorner}) {
        const QString text = lineOf(state, mnuZc13h->text(), true);
        height =
            std::max(height, lblState->fontMetrics().boundingRect(width, Qt::TextWordWrap, text).height());
    }
    lblState->setFixedHeight(height);
}

}  // namespace tessel
