// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/palette16.h"
#include "desktop/Guarded.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"
#include "plots/frmClip.h"

#include <QActionGroup>

// The map in the colours of a reading.

namespace tessel {

namespace {

// A colour is told by a larger dot than a place; of many sites the dots touch anyway.
constexpr SiteIndex kFewSites = 20000;

double dotPen() {
    return theSurvey().NumSites <= kFewSites ? 4 : 2;
}

// A highlighted row keeps its readings' colours, larger and on red that stands out on both sides: told apart
// by its width where red is not.
constexpr double kRowWider = 2;
constexpr double kRowGroundWider = 6;

}  // namespace

void frmClip::connectColours() {
    auto* const group = new QActionGroup(this);
    const auto join = [&](QAction* item, std::optional<SiteColumn> reading) {
        group->addAction(item);
        connect(item, &QAction::triggered, this, guarded(this, [this, reading] { colourBy(reading); }));
    };
    join(mnuColourNone, {});
    join(mnuColourEM1, kEM1);
    join(mnuColourEM2, kEM2);
    mnuColourEM2->setEnabled(theSurvey().TwoEMColumns);
    scaleReadings->hide();
    for (Surface* const surface : {static_cast<Surface*>(picMapZoom), static_cast<Surface*>(scaleReadings)})
        offerPicture(*surface, {picMapZoom, scaleReadings});
    connect(scaleReadings, &ColourScale::rangeChosen, this, guarded(this, [this] {
                shadeSites();
                redrawBeforeNextPaint();
            }));
}

void frmClip::colourBy(std::optional<SiteColumn> reading) {
    if (reading) {
        const auto range = readingRange(theSurvey(), *reading);
        scaleReadings->setTitle(QString::fromLatin1(readingTitle(*reading)));
        scaleReadings->setRange(range);
    }
    reading_ = reading;
    shadeSites();
    showScale();
    DisplayMap();
}

void frmClip::showScale() {
    scaleReadings->setVisible(reading_ && mapShown_);
}

void frmClip::shadeSites() {
    shades_.clear();
    if (reading_) shades_ = readingShades(theSurvey(), *reading_, scaleReadings->range());
}

// After sites have gone. A range that the user has chosen stays.
void frmClip::followReadings() {
    if (reading_) scaleReadings->followRange(readingRange(theSurvey(), *reading_));
    shadeSites();
}

// Without shades of every site (memory may have run out) the map shows positions.
bool frmClip::isColoured() const {
    return reading_ && shades_.size() == static_cast<std::size_t>(theSurvey().NumSites);
}

void frmClip::drawShaded(const IndexRange& sites) {
    const SiteTable& table = theSurvey().SiteData;
    picMapZoom->drawPoints(table.column(kX) + sites.first, table.column(kY) + sites.first,
                           SiteMask.data() + sites.first, sites.count(), extent_.area(),
                           shades_.data() + sites.first);
}

void frmClip::drawBlock(const IndexRange& sites) {
    if (!isColoured()) return drawSites(sites, kBlue);
    picMapZoom->setPenWidth(dotPen());
    drawShaded(sites);
}

void frmClip::highlightRow(int row) {
    const std::vector<IndexRange> runs = sitesOfRow(theSurvey(), row);
    if (isColoured()) picMapZoom->setPenWidth(dotPen() + kRowGroundWider);
    for (const IndexRange& run : runs)
        drawSites(run, kRed);
    if (!isColoured()) return;
    picMapZoom->setPenWidth(dotPen() + kRowWider);
    for (const IndexRange& run : runs)
        drawShaded(run);
}

}  // namespace tessel
