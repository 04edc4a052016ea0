#include "app/frmMain.h"
#include "app/survey.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "support/UserDriver.h"

#include <QFile>
#include <QTableView>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

// Views
// ---------------------------------------------------------------------------------------------------------

void RandomSession::plotGrid() {
    if (!choose(u"mnuGrid"_s, true)) return;
    plotsHidden();
    counted_ = true;
    chart_ = u"Chart2D2"_s;
    const auto& chart = controlAs<Chart2D>(*main_, chart_);
    const std::vector<long> sizes = survey_.rowSizes();
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
    if (!choose(items[measure - 1], false)) return;
    plotsHidden();
    chart_ = u"Chart2D1"_s;
    const auto& chart = controlAs<Chart2D>(*main_, chart_);
    PlainSurvey plotted = survey_;
    plotted.measure = measure;
    for (std::size_t i = 1; i < plotted.sites.size(); ++i) {
        const auto point = static_cast<qsizetype>(i);
        if (chart.point(Chart2D::kData, 1, point) != Chart2D::Point{double(i), plotted.distance(i)} ||
            chart.point(Chart2D::kData, 2, point) != Chart2D::Point{double(i), survey_.minDistance})
            differ("point " + std::to_string(i) + " of the lag distance plot differs");
    }
}

void RandomSession::reviewRows() {
    if (!choose(u"mnuStat"_s, true)) return;
    const std::vector<long> sizes = survey_.rowSizes();
    counted_ = sizes.size() <= 250;
    statistics_ = u"Total # of detected rows = %1"_s.arg(sizes.size());
    QWidget& window = shownWindow(u"frmStat"_s);
    const QAbstractItemModel& table = *controlAs<QTableView>(window, u"Stats"_s).model();
    same("lines of the row statistics", table.rowCount(), static_cast<int>(sizes.size()));
    same("columns of the row statistics", table.columnCount(), survey_.two ? 5 : 4);
    for (int r = 0; difference_.empty() && r < table.rowCount(); ++r)
        same<long>("sites in line " + std::to_string(r), table.index(r, 1).data().toLongLong(),
                   sizes[static_cast<std::size_t>(r)]);
    if (chance(50)) return;
    chooseItem(window, u"mnuStatExit"_s);
    statistics_.clear();
}

// Analysis
// ------------------------------------------------------------------------------------------------------

namespace {

bool isConstant(const PlainSurvey& survey, double PlainSite::*reading) {
    return std::all_of(survey.sites.begin(), survey.sites.end(),
                       [&](const PlainSite& site) { return site.*reading == survey.sites.front().*reading; });
}

}  // namespace

// Without a spread there is no standard deviation or no slope.
void RandomSession::expectAdjustmentProblem() {
    if (survey_.sites.size() < 2 || (survey_.two && isConstant(survey_, &PlainSite::em1)))
        expect(u"Division by zero"_s);
}

void RandomSession::adjust() {
    if (!choose(u"mnuAdjust"_s, false)) return;
    QWidget& window = shownWindow(u"frmAdjustData"_s);
    expectAdjustmentProblem();
    QCoreApplication::processEvents();
    for (int times = 1 + below(4); times > 0 && difference_.empty(); --times)
        adjustOnce(window);
    clickOn(window, u"cmdFinished"_s);
}

void RandomSession::adjustOnce(QWidget& window) {
    const std::vector<QString> shifts = {u"abc"_s, u""_s, u"-2.5"_s, u"0.1"_s, u"1e-3"_s, u"0"_s};
    const std::vector<QString> factors = {u"abc"_s, u"0.0099"_s, u"-1"_s,  u"0.01"_s,
                                          u"1.1"_s, u"1.000"_s,  u"0.9"_s, u"10"_s};
    const auto add = [&](const QString& option, const QString& box, double PlainSite::*reading,
                         double& total) {
        const QString text = oneOf(shifts);
        clickOn(window, option);
        typeInto(window, box, text);
        double shift = 0;
        if (!plainNumeric(text.toStdString(), shift))
            return expect(u"Error! Non-numeric shift factor detected."_s);
        for (PlainSite& site : survey_.sites)
            site.*reading += shift;
        total += shift;
        plotsHidden();
        expectAdjustmentProblem();
    };
    const auto scale = [&](const QString& box, double PlainSite::*reading, const QString& name) {
        const QString text = oneOf(factors);
        typeInto(window, box, text);
        double factor = 0;
        QString fault;
        if (!plainNumeric(text.toStdString(), factor))
            fault = u"Error! Non-numeric %1 scale factor detected."_s.arg(name);
        else if (factor < 0.01)
            fault = u"Error! %1 Scale factor must be >= 0.01"_s.arg(name);
        return [this, reading, factor, fault] {
            if (!fault.isEmpty()) return expect(fault), false;
            for (PlainSite& site : survey_.sites)
                site.*reading *= factor;
            plotsHidden();
            return true;
        };
    };
    const int kind = below(3);
    if (kind == 0) {
        add(u"optAddEM1"_s, u"txtAdjEC1"_s, &PlainSite::em1, totalA_);
    } else if (kind == 1 && survey_.two) {
        add(u"optAddEM2"_s, u"txtAdjEC2"_s, &PlainSite::em2, totalB_);
    } else {
        clickOn(window, u"optScale"_s);
        const auto scaleEM1 = scale(u"txtScale1"_s, &PlainSite::em1, u"EM1"_s);
        // EM1 stays scaled where EM2 is refused.
        bool good = true;
        if (survey_.two) {
            const auto scaleEM2 = scale(u"txtScale2"_s, &PlainSite::em2, u"EM2"_s);
            good = scaleEM1() && scaleEM2();
        } else {
            good = scaleEM1();
        }
        if (good) expectAdjustmentProblem();
    }
    clickOn(window, u"cmdCompute"_s);
}

