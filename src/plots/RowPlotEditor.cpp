// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"

#include "app/HelpOpener.h"
#include "base/palette16.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/OptionButtons.h"
#include "journal/journal.h"
#include "plots/PlotPicture.h"
#include "plots/chart_views.h"
#include "plots/row_colours.h"
#include "plots/row_plot_texts.h"
#include "rows/row_acts.h"
#include "rows/row_detection.h"
#include "rows/row_editing.h"
#include "rows/row_entry.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 114;

constexpr SeriesStyle kEM1Profile{ChartSymbol::kDisc, ChartLine::kThin, kBlue};
constexpr SeriesStyle kEM2Profile{ChartSymbol::kSquare, ChartLine::kThin, kGreen};
constexpr SeriesStyle kSites{ChartSymbol::kDisc, ChartLine::kNone, kBlue};

Chart2D* newChart(const QString& name, const QString& accessibleName) {
    auto* const chart = new Chart2D;
    chart->setObjectName(name);
    chart->setAccessibleName(accessibleName);
    return chart;
}

void setLimits(Chart2D& chart, const PlotLimits& limits) {
    chart.setAxisRange(Chart2D::Axis::kX, limits.PlotXMin, limits.PlotXMax);
    chart.setAxisRange(Chart2D::Axis::kY, limits.PlotYMin, limits.PlotYMax);
    chart.setAxisRange(Chart2D::Axis::kY2, limits.PlotYMin, limits.PlotYMax);
}

void setSeries(Chart2D& chart, int series, std::span<const double> x, std::span<const double> y) {
    chart.setPointCount(Chart2D::kData, series, static_cast<qsizetype>(x.size()));
    chart.setPoints(Chart2D::kData, series, 1, x, y);
}

void empty(Chart2D& chart) {
    for (const auto group : {Chart2D::kData, Chart2D::kHighlight})
        for (int series = 1; series <= chart.seriesCount(group); ++series)
            chart.setPointCount(group, series, 0);
}

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

}  // namespace

RowPlotEditor::RowPlotEditor(PlotArea& area)
    : Chart2D4(newChart(u"Chart2D4"_s, tr("Row map"))),
      Chart2D3(newChart(u"Chart2D3"_s, tr("Row profile"))),
      area_(area) {
    setupUi(this);
    area.addChart(Chart2D4);
    area.addChart(Chart2D3);
    for (Chart2D* const chart : {Chart2D3, Chart2D4})
        offerPicture(*chart, {chart});
    area.addEditor(this);
    joinControls();
    joinChart(Chart2D3);
    joinChart(Chart2D4);
    Chart2D4->alignSides(*Chart2D3);
    Chart2D4->shareHorizontalView(*Chart2D3);
}

void RowPlotEditor::joinControls() {
    const auto join = [this](QAbstractButton* button, void (RowPlotEditor::*click)()) {
        connect(button, &QAbstractButton::clicked, this, guarded(this, [this, click] { (this->*click)(); }));
    };
    join(Command1, &RowPlotEditor::Command1_Click);
    join(Command2, &RowPlotEditor::Command2_Click);
    join(Command3, &RowPlotEditor::Command3_Click);
    join(Command4, &RowPlotEditor::Command4_Click);
    join(Command5, &RowPlotEditor::Command5_Click);
    join(Command6, &RowPlotEditor::Command6_Click);
    join(cmdSplit, &RowPlotEditor::cmdSplit_Click);
    join(Option1, &RowPlotEditor::Option1_Click);
    join(Option2, &RowPlotEditor::Option2_Click);
    connect(picLocator, &FieldLocator::rowClicked, this, &RowPlotEditor::rowWanted);
    connect(cmdHelp, &QPushButton::clicked, this, guarded(this, [this] { openHelp(this, kHelpDocument); }));
    connect(Text1, &QLineEdit::textEdited, this, guarded(this, [this] { Text1_Change(); }));
    connect(Text1, &QLineEdit::returnPressed, Command3, &QPushButton::click);
    colourWhileChecked(*Option1);
    colourWhileChecked(*Option2);
    tabToChosenOptions(*this);
    for (QWidget* const control : findChildren<QWidget*>())
        control->installEventFilter(this);
    window()->installEventFilter(this);
}

void RowPlotEditor::rowWanted(int row) {
    runGuarded(this, [&] { goToRow(row); });
}

void RowPlotEditor::pointWanted(Chart2D* chart, QPoint pixel) {
    runGuarded(this, [&] { press(chart, pixel); });
}

void RowPlotEditor::boxWanted(Chart2D* chart, const QRectF& box, bool taking) {
    runGuarded(this, [&] { takeBox(chart, box, taking); });
}

void RowPlotEditor::joinChart(Chart2D* chart) {
    chart->installEventFilter(this);
    chart->setSeriesCount(Chart2D::kData, 1);
    chart->setSeriesCount(Chart2D::kHighlight, 1);
    connect(chart, &Chart2D::pointerPressed, this,
            [this, chart](QPoint pixel) { pointWanted(chart, pixel); });
    chart->offerBoxes();
    connect(chart, &Chart2D::boxDrawn, this,
            [this, chart](const QRectF& box, bool taking) { boxWanted(chart, box, taking); });
    connect(chart, &Chart2D::pointerMoved, this, [this, chart](QPoint pixel) { readOut(chart, pixel); });
    connect(chart, &Chart2D::pointerLeft, this, [this, chart] { clearReadOut(chart); });
}

