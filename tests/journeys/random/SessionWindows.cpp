// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "app/survey.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

struct PlainRow {
    long sites = 0;
    double length = 0, em1 = 0, em2 = 0;
};

double mean(const std::vector<double>& values) {
    long double sum = 0;
    for (const double value : values)
        sum += value;
    return static_cast<double>(sum / static_cast<long double>(values.size()));
}

// Runs of sites with the same row number.
std::vector<PlainRow> plainRows(const PlainSurvey& survey) {
    std::vector<PlainRow> rows;
    std::size_t first = 0;
    for (const long size : survey.rowSizes()) {
        const std::size_t last = first + static_cast<std::size_t>(size) - 1;
        std::vector<double> em1, em2;
        for (std::size_t i = first; i <= last; ++i) {
            em1.push_back(survey.sites[i].em1);
            em2.push_back(survey.sites[i].em2);
        }
        const long double dx = survey.sites[first].x - survey.sites[last].x;
        const long double dy = survey.sites[first].y - survey.sites[last].y;
        rows.push_back({size, static_cast<double>(std::hypot(dx, dy)), mean(em1), mean(em2)});
        first = last + 1;
    }
    return rows;
}

}  // namespace

// Views
// ---------------------------------------------------------------------------------------------------------

void RandomSession::plotGrid() {
    showGrid(oneOf(std::vector<QString>{u"mnuGrid"_s, u"mnuGridEM1"_s, u"mnuGridEM2"_s}));
}

void RandomSession::showGrid(const QString& item) {
    if (item == u"mnuGridEM2"_s && !survey_.two && !survey_.empty() && survey_.rowsUsable()) {
        expect(u"This option is only available when 2 signal data columns are present."_s);
        return chooseItem(*main_, item);
    }
    if (!choose(item, true)) return;
    plotsHidden();
    counted_ = true;
    chart_ = u"Chart2D2"_s;
    gridOfEM2_ = item == u"mnuGridEM2"_s;
    gridOfRows_ = item == u"mnuGrid"_s;
    if (rowDialog_ && typed_ && gridOfRows_) reached_.note("a grid with rows not in force");
    compareGrid();
}

// As they are, or as they would come out of the distance that stands in the row dialog.
std::vector<long> RandomSession::rowsOfGrid() const {
    PlainSurvey foreseen = survey_;
    if (!rowDialog_ || !typed_ || !gridOfRows_) return survey_.rowSizes();
    foreseen.measure = typed_->first;
    foreseen.minDistance = typed_->second;
    return findPlainRows(foreseen) ? foreseen.rowSizes() : survey_.rowSizes();
}

void RandomSession::compareGrid() {
    const auto& chart = controlAs<Chart2D>(*main_, chart_);
    const std::vector<long> sizes = rowsOfGrid();
    same("series of the grid plot", chart.seriesCount(Chart2D::kData), static_cast<int>(sizes.size()));
    if (!difference_.empty()) return;
    std::size_t site = 0;
    for (int row = 1; row <= static_cast<int>(sizes.size()); ++row) {
        same<long>("points of series " + std::to_string(row), chart.pointCount(Chart2D::kData, row),
                   sizes[static_cast<std::size_t>(row - 1)]);
        for (qsizetype k = 1; k <= chart.pointCount(Chart2D::kData, row) && site < survey_.sites.size();
             ++k, ++site)
            if (chart.point(Chart2D::kData, row, k) !=
                Chart2D::Point{survey_.sites[site].x, survey_.sites[site].y})
                differ("a point of the grid plot differs");
    }
}

void RandomSession::plotLag() {
    const int measure = 1 + below(3);
    const QString items[] = {u"mnuTrue_Dis"_s, u"mnuX_Dis"_s, u"mnuY_Dis"_s};
    PlainSurvey plotted = survey_;
    plotted.measure = measure;
    noteVast(plotted, "a view");
    if (!choose(items[measure - 1], false)) return;
    plotsHidden();
    chart_ = u"Chart2D1"_s;
    lagMeasure_ = measure;
    redLine_ = survey_.minDistance;
    compareLag();
}

void RandomSession::compareLag() {
    PlainSurvey plotted = survey_;
    plotted.measure = lagMeasure_;
    const auto& chart = controlAs<Chart2D>(*main_, chart_);
    same<long>("points of the lag distance plot", chart.pointCount(Chart2D::kData, 1),
               static_cast<long>(plotted.sites.size()));
    if (!difference_.empty()) return;
    for (std::size_t i = 1; i < plotted.sites.size(); ++i) {
        const auto point = static_cast<qsizetype>(i);
        if (chart.point(Chart2D::kData, 1, point) != Chart2D::Point{double(i), plotted.distance(i)} ||
            chart.point(Chart2D::kData, 2, point) != Chart2D::Point{double(i), redLine_})
            differ("point " + std::to_string(i) + " of the lag distance plot differs");
    }
}

// The window says how many rows there are, or why it has none.
void RandomSession::statisticsFollow() {
    if (statistics_.isEmpty()) return;
    if (!survey_.empty() && !survey_.rowsUsable() && survey_.rowIndex > 250)
        statistics_ = u"Too many rows: Please specify a larger distance value"_s;
    else
        statistics_ =
            u"Total # of detected rows = %1"_s.arg(survey_.rowsUsable() ? survey_.rowSizes().size() : 0);
}