void RandomSession::histograms() {
    if (!choose(u"mnuHist"_s, false)) return;
    QWidget& window = shownWindow(u"frmHistForm"_s);
    if (isConstant(survey_, &PlainSite::em1) || (survey_.two && isConstant(survey_, &PlainSite::em2))) {
        expect(u"Unexpected error: request terminated."_s);
        expect(u"11"_s);
    }
    chooseItem(window, u"mnuPlot"_s);
    if (chance(80)) chooseItem(window, u"mnuDone"_s);
}

void RandomSession::correlation() {
    if (!survey_.empty() && !survey_.two) {
        expect(u"This option is only available when 2 signal data columns are present."_s);
        return chooseItem(*main_, u"mnuSigCorr"_s);
    }
    if (!choose(u"mnuSigCorr"_s, false)) return;
    QWidget& window = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(window, u"mnuPlot1"_s);
    if (chance(80)) chooseItem(window, u"mnuExit"_s);
}

// Export
// --------------------------------------------------------------------------------------------------------

void RandomSession::refuseFirstRows(QWidget& window) {
    while (chance(30)) {
        const QString bad = oneOf(std::vector<QString>{u"abc"_s, u""_s, u"0"_s, u"-2"_s, u"0.5"_s, u"1 2"_s});
        double value = 0;
        expect(plainNumeric(bad.toStdString(), value) ? u"Error! The specified beginning row number is < 1!"_s
                                                      : u"Error! The beginning row number is non-numeric!"_s);
        typeInto(window, u"txtBRN"_s, bad);
        clickOn(window, u"Command2"_s);
    }
}

void RandomSession::exportSurvey() {
    chooseItem(*main_, u"mnuSave"_s);
    QWidget& window = shownWindow(u"frmOutput"_s);
    same("enabled Command2", control(window, u"Command2"_s).isEnabled(), false);
    bool withRows = true;
    if (chance(30)) {
        withRows = chance(30);
        expectQuestion(!withRows,
                       u"Attention: This will create a GRID file format, without any row numbers.\n"
                       u"Are you sure that you wish to do this?"_s);
        clickOn(window, u"chkNoRow"_s);
    }
    files_.append(chance(10) ? QString() : QString::fromStdString(folder_ / "out.txt"));
    const bool cancelled = files_.first().isEmpty();
    clickOn(window, u"Command1"_s);
    if (cancelled) return clickOn(window, u"Command3"_s);
    refuseFirstRows(window);
    const QString first = oneOf(std::vector<QString>{u"1"_s, u"1"_s, u"5"_s, u"2.7"_s, u"2.5"_s, u"1e3"_s});
    typeInto(window, u"txtBRN"_s, first);
    expect(u"Output data saved to "_s + QString::fromStdString(folder_ / "out.txt"), u"VARN-Tesl"_s);
    clickOn(window, u"Command2"_s);
    saved_ = true;
    const int firstRow = static_cast<int>(std::nearbyint(first.toDouble()));
    if (readFile(folder_ / "out.txt") != plainTransect(survey_, withRows, firstRow))
        differ("the transect file differs");
}

// Others
// --------------------------------------------------------------------------------------------------------

void RandomSession::clearScreen() {
    chooseItem(*main_, u"mnuClear"_s);
    plotsHidden();
}

void RandomSession::otherItems() {
    switch (below(4)) {
        case 0: {
            const int power = below(3);
            expect(
                u"The printer resolution has been temporarily redefined to be %1 DPI."_s.arg(300 << power));
            chooseItem(*main_, u"mnuDPI%1"_s.arg(300 << power));
            if (theSession().PrintScale != 1 << power) differ("PrintScale differs");
            break;
        }
        case 1:
            expect(u"Warning!  File resource error.  VARN can not find the following file:\n"_s +
                   QString::fromStdString(folder_ / "helpdocs/hdoc101.rtf"));
            chooseItem(*main_, u"mnuHmain1"_s);
            break;
        case 2:
            chooseItem(*main_, u"mnuHelpAbout"_s);
            clickOn(shownWindow(u"frmAbout"_s), u"Command1"_s);
            break;
        default:
            if (canChoose("mnuEL")) chooseItem(*main_, u"mnuEL"_s);
    }
}

void RandomSession::tryToClose() {
    expectQuestion(false,
                   u"Attention: you have not exported an output VARN data file yet!\n"
                   u"Are you sure that you wish to exit the program?"_s);
    if (main_->close()) differ("the main window closed");
}