void RowPlotEditor::mnuX_Click() {
    openAtRowOne(true);
}

void RowPlotEditor::mnuY_Click() {
    openAtRowOne(false);
    setLimits(*Chart2D4, thePlotLimits());
}

void RowPlotEditor::openAtRowOne(bool byX) {
    // Counted first: where that fails, everything stays as it was.
    theJournal().recount(countPoints);
    const Hourglass hourglass(window());
    if (isHidden()) area_.hidePlots();
    PlotByX = byX;
    PlotByY = !byX;
    EditorStarted = true;
    Text1->clear();
    Option1->setChecked(true);
    Option1_Click();
    picLocator->followSurvey();
    show();
    showRow(1);
}

void RowPlotEditor::showRow(int row) {
    CurrentRow = row;
    enableSteps(row > 1, row < theSurvey().NumRows);
    Command6->setEnabled(true);
    Row_Plot();
}

bool RowPlotEditor::redraw() {
    if (theSurvey().NumSites == 0 || !rowsAreUsable(theSurvey())) return false;
    theJournal().recount(countPoints);
    picLocator->followSurvey();
    const Survey& survey = theSurvey();
    // While the map is open, rows that it has emptied still have their numbers, and no sites.
    const int last = std::min(survey.NumRows, survey.RowIndex);
    if (CurrentRow > last)
        showRow(last);
    else
        redrawRow();
    return true;
}

void RowPlotEditor::redrawRow() {
    const ChartViews profile = Chart2D3->views(), map = Chart2D4->views();
    showRow(CurrentRow);
    Chart2D3->keepViews(profile);
    Chart2D4->keepViews(map);
}

void RowPlotEditor::enableSteps(bool back, bool forward) {
    Command1->setEnabled(back);
    Command2->setEnabled(forward);
}

IndexRange RowPlotEditor::sites() const {
    // The number of an emptied row is that of the next one already.
    return rowEmptied_ ? IndexRange{} : rowSites(theSurvey(), CurrentRow);
}

std::span<const double> RowPlotEditor::along() const {
    return columnOf(theSurvey(), alongColumn(PlotByX), sites());
}

std::span<const double> RowPlotEditor::across() const {
    return columnOf(theSurvey(), acrossColumn(PlotByX), sites());
}

void RowPlotEditor::Row_Plot() {
    Chart2D3->beginBatch();
    selection_.clear();
    showNotice({});
    rowEmptied_ = false;
    cursor_ = 0;
    fillProfile();
    thePlotLimits() = rowProfileLimits(theSurvey(), sites(), PlotByX);
    setLimits(*Chart2D3, thePlotLimits());
    Chart2D3->setAxisTitle(Chart2D::Axis::kX, QString::fromLatin1(coordinateTitle(alongColumn(PlotByX))));
    Chart2D3->setAxisTitle(Chart2D::Axis::kY, u"ECa (mS/m)"_s);
    Draw_Row_Map();
    picLocator->showRow(sites(), rowColour(CurrentRow));
    drawHighlights();
    Chart2D3->endBatch();
    showCharts();
}

void RowPlotEditor::fillProfile() {
    const Survey& survey = theSurvey();
    const int series = survey.TwoEMColumns ? 2 : 1;
    Chart2D3->setSeriesCount(Chart2D::kData, series);
    Chart2D3->setSeriesCount(Chart2D::kHighlight, series);
    for (int s = 1; s <= series; ++s) {
        setSeries(*Chart2D3, s, along(), columnOf(survey, s == 1 ? kEM1 : kEM2, sites()));
        Chart2D3->setSeriesStyle(Chart2D::kData, s, s == 1 ? kEM1Profile : kEM2Profile);
        if (series == 2) Chart2D3->setSeriesName(Chart2D::kData, s, s == 1 ? u"EM1"_s : u"EM2"_s);
    }
    if (series == 1) Chart2D3->setSeriesName(Chart2D::kData, 1, {});
}

void RowPlotEditor::Draw_Row_Map() {
    Chart2D4->beginBatch();
    setSeries(*Chart2D4, 1, along(), across());
    Chart2D4->setSeriesStyle(Chart2D::kData, 1, kSites);
    thePlotLimits() = rowMapLimits(theSurvey(), sites(), PlotByX);
    setLimits(*Chart2D4, thePlotLimits());
    Chart2D4->setAxisTitle(Chart2D::Axis::kX, QString::fromLatin1(coordinateTitle(alongColumn(PlotByX))));
    Chart2D4->setAxisTitle(Chart2D::Axis::kY, QString::fromLatin1(coordinateTitle(acrossColumn(PlotByX))));
    showHeader();
    Chart2D4->endBatch();
}

