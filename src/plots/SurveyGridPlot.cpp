// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/SurveyGridPlot.h"

#include "base/palette16.h"
#include "base/run_time_error.h"
#include "desktop/Guarded.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"
#include "plots/chart_views.h"
#include "plots/plot_limits.h"
#include "plots/reading_colours.h"
#include "plots/row_colours.h"
#include "plots/row_plot_texts.h"
#include "plots/site_texts.h"
#include "rows/row_detection.h"
#include "rows/row_sites.h"

#include <QHBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

std::vector<IndexRange> allRows(const Survey& survey) {
    std::vector<IndexRange> rows;
    for (int row = 1; row <= survey.NumRows; ++row)
        rows.push_back(rowSites(survey, row));
    return rows;
}

// As rows are coloured, but for the greys, which are those of sites in turns.
int colourOfFound(int row) {
    constexpr int kOthers = kColoursInTurn - 2;
    const int colour = row % kOthers;
    return colour < kWhite ? colour : colour + 2;
}

}  // namespace

SurveyGridPlot::SurveyGridPlot(PlotArea& area)
    : sheet_(new QWidget), Chart2D2(new Chart2D(sheet_)), scale(new ColourScale(sheet_)), area_(area) {
    Chart2D2->setObjectName(u"Chart2D2"_s);
    Chart2D2->setAccessibleName(tr("Survey grid"));
    Chart2D2->setAxisTitle(Chart2D::Axis::kX, QString::fromLatin1(coordinateTitle(kX)));
    Chart2D2->setAxisTitle(Chart2D::Axis::kY, QString::fromLatin1(coordinateTitle(kY)));
    scale->setObjectName(u"scaleGrid"_s);
    auto* const layout = new QHBoxLayout(sheet_);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(Chart2D2, 1);
    layout->addWidget(scale);
    area.addChart(sheet_);
    offerPicture(*Chart2D2, {Chart2D2, scale});
    offerPicture(*scale, {Chart2D2, scale});
    connect(Chart2D2, &Chart2D::pointerMoved, this, &SurveyGridPlot::readOut);
    connect(Chart2D2, &Chart2D::pointerLeft, Chart2D2, [this] { Chart2D2->setFooterText(restingFooter()); });
    connect(Chart2D2, &Chart2D::redrawn, scale,
            [this] { scale->alignWith(Chart2D2->plotArea().top(), Chart2D2->plotArea().bottom()); });
    connect(scale, &ColourScale::rangeChosen, this, guarded(sheet_, [this] { colourRows(); }));
}

void SurveyGridPlot::plot(std::optional<SiteColumn> reading) {
    // Counted first: where that fails, everything stays as it was.
    theJournal().recount(countPoints);
    const Hourglass hourglass(Chart2D2->window());
    area_.hidePlots();
    reading_ = reading;
    if (reading) scale->setRange(readingRange(theSurvey(), *reading));
    draw();
    sheet_->show();
    Chart2D2->setFocus();
}

// Its sites may be others now: who foresees rows does so again.
bool SurveyGridPlot::redraw() {
    foreseen_.clear();
    return drawAgain();
}

bool SurveyGridPlot::drawAgain() {
    if (theSurvey().NumSites == 0 || !rowsAreUsable(theSurvey())) return false;
    theJournal().recount(countPoints);
    if (reading_ == kEM2 && !theSurvey().TwoEMColumns) return false;
    if (reading_) scale->followRange(readingRange(theSurvey(), *reading_));
    drawInSameView();
    return true;
}

void SurveyGridPlot::drawInSameView() {
    const ChartViews before = Chart2D2->views();
    draw();
    Chart2D2->keepViews(before);
}

void SurveyGridPlot::showForeseen(const std::vector<IndexRange>& rows) {
    if (rows == foreseen_) return;
    foreseen_ = rows;
    if (!isShown() || reading_ || turnSeries_ != 0) return;
    // The survey's own rows may be more than can be shown.
    if (rows.empty() && theSurvey().NumRows > kMaxRows) return area_.hidePlots();
    drawInSameView();
}

QString SurveyGridPlot::restingFooter() const {
    if (!foresees()) return {};
    return foreseen_.size() == 1 ? tr("Not in force yet: 1 row")
                                 : tr("Not in force yet: %1 rows").arg(foreseen_.size());
}

void SurveyGridPlot::draw() {
    turnSeries_ = 0;
    Chart2D2->beginBatch();
    setLimits(fillRows());
    colourRows();
    scale->setVisible(reading_.has_value());
    Chart2D2->setHeaderText(u"Sample Grid Plot"_s);
    Chart2D2->setHeaderFont(12, true);
    Chart2D2->setFooterText(restingFooter());
    Chart2D2->endBatch();
}

