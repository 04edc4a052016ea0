// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSigCorrStruct.h"

#include "analysis/correlation_axes.h"
#include "app/HelpOpener.h"
#include "base/palette16.h"
#include "base/run_time_error.h"
#include "base/session.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Printing.h"
#include "desktop/Windows.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"
#include "plots/chart_views.h"
#include "plots/site_texts.h"

#include <QPainter>
#include <QScopeGuard>

#include <cmath>
#include <span>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 115;
constexpr double kPrintCorner = 200;  // device units, at every resolution
constexpr double kPrintSize = 2000;   // device units at 300 dpi

std::span<const double> readings(const Survey& survey, SiteColumn column) {
    return {survey.SiteData.column(column), static_cast<std::size_t>(survey.NumSites)};
}

}  // namespace

frmSigCorrStruct::frmSigCorrStruct(QWidget* parent) : QMainWindow(parent) {
    setupUi(this);
    resizeOnScreen(*this, {640, 680});
    Chart2D1->hide();
    offerPicture(*Chart2D1, {Chart2D1});
    connect(Chart2D1, &Chart2D::pointerMoved, this, &frmSigCorrStruct::readOut);
    connect(Chart2D1, &Chart2D::pointerLeft, Chart2D1, [this] { Chart2D1->setFooterText({}); });
    connect(mnuPlot1, &QAction::triggered, this, guarded(this, [this] { mnuPlot1_Click(); }));
    connect(mnuPrint, &QAction::triggered, this, guarded(this, [this] { mnuPrint_Click(); }));
    connect(mnuSavePicture, &QAction::triggered, this, guarded(this, [this] { mnuSavePicture_Click(); }));
    connect(mnuSDChelp, &QAction::triggered, this, guarded(this, [this] { openHelp(this, kHelpDocument); }));
    connect(mnuExit, &QAction::triggered, this, guarded(this, [this] { close(); }));
}

void frmSigCorrStruct::mnuPlot1_Click() {
    // The survey may have been imported anew since the window was opened, or all its sites deleted.
    if (!theSurvey().TwoEMColumns)
        return tell(this, u"This option is only available when 2 signal data columns are present."_s);
    if (theSurvey().NumSites == 0) return tell(this, u"There is no more point left in the file!"_s);
    const Hourglass hourglass(this);
    Chart2D1->beginBatch();
    const auto end = qScopeGuard([this] { Chart2D1->endBatch(); });
    MakeChart();
    Chart2D1->setHeaderText(u"Conductivity Signal Data Correlation Plot"_s);
    Chart2D1->setAxisTitle(Chart2D::Axis::kX, u"1st Signal Data Column (EC1)"_s);
    Chart2D1->setAxisTitle(Chart2D::Axis::kY, u"2nd Signal Data Column (EC2)"_s);
    lblHint->hide();
    Chart2D1->show();
}

void frmSigCorrStruct::redraw() {
    if (Chart2D1->isHidden()) return;
    if (!theSurvey().TwoEMColumns || theSurvey().NumSites == 0) return showHint();
    const ChartViews before = Chart2D1->views();
    Chart2D1->beginBatch();
    const auto end = qScopeGuard([this] { Chart2D1->endBatch(); });
    try {
        MakeChart();
        Chart2D1->keepViews(before);
    } catch (const RunTimeError&) {
        showHint();
    }
}

void frmSigCorrStruct::showHint() {
    Chart2D1->hide();
    lblHint->show();
}

// Series 2 is as long as series 1 and consists of points that are not there.
void frmSigCorrStruct::MakeChart() {
    const Survey& survey = theSurvey();
    const Rectangle axes = correlationAxes(survey);
    finder_.clear();
    Chart2D1->setFooterText({});
    Chart2D1->setSeriesCount(Chart2D::kData, 2);
    Chart2D1->setPointCount(Chart2D::kData, 1, survey.NumSites);
    Chart2D1->setPointCount(Chart2D::kData, 2, survey.NumSites);
    Chart2D1->setPoints(Chart2D::kData, 1, 1, readings(survey, kEM1), readings(survey, kEM2));
    Chart2D1->setAxisRange(Chart2D::Axis::kX, axes.x.from, axes.x.to);
    Chart2D1->setAxisRange(Chart2D::Axis::kY, axes.y.from, axes.y.to);
    Chart2D1->setSeriesStyle(Chart2D::kData, 1, {ChartSymbol::kDisc, ChartLine::kNone, kBlue});
    Chart2D1->setSeriesStyle(Chart2D::kData, 2, {ChartSymbol::kNone, ChartLine::kNone, kBlue});
}

void frmSigCorrStruct::readOut(QPoint pixel) {
    const Survey& survey = theSurvey();
    if (finder_.isEmpty()) finder_.index(readings(survey, kEM1), readings(survey, kEM2));
    const SiteIndex site =
        finder_.nearest(Chart2D1->pixels(), pixel.x() + 0.5, pixel.y() + 0.5, Chart2D::kPickDistance).site;
    if (site < 0) return Chart2D1->setFooterText({});
    Chart2D1->setFooterText(QString::fromStdString("Site sequence number = " + std::to_string(site) + ", " +
                                                   rowAndSite(survey, site) + ", " +
                                                   siteReadings(survey, site)));
}

void frmSigCorrStruct::mnuSavePicture_Click() {
    if (Chart2D1->isHidden()) mnuPlot1_Click();
    savePlot(this, PlotPicture({Chart2D1}));
}

void frmSigCorrStruct::mnuPrint_Click() {
    if (Chart2D1->isHidden()) mnuPlot1_Click();
    if (Chart2D1->isHidden()) return;  // and the user has been told why
    const Hourglass hourglass(this);
    const double size = std::nearbyint(kPrintSize * theSession().PrintScale);
    printPage(this, windowTitle(), [this, size](QPainter& painter, const QPrinter&) {
        Chart2D1->print(painter, QRectF(kPrintCorner, kPrintCorner, size, size));
    });
}

}  // namespace tessel
