// SPDX-License-Identifier: GPL-3.0-or-later
// The map of the window with suspicious sites.
#include "analysis/frmSuspects.h"
#include "base/palette16.h"
#include "desktop/Guarded.h"
#include "drawing/Pixels.h"
#include "plots/PlotPicture.h"
#include "plots/chart_views.h"
#include "plots/plot_limits.h"
#include "plots/reading_colours.h"
#include "plots/site_texts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// The series of the map, and those that lie over it: of several sites at one place the pointer means the
// flagged one.
constexpr int kAllSites = 1;
constexpr int kFlagged = 1;
constexpr int kChosen = 2;

std::span<const double> columnOfAll(const Survey& survey, int column) {
    return {survey.SiteData.column(column), static_cast<std::size_t>(survey.NumSites)};
}

}  // namespace

void frmSuspects::joinMap() {
    mapSuspects->setAxisTitle(Chart2D::Axis::kX, u"X (meters)"_s);
    mapSuspects->setAxisTitle(Chart2D::Axis::kY, u"Y (meters)"_s);
    mapSuspects->setSeriesCount(Chart2D::kData, kAllSites);
    mapSuspects->setSeriesCount(Chart2D::kHighlight, kChosen);
    mapSuspects->setSymbolColour(Chart2D::kData, kAllSites, kBlue);
    mapSuspects->setSymbolColour(Chart2D::kHighlight, kChosen, kBlack);
    scaleSuspects->hide();
    for (Surface* const surface : std::initializer_list<Surface*>{mapSuspects, scaleSuspects})
        offerPicture(*surface, {mapSuspects, scaleSuspects});
    connect(mapSuspects, &Chart2D::pointerMoved, this, [this](QPoint pixel) { readOut(pixel); });
    connect(mapSuspects, &Chart2D::pointerLeft, mapSuspects, [this] { mapSuspects->setFooterText({}); });
    connect(mapSuspects, &Chart2D::pointerPressed, this, [this](QPoint pixel) { pickOnMap(pixel); });
    connect(mapSuspects, &Chart2D::redrawn, scaleSuspects, [this] {
        scaleSuspects->alignWith(mapSuspects->plotArea().top(), mapSuspects->plotArea().bottom());
    });
    connect(cboColours, &QComboBox::activated, this, guarded(this, [this] { colourMap(); }));
    connect(scaleSuspects, &ColourScale::rangeChosen, this, guarded(this, [this] { colourMap(); }));
}

void frmSuspects::drawMap() {
    const ChartViews before = mapSuspects->views();
    const PlotLimits limits = surveyGridLimits(siteExtent(*survey_));
    mapSuspects->beginBatch();
    mapSuspects->replacePoints(Chart2D::kData, kAllSites, columnOfAll(*survey_, kX),
                               columnOfAll(*survey_, kY));
    mapSuspects->setPointCount(Chart2D::kHighlight, kChosen, 0);
    mapSuspects->setAxisRange(Chart2D::Axis::kX, limits.PlotXMin, limits.PlotXMax);
    mapSuspects->setAxisRange(Chart2D::Axis::kY, limits.PlotYMin, limits.PlotYMax);
    mapSuspects->keepViews(before);
    colourMap();
    mapSuspects->endBatch();
}

// A range that the user has chosen stays. Among colours the flagged sites are ringed: their own colours are
// seen, and eyes that tell no red from green find them.
void frmSuspects::colourMap() {
    const int chosen = cboColours->currentIndex();
    const bool coloured = chosen > 0;
    const SiteColumn column = chosen == 2 ? kEM2 : kEM1;
    std::vector<Shade> shades;
    if (coloured) {
        const QString title = QString::fromLatin1(readingTitle(column));
        const Interval range = readingRange(*survey_, column);
        if (scaleSuspects->title() == title)
            scaleSuspects->followRange(range);
        else
            scaleSuspects->setRange(range);
        scaleSuspects->setTitle(title);
        shades = readingShades(*survey_, column, scaleSuspects->range());
    }
    mapSuspects->beginBatch();
    mapSuspects->setShades(Chart2D::kData, kAllSites, shades);
    mapSuspects->setSeriesStyle(
        Chart2D::kHighlight, kFlagged,
        {coloured ? ChartSymbol::kRing : ChartSymbol::kDisc, ChartLine::kNone, kLightRed});
    mapSuspects->endBatch();
    scaleSuspects->setVisible(coloured);
}

void frmSuspects::drawFlagged() {
    const SitePlaces places = placesOf(*survey_, model_->flagged());
    mapSuspects->beginBatch();
    mapSuspects->replacePoints(Chart2D::kHighlight, kFlagged, places.x, places.y);
    mapSuspects->setPointCount(Chart2D::kHighlight, kChosen, 0);
    mapSuspects->endBatch();
}

void frmSuspects::showOnMap(const QModelIndex& line) {
    mapSuspects->setPointCount(Chart2D::kHighlight, kChosen, line.isValid() ? 1 : 0);
    mapSuspects->hideCross();
    if (!line.isValid()) return;
    const SiteIndex site = model_->siteAt(line.row());
    const double x = survey_->SiteData(kX, site), y = survey_->SiteData(kY, site);
    mapSuspects->setPoint(Chart2D::kHighlight, kChosen, 1, x, y);
    if (!mapSuspects->pixelToData(nearestPixel(mapSuspects->dataToPixel(x, y))).inPlotArea)
        mapSuspects->resetView();
    mapSuspects->showCross(x, y);
    mapSuspects->setFooterText(textOf(site));
}

SiteIndex frmSuspects::siteUnder(QPoint pixel) const {
    const auto pointOf = [&](Chart2D::Group group, int series) -> qsizetype {
        const Chart2D::Nearest nearest = mapSuspects->nearestPoint(group, pixel, Chart2D::kPickDistance);
        const bool meant = nearest.series == series && nearest.distance <= Chart2D::kPickDistance;
        return meant ? nearest.point : -1;
    };
    const qsizetype flagged = pointOf(Chart2D::kHighlight, kFlagged);
    if (flagged > 0) return model_->flagged()[static_cast<std::size_t>(flagged - 1)];
    const qsizetype any = pointOf(Chart2D::kData, kAllSites);
    return any > 0 ? any - 1 : -1;
}

void frmSuspects::readOut(QPoint pixel) {
    const SiteIndex site = siteUnder(pixel);
    mapSuspects->setFooterText(site < 0 ? QString() : textOf(site));
}

QString frmSuspects::textOf(SiteIndex site) const {
    std::string text =
        rowAndSite(*survey_, site) + ", " + sitePlace(*survey_, site) + ", " + siteReadings(*survey_, site);
    const std::string rules = ruleNames(model_->suspects().flags[static_cast<std::size_t>(site)]);
    if (!rules.empty()) text += ": " + rules;
    return QString::fromStdString(text);
}

// A flagged site is chosen in the table too.
void frmSuspects::pickOnMap(QPoint pixel) {
    const SiteIndex site = siteUnder(pixel);
    const int line = site < 0 ? -1 : model_->lineOf(site);
    if (line >= 0) tblSuspects->setCurrentIndex(model_->index(line, 0));
}

}  // namespace tessel
