// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/palette16.h"
#include "journal/journal.h"
#include "plots/frmClip.h"
#include "plots/map_zones.h"

#include <QEvent>

// The map itself: the zone that is shown, and its sites, drawn as they are wanted.

namespace tessel {

namespace {

constexpr double kDotPen = 2;
constexpr qint64 kRefreshEvery = 33;  // milliseconds; the eye follows no more

}  // namespace

void frmClip::showFullMap(bool TrueScale) {
    // With every site deleted there is nothing to scale to, and nothing to draw.
    if (theSurvey().NumSites > 0) extent_ = SetMapScale(theSurvey(), TrueScale);
    mapShown_ = true;
    trueScale_ = TrueScale;
    picMapZoom->setFocusPolicy(Qt::StrongFocus);
    picMapZoom->setZoomable(true);
    mapArea->keepSquare(TrueScale);
    showScale();
    showZone(kFullMap);
    mnuZ->setEnabled(true);
    for (QWidget* frame : {frameClipC, frameLoc, frameHLR})
        frame->show();
    picMapZoom->setFocus();
}

void frmClip::showZone(const Rectangle& window) {
    picMapZoom->setScale(window);
    showState();
    DisplayMap();
}

void frmClip::DisplayMap() {
    if (!mapShown_) return;
    drawSites(Growing::kVisibly);
    picMapZoom->refresh();
}

void frmClip::drawSites(Growing growing) {
    redrawPending_ = false;
    picMapZoom->setPenWidth(kDotPen);
    picMapZoom->clear();
    sinceRefresh_.start();
    for (const IndexRange& block : drawingBlocks(theSurvey())) {
        drawBlock(block);
        if (growing == Growing::kAtOnce || sinceRefresh_.elapsed() < kRefreshEvery) continue;
        picMapZoom->refresh();
        sinceRefresh_.start();
    }
    if (comboRow->currentIndex() > 0) highlightRow(comboRow->currentIndex());
}

void frmClip::drawSites(const IndexRange& sites, int colour) {
    const SiteTable& table = theSurvey().SiteData;
    picMapZoom->drawPoints(table.column(kX) + sites.first, table.column(kY) + sites.first,
                           SiteMask.data() + sites.first, sites.count(), extent_.area(), colour);
}

// Zooming, moving and resizing come in quick succession: the sites are drawn once for each picture that
// reaches the screen, not once for each event.
void frmClip::redrawBeforeNextPaint() {
    if (picMapZoom->isPrinting() && mapShown_) {
        // A picture apart: what the screen waits for it still waits for.
        const bool pending = redrawPending_;
        drawSites(Growing::kAtOnce);
        redrawPending_ = pending;
        return;
    }
    redrawPending_ = mapShown_;
    picMapZoom->update();
}

bool frmClip::eventFilter(QObject* watched, QEvent* event) {
    if (watched == picMapZoom && event->type() == QEvent::Paint && redrawPending_)
        drawSites(Growing::kAtOnce);
    if (watched == lblState && event->type() == QEvent::Resize) reserveStateLine();
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace tessel