// What the rows cover is found row by row, while the processor has their points at hand.
Rectangle SurveyGridPlot::fillRows() {
    const Survey& survey = theSurvey();
    rows_ = foresees() ? foreseen_ : allRows(survey);
    Chart2D2->setSeriesCount(Chart2D::kData, static_cast<int>(rows_.size()));
    int row = 0;
    Rectangle extent = siteExtent(survey, {0, std::min<SiteIndex>(1, survey.NumSites)});
    for (const IndexRange& sites : rows_) {
        Chart2D2->replacePoints(Chart2D::kData, ++row, columnOf(survey, kX, sites),
                                columnOf(survey, kY, sites));
        Chart2D2->setSymbolColour(Chart2D::kData, row, rowColour(row));
        if (sites.count() == 0) continue;  // taken out on the map
        const Rectangle covered = siteExtent(survey, sites);
        extent = {extent.x.with(covered.x), extent.y.with(covered.y)};
    }
    return extent;
}

void SurveyGridPlot::colourRows() {
    if (!reading_) return;
    const Survey& survey = theSurvey();
    scale->setTitle(QString::fromLatin1(readingTitle(*reading_)));
    const std::vector<Shade> shades = readingShades(survey, *reading_, scale->range());
    int row = 0;
    for (const IndexRange& sites : rows_)
        Chart2D2->setShades(Chart2D::kData, ++row,
                            std::span(shades).subspan(static_cast<std::size_t>(sites.first),
                                                      static_cast<std::size_t>(sites.count())));
}

void SurveyGridPlot::showFound(const RowTurns& found) {
    const ChartViews before = Chart2D2->views();
    const bool wasShown = isShown();
    if (!wasShown) area_.hidePlots();
    Chart2D2->beginBatch();
    fillFound(found);
    setLimits(siteExtent(theSurvey()));
    if (wasShown) Chart2D2->keepViews(before);
    scale->hide();
    Chart2D2->setHeaderText(tr("Rows found, not yet taken over"));
    Chart2D2->setHeaderFont(12, true);
    Chart2D2->setFooterText({});
    Chart2D2->endBatch();
    sheet_->show();
}

void SurveyGridPlot::fillFound(const RowTurns& found) {
    const Survey& survey = theSurvey();
    FoundStretches stretches = stretchesOf(survey, found);
    turnSeries_ = found.rows + 1;
    Chart2D2->setSeriesCount(Chart2D::kData, turnSeries_);
    for (int row = 1; row <= found.rows; ++row) {
        const IndexRange sites = stretches.rows[static_cast<std::size_t>(row - 1)];
        Chart2D2->replacePoints(Chart2D::kData, row, columnOf(survey, kX, sites),
                                columnOf(survey, kY, sites));
        Chart2D2->setSymbolColour(Chart2D::kData, row, colourOfFound(row));
    }
    Chart2D2->replacePoints(Chart2D::kData, turnSeries_, stretches.turnX, stretches.turnY);
    Chart2D2->setSymbolColour(Chart2D::kData, turnSeries_, kGrey);
    rows_ = std::move(stretches.rows);
}

void SurveyGridPlot::endFound() {
    if (turnSeries_ == 0 || !isShown()) return;
    bool drawn = false;
    try {
        drawn = drawAgain();
    } catch (const RunTimeError&) {
        // Of more rows than can be shown the user is told when the plot is chosen.
    }
    if (!drawn) area_.hidePlots();
}

void SurveyGridPlot::setLimits(const Rectangle& extent) {
    const PlotLimits& limits = thePlotLimits() = surveyGridLimits(extent);
    Chart2D2->setAxisRange(Chart2D::Axis::kX, limits.PlotXMin, limits.PlotXMax);
    Chart2D2->setAxisRange(Chart2D::Axis::kY, limits.PlotYMin, limits.PlotYMax);
    Chart2D2->setAxisRange(Chart2D::Axis::kY2, limits.PlotYMin, limits.PlotYMax);
}

void SurveyGridPlot::readOut(QPoint pixel) {
    const Chart2D::Nearest nearest = Chart2D2->nearestPoint(Chart2D::kData, pixel, Chart2D::kPickDistance);
    if (nearest.point < 1 || nearest.distance > Chart2D::kPickDistance)
        return Chart2D2->setFooterText(restingFooter());
    const Chart2D::Point at = Chart2D2->point(Chart2D::kData, nearest.series, nearest.point);
    const QString place = QString::fromStdString(mapReadout(at.x, at.y, true));
    if (nearest.series == turnSeries_) return Chart2D2->setFooterText(tr("In a turn, ") + place);
    const Survey& survey = theSurvey();
    const SiteIndex site = rows_[static_cast<std::size_t>(nearest.series) - 1].first + nearest.point - 1;
    Chart2D2->setFooterText(tr("Row #%1%2, %3%4, %5")
                                .arg(nearest.series)
                                .arg(foresees() ? tr(" (not in force yet)") : QString(), place,
                                     QString::fromStdString(siteNumber(survey, site)),
                                     QString::fromStdString(siteReadings(survey, site))));
}

}  // namespace tessel