void RowPlotEditor::showHeader() {
    const SiteIndex points = sites().count();
    Chart2D4->setHeaderText(text(rowHeader(CurrentRow, points)), text(shortRowHeader(CurrentRow, points)));
}

void RowPlotEditor::showCharts() {
    hideCursor();
    for (Chart2D* const chart : {Chart2D3, Chart2D4}) {
        chart->setFooterText(QString::fromLatin1(kNoPointSelected));
        chart->show();
    }
    // The keys that move along the row work at once, whichever button has been pressed.
    Chart2D3->setFocus();
}

void RowPlotEditor::Command1_Click() {
    const Hourglass hourglass(window());
    showRow(CurrentRow - 1);
}

void RowPlotEditor::Command2_Click() {
    const Hourglass hourglass(window());
    // The next row has moved up into the number of a row that was emptied.
    showRow(rowEmptied_ ? CurrentRow : CurrentRow + 1);
}

void RowPlotEditor::Command3_Click() {
    const RowEntry entry = checkRow(Text1->text().toStdString(), theSurvey().NumRows);
    if (entry.fault == EntryFault::kNone) {
        const Hourglass hourglass(window());
        return showRow(entry.row);
    }
    tell(this, QString::fromLatin1(entryMessage(entry.fault)));
    if (entry.fault == EntryFault::kNotNumeric) {
        hide();
        show();
    }
    Text1->setFocus();
    Text1->selectAll();
}

void RowPlotEditor::Command4_Click() {
    hide();
    Chart2D3->hide();
    Chart2D4->hide();
    closeEditor(true);
}

void RowPlotEditor::closeEditor(bool finished) {
    if (std::exchange(EditorStarted, false)) Q_EMIT closed(finished);
    selection_.clear();
    cursor_ = 0;
}

void RowPlotEditor::Option1_Click() {
    Command3->setEnabled(false);
    Command5->setEnabled(selection_.SelCount > 0);  // which Option2 has disabled
}

void RowPlotEditor::Option2_Click() {
    Command3->setEnabled(true);
    Command5->setEnabled(false);
    Text1->setFocus();
}

// Whoever types a number means to specify one.
void RowPlotEditor::Text1_Change() {
    if (Option2->isChecked()) return;
    Option2->setChecked(true);
    Option2_Click();
}

void RowPlotEditor::Command5_Click() {
    {
        const Hourglass hourglass(window());
        const RemovedSites removed = theJournal().perform(
            deletionOfPicked(CurrentRow, selection_),
            [this](Survey& survey) { return deleteSelectedSites(survey, CurrentRow, selection_); });
        picLocator->followSurvey();
        if (removed.rows > 0)
            showEmptiedRow();
        else
            showShortenedRow();
        followDeletion();
    }
    Q_EMIT surveyChanged();
}

// One site is selected, something of the row stands before it, and there may be one row more.
bool RowPlotEditor::canSplit() const {
    return selection_.SelCount == 1 && canSplitRow(theSurvey(), sites().first + selection_.SelPoints[0] - 1);
}

void RowPlotEditor::cmdSplit_Click() {
    {
        const Hourglass hourglass(window());
        const SiteIndex place = selection_.SelPoints[0];
        const SiteIndex site = sites().first + place - 1;
        theJournal().perform(divisionOf(CurrentRow, place),
                             [site](Survey& survey) { return splitRow(survey, site); });
        showRow(CurrentRow);
    }
    Q_EMIT rowSplit();
}

// What the user has zoomed in on stays in view.
void RowPlotEditor::showShortenedRow() {
    const ChartViews profile = Chart2D3->views(), map = Chart2D4->views();
    if (CurrentRow != 1)
        Row_Plot();
    else if (PlotByX)
        mnuX_Click();
    else
        mnuY_Click();
    Chart2D3->keepViews(profile);
    Chart2D4->keepViews(map);
}

// Its axes stand around the survey's extent, X horizontal in either orientation, and say so.
void RowPlotEditor::showEmptiedRow() {
    rowEmptied_ = true;
    cursor_ = 0;
    showNotice({});
    empty(*Chart2D3);
    empty(*Chart2D4);
    drawHighlights();
    theJournal().recount(findExtents);
    const PlotLimits limits = emptiedRowLimits(theSurvey());
    setLimits(*Chart2D4, limits);
    Chart2D3->setAxisRange(Chart2D::Axis::kX, limits.PlotXMin, limits.PlotXMax);
    for (Chart2D* const chart : {Chart2D3, Chart2D4})
        chart->setAxisTitle(Chart2D::Axis::kX, QString::fromLatin1(coordinateTitle(kX)));
    Chart2D4->setAxisTitle(Chart2D::Axis::kY, QString::fromLatin1(coordinateTitle(kY)));
    showHeader();
    showCharts();
}

void RowPlotEditor::followDeletion() {
    const int rows = theSurvey().NumRows;
    if (CurrentRow < rows)
        enableSteps(Command1->isEnabled() || CurrentRow != 1, true);
    else
        enableSteps(true, false);
    if (rows < 2) enableSteps(false, false);
    Command6->setEnabled(true);
}

}  // namespace tessel
