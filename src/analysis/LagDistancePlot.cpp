// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/LagDistancePlot.h"

#include "base/numbers.h"
#include "base/palette16.h"
#include "desktop/Guarded.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"
#include "plots/chart_views.h"
#include "plots/site_texts.h"
#include "rows/row_detection.h"

#include <QKeyEvent>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kDistances = 1;  // series
constexpr int kMinimum = 2;

// Calculated anew; the measure chosen for row detection stays.
LagDistances measured(LagMeasure measure) {
    theJournal().remeasure([=](const Survey& survey, SurveyCounts& counts, DistanceArrays& distances) {
        measureDistances(survey, distanceModeOf(measure), counts, distances);
    });
    return lagDistances(theSurvey(), measure);
}

QString metres(double distance) {
    return QLocale::c().toString(distance, 'f', QLocale::FloatingPointShortest) + u" m"_s;
}

}  // namespace

LagDistancePlot::LagDistancePlot(PlotArea& area) : Chart2D1(new Chart2D), area_(area) {
    Chart2D1->setObjectName(u"Chart2D1"_s);
    Chart2D1->setAccessibleName(tr("Lag distances"));
    Chart2D1->setAxisTitle(Chart2D::Axis::kX, u"Site sequence number"_s);
    Chart2D1->setAxisTitle(Chart2D::Axis::kY, u"Distance (meters)"_s);
    Chart2D1->setSeriesCount(Chart2D::kData, 2);
    Chart2D1->setSeriesName(Chart2D::kData, kDistances, tr("Distance"));
    Chart2D1->setSeriesName(Chart2D::kData, kMinimum, tr("Minimum distance"));
    area.addChart(Chart2D1);
    offerPicture(*Chart2D1, {Chart2D1});
    connect(Chart2D1, &Chart2D::pointerMoved, this, &LagDistancePlot::readOut);
    connect(Chart2D1, &Chart2D::levelMoved, this, [this](double distance) {
        Q_EMIT distanceChosen(distanceModeOf(measure_), std::max(0.0, distance));
    });
    Chart2D1->installEventFilter(this);
    connect(Chart2D1, &Chart2D::pointerLeft, Chart2D1, [this] { Chart2D1->setFooterText({}); });
}

void LagDistancePlot::mnuTrue_Dis_Click() {
    plot(LagMeasure::kTrueDistance);
}

void LagDistancePlot::mnuX_Dis_Click() {
    plot(LagMeasure::kAlongX);
}

void LagDistancePlot::mnuY_Dis_Click() {
    plot(LagMeasure::kAlongY);
}

void LagDistancePlot::plot(LagMeasure measure) {
    const Hourglass hourglass(Chart2D1->window());
    const LagDistances lag = measured(measure);
    area_.hidePlots();
    measure_ = measure;
    draw(lag);
    Chart2D1->show();
    Chart2D1->setFocus();
}

bool LagDistancePlot::redraw() {
    if (theSurvey().NumSites == 0) return false;
    const LagDistances lag = measured(measure_);
    const ChartViews before = Chart2D1->views();
    draw(lag);
    Chart2D1->keepViews(before);
    return true;
}

void LagDistancePlot::draw(const LagDistances& lag) {
    pixels_.clear();
    Chart2D1->beginBatch();
    fill(lag);
    setStyles(theSurvey().NumSites);
    Chart2D1->setAxisRange(Chart2D::Axis::kX, 0, static_cast<double>(theSurvey().NumSites));
    Chart2D1->setAxisRange(Chart2D::Axis::kY, 0, lag.top);
    Chart2D1->setHeaderText(
        QString::fromLatin1(lag.header.data(), static_cast<qsizetype>(lag.header.size())));
    Chart2D1->setHeaderFont(12, true);
    Chart2D1->setFooterText({});
    showLine();
    Chart2D1->endBatch();
}

void LagDistancePlot::showTyped(int distanceMode, std::optional<double> distance) {
    typedMode_ = distanceMode;
    typed_ = distance;
    showLine();
}

void LagDistancePlot::offerChoice(bool open) {
    offersChoice_ = open;
    showLine();
}

bool LagDistancePlot::hasChoice() const {
    return typed_ && typedMode_ == distanceModeOf(measure_);
}

void LagDistancePlot::showLine() {
    Chart2D1->setLevelMovable(offersChoice_);
    if (!offersChoice_ && !hasChoice()) return Chart2D1->hideLevel();
    const double distance = hasChoice() ? *typed_ : theSurvey().MinDistance;
    Chart2D1->showLevel(distance, metres(distance));
}

bool LagDistancePlot::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !hasChoice()) return QObject::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) Q_EMIT choiceAccepted();
    if (key == Qt::Key_Escape) Q_EMIT choiceGivenUp();
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}

// Both series have as many points as there are sites; point i is site i's distance from site i - 1, so that
// the last one stays a hole. Part by part, so that what is not kept stays in the processor's cache.
void LagDistancePlot::fill(const LagDistances& lag) {
    const auto sites = static_cast<qsizetype>(lag.distances.size());
    for (const int series : {kDistances, kMinimum}) {
        Chart2D1->setPointCount(Chart2D::kData, series, sites);
        Chart2D1->setPoint(Chart2D::kData, series, sites, kHole, kHole);
    }
    constexpr qsizetype kPart = 4096;
    const std::vector<double> minimum(kPart, theSurvey().MinDistance);
    for (qsizetype first = 1; first < sites; first += kPart) {
        const auto count = static_cast<std::size_t>(std::min(kPart, sites - first));
        const std::vector<double> numbers = sequenceNumbers(first, static_cast<SiteIndex>(count));
        const auto distances = lag.distances.subspan(static_cast<std::size_t>(first), count);
        Chart2D1->setPoints(Chart2D::kData, kDistances, first, numbers, distances);
        Chart2D1->setPoints(Chart2D::kData, kMinimum, first, numbers, std::span(minimum).first(count));
    }
}

void LagDistancePlot::setStyles(SiteIndex sites) {
    // A line needs two points.
    const ChartSymbol symbol = sites < 3 ? ChartSymbol::kDisc : ChartSymbol::kNone;
    Chart2D1->setSeriesStyle(Chart2D::kData, kDistances, {symbol, ChartLine::kThin, kLightBlue});
    Chart2D1->setSeriesStyle(Chart2D::kData, kMinimum, {symbol, ChartLine::kThin, kLightRed});
}

void LagDistancePlot::readOut(QPoint pixel) {
    const Survey& survey = theSurvey();
    const auto distances = lagDistances(survey, measure_).distances;
    const std::int64_t site =
        pixels_.nearest(Chart2D1->pixels(), distances, pixel.x(), pixel.y(), Chart2D::kPickDistance).point;
    if (site < 0) return Chart2D1->setFooterText({});
    const std::string place = rowAndSite(survey, site) + ", " + sitePlace(survey, site);
    Chart2D1->setFooterText(
        tr("Site sequence number = %1, Distance = %2, %3")
            .arg(site)
            .arg(QString::fromStdString(pictureFormat(distances[static_cast<std::size_t>(site)], 2)),
                 QString::fromStdString(place)));
}

}  // namespace tessel