void RandomSession::reviewRows() {
    if (!choose(u"mnuStat"_s, true)) return;
    const std::vector<long> sizes = survey_.rowSizes();
    counted_ = sizes.size() <= 250;
    statistics_ = u"Total # of detected rows = %1"_s.arg(sizes.size());
    QWidget& window = shownWindow(u"frmStat"_s);
    compareStatistics(window, false);
    for (int clicks = below(3); clicks > 0; --clicks) {
        const bool relative = chance(50);
        clickOn(window, relative ? u"optDSR"_s : u"optDSA"_s);
        compareStatistics(window, relative);
    }
    if (chance(50)) return;
    leave(window, u"mnuStatExit"_s);
    statistics_.clear();
}

// A line a row: its number, sites, length and mean readings.
void RandomSession::compareStatistics(QWidget& window, bool relative) {
    const QAbstractItemModel& table = *controlAs<QTableView>(window, u"Stats"_s).model();
    const std::vector<PlainRow> rows = plainRows(survey_);
    same("lines of the row statistics", table.rowCount(), static_cast<int>(rows.size()));
    same("columns of the row statistics", table.columnCount(), survey_.two ? 5 : 4);
    double longest = 0;
    for (const PlainRow& row : rows)
        longest = std::max(longest, row.length);
    for (int line = 0; difference_.empty() && line < table.rowCount(); ++line) {
        const PlainRow& row = rows[static_cast<std::size_t>(line)];
        const auto cell = [&](int column) { return table.index(line, column).data().toString(); };
        sameFigure("a row's number", cell(0), line + 1, 0);
        sameFigure("a row's sites", cell(1), static_cast<double>(row.sites), 0);
        sameFigure("a row's length", cell(2),
                   relative ? row.length / (longest > 0 ? longest : 1) * 100 : row.length, 2);
        sameFigure("a row's mean EM1", cell(3), row.em1, 2);
        if (survey_.two) sameFigure("a row's mean EM2", cell(4), row.em2, 2);
    }
}

// Export
// --------------------------------------------------------------------------------------------------------

void RandomSession::exportSurvey() {
    useOrPress(*main_, u"mnuSave"_s, Qt::Key_E, Qt::ControlModifier);
    QWidget& window = shownWindow(u"frmOutput"_s);
    same("enabled Command2", control(window, u"Command2"_s).isEnabled(), false);
    bool withRows = true;
    for (int clicks = below(3); clicks > 0; --clicks) {
        const bool yes = chance(70);
        if (withRows)
            expectQuestion(yes,
                           u"Attention: This will create a GRID file format, without any row numbers.\n"
                           u"Are you sure that you wish to do this?"_s);
        withRows = !withRows || !yes;
        clickOn(window, u"chkNoRow"_s);
        const QString format = QString(survey_.ids ? u"Site_#  "_s : u""_s) + u"X_coord  Y_coord  EM1"_s +
                               (survey_.two ? u"  EM2"_s : u""_s) + (withRows ? u"  Row_#"_s : u""_s);
        sameText("Text1", controlAs<QLineEdit>(window, u"Text1"_s).text(), format);
    }
    if (!exportInto(window, withRows)) leave(window, u"Command3"_s);
}

bool RandomSession::exportInto(QWidget& window, bool withRows) {
    const int outcome = below(10);
    const std::string path = folder_ / (outcome == 0 ? "" : outcome == 1 ? "gone/out.txt" : "out.txt");
    expectFile(outcome == 0 ? QString() : QString::fromStdString(path), true);
    clickOn(window, u"Command1"_s);
    same("enabled Command2", control(window, u"Command2"_s).isEnabled(), outcome != 0);
    if (outcome == 0) return false;
    sameText("Text2", controlAs<QLineEdit>(window, u"Text2"_s).text(), QString::fromStdString(path));
    const QString first =
        oneOf(std::vector<QString>{u"1"_s, u"1"_s, u"5"_s, u"2.7"_s, u"2.5"_s, u"1e3"_s, u"0.6"_s});
    typeInto(window, u"txtBRN"_s, first);
    if (outcome == 1) {
        reached_.note("an export that fails");
        expectFailure(path + " cannot be written: ");
        clickOn(window, u"Command2"_s);
        return false;
    }
    expect(u"Output data saved to "_s + QString::fromStdString(path), u"VARN-Tesl"_s);
    clickOn(window, u"Command2"_s);
    exported_ = content_;
    const int firstRow = static_cast<int>(std::nearbyint(first.toDouble()));
    if (readFile(path) != plainTransect(survey_, withRows, firstRow)) differ("the transect file differs");
    return true;
}

// Others
// --------------------------------------------------------------------------------------------------------

void RandomSession::clearScreen() {
    chooseItem(*main_, u"mnuClear"_s);
    plotsHidden();
}

void RandomSession::tryToClose() {
    expectQuestion(false, kProgramExitQuestion);
    if (chance(30))
        main_->close();
    else
        useOrPress(*main_, u"mnuExit"_s, Qt::Key_Q, Qt::ControlModifier);
    same("visible frmMain", main_->isVisible(), true);
}

}  // namespace tessel
