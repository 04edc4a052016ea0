// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

using Reading = double PlainSite::*;

// What is known of a column, straight from its definition.
struct PlainColumn {
    double mean = 0, sd = 0, least = 0, most = 0;
    long notPositive = 0;
};

PlainColumn columnOf(const std::vector<PlainSite>& sites, Reading reading) {
    PlainColumn column;
    long double sum = 0, squares = 0;
    column.least = column.most = sites.front().*reading;
    for (const PlainSite& site : sites) {
        sum += site.*reading;
        column.least = std::min(column.least, site.*reading);
        column.most = std::max(column.most, site.*reading);
        if (site.*reading <= 0) ++column.notPositive;
    }
    const long double mean = sum / static_cast<long double>(sites.size());
    for (const PlainSite& site : sites)
        squares += (site.*reading - mean) * (site.*reading - mean);
    column.mean = static_cast<double>(mean);
    column.sd = static_cast<double>(std::sqrt(squares / static_cast<long double>(sites.size() - 1)));
    return column;
}

bool isConstant(const std::vector<PlainSite>& sites, Reading reading) {
    return std::all_of(sites.begin(), sites.end(),
                       [&](const PlainSite& site) { return site.*reading == sites.front().*reading; });
}

struct PlainLine {
    double slope = 0, intercept = 0;
};

// The least-squares line of EM2 on EM1.
PlainLine lineOf(const std::vector<PlainSite>& sites) {
    const double x = columnOf(sites, &PlainSite::em1).mean, y = columnOf(sites, &PlainSite::em2).mean;
    long double xx = 0, xy = 0;
    for (const PlainSite& site : sites) {
        xx += (site.em1 - x) * (site.em1 - x);
        xy += (site.em1 - x) * (site.em2 - y);
    }
    const auto slope = static_cast<double>(xy / xx);
    return {slope, y - slope * x};
}

QString labelOf(QWidget& window, const QString& name) {
    return controlAs<QLabel>(window, name).text();
}

}  // namespace

// Adjustment
// -------------------------------------------------------------------------------------------------

// Without a spread there is no standard deviation or no slope.
void RandomSession::expectAdjustmentProblem() {
    if (survey_.sites.size() < 2 || (survey_.two && isConstant(survey_.sites, &PlainSite::em1)))
        expect(u"Division by zero"_s);
}

void RandomSession::adjust() {
    if (!choose(u"mnuAdjust"_s, false)) return;
    QWidget& window = shownWindow(u"frmAdjustData"_s);
    expectAdjustmentProblem();
    QCoreApplication::processEvents();
    // What is on the screen is not refreshed when an adjustment is refused.
    std::vector<PlainSite> shown = survey_.sites;
    compareAdjustment(window, shown);
    for (int times = 1 + below(4); times > 0 && difference_.empty(); --times) {
        const Adjustment adjustment = enterAdjustment(window);
        // Nothing is cleared: pressed again, it does the same again.
        for (int again = 1 + chance(20); again > 0; --again) {
            const bool refreshed = adjustment();
            if (refreshed) expectAdjustmentProblem();
            clickOn(window, u"cmdCompute"_s);
            if (refreshed) shown = survey_.sites;
            compareAdjustment(window, shown);
        }
    }
    leave(window, u"cmdFinished"_s);
}

RandomSession::Adjustment RandomSession::enterAdjustment(QWidget& window) {
    const int kind = below(3);
    if (kind == 0) return enterShift(window, u"1"_s, &PlainSite::em1, totalA_);
    if (kind == 1 && survey_.two) return enterShift(window, u"2"_s, &PlainSite::em2, totalB_);
    clickOn(window, u"optScale"_s);
    const Adjustment scaleEM1 = enterFactor(window, u"1"_s, &PlainSite::em1);
    if (!survey_.two) return scaleEM1;
    const Adjustment scaleEM2 = enterFactor(window, u"2"_s, &PlainSite::em2);
    // EM1 stays scaled where EM2 is refused.
    return [=] { return scaleEM1() && scaleEM2(); };
}

RandomSession::Adjustment RandomSession::enterShift(QWidget& window, const QString& column,
                                                    double PlainSite::*reading, double& total) {
    const QString text =
        oneOf(std::vector<QString>{u"abc"_s, u""_s, u"-2.5"_s, u"0.1"_s, u"1e-3"_s, u"0"_s, u"12 m"_s});
    clickOn(window, u"optAddEM"_s + column);
    typeInto(window, u"txtAdjEC"_s + column, text);
    return [=, this, &total] {
        double shift = 0;
        if (!plainNumeric(text.toStdString(), shift)) {
            expect(u"Error! Non-numeric shift factor detected."_s);
            return false;
        }
        for (PlainSite& site : survey_.sites)
            site.*reading += shift;
        total += shift;
        plotsFollow();
        return true;
    };
}

RandomSession::Adjustment RandomSession::enterFactor(QWidget& window, const QString& column,
                                                     double PlainSite::*reading) {
    const QString text = oneOf(std::vector<QString>{u"abc"_s, u""_s, u"0.0099"_s, u"-1"_s, u"0.01"_s,
                                                    u"1.1"_s, u"1.000"_s, u"0.9"_s, u"10"_s});
    typeInto(window, u"txtScale"_s + column, text);
    return [=, this] {
        double factor = 0;
        QString fault;
        if (!plainNumeric(text.toStdString(), factor))
            fault = u"Error! Non-numeric EM%1 scale factor detected."_s.arg(column);
        else if (factor < 0.01)
            fault = u"Error! EM%1 Scale factor must be >= 0.01"_s.arg(column);
        if (!fault.isEmpty()) {
            expect(fault);
            return false;
        }
        for (PlainSite& site : survey_.sites)
            site.*reading *= factor;
        plotsFollow();
        return true;
    };
}

void RandomSession::compareAdjustment(QWidget& window, const std::vector<PlainSite>& shown) {
    const auto figure = [&](const QString& name, bool exists, double wanted, int decimals) {
        const QString text = labelOf(window, name);
        if (exists)
            sameFigure(name.toStdString(), text, wanted, decimals);
        else
            sameText(name.toStdString(), text, u"n/a"_s);
    };
    const auto column = [&](const QString& names, bool exists, Reading reading) {
        const PlainColumn wanted = columnOf(shown, reading);
        figure(names + u'n', exists, static_cast<double>(shown.size()), 0);
        figure(names + u'u', exists, wanted.mean, 2);
        figure(names + u's', exists && shown.size() > 1, wanted.sd, 2);
        figure(names + u'm', exists, wanted.least, 2);
        figure(names + u'x', exists, wanted.most, 2);
        figure(names + u'z', exists, static_cast<double>(wanted.notPositive), 0);
    };
    column(u"lble1"_s, true, &PlainSite::em1);
    column(u"lble2"_s, survey_.two, &PlainSite::em2);
    const bool related = survey_.two && shown.size() > 1 && !isConstant(shown, &PlainSite::em1);
    const PlainLine line = lineOf(shown);
    figure(u"lblRatio"_s, related, line.slope, 3);
    figure(u"lblShift"_s, related, -line.intercept, 1);
    same("enabled optAddEM2", control(window, u"optAddEM2"_s).isEnabled(), survey_.two);
}

// Histograms and correlation
// ---------------------------------------------------------------------------------

void RandomSession::histograms() {
    if (!choose(u"mnuHist"_s, false)) return;
    QWidget& window = shownWindow(u"frmHistForm"_s);
    const bool fails = isConstant(survey_.sites, &PlainSite::em1) ||
                       (survey_.two && isConstant(survey_.sites, &PlainSite::em2));
    const auto expectProblem = [&] {
        if (!fails) return;
        expect(u"Unexpected error: request terminated."_s);
        expect(u"11"_s);
    };
    expectProblem();
    chooseItem(window, u"mnuPlot"_s);
    if (!fails) compareHistograms(window);
    const auto choosePrint = [&] { useOrPress(window, u"mnuPrint"_s, Qt::Key_P, Qt::ControlModifier); };
    if (chance(40)) {
        // What has not been plotted is plotted first.
        expectProblem();
        fails ? choosePrint() : print(choosePrint);
    }
    if (chance(70)) leave(window, u"mnuDone"_s);
}

void RandomSession::compareHistograms(QWidget& window) {
    const auto figures = [&](const QString& names, Reading reading) {
        const PlainColumn column = columnOf(survey_.sites, reading);
        const double wanted[] = {column.mean, column.sd, column.least, column.most};
        for (int k = 0; k < 4; ++k)
            sameFigure(names.toStdString(), labelOf(window, names + QString::number(k)), wanted[k], 2);
    };
    figures(u"lblH1_"_s, &PlainSite::em1);
    if (survey_.two) return figures(u"lblH2_"_s, &PlainSite::em2);
    for (int k = 0; k < 4; ++k)
        sameText("lblH2", labelOf(window, u"lblH2_%1"_s.arg(k)), u"n/a"_s);
}

void RandomSession::correlation() {
    if (!survey_.empty() && !survey_.two) {
        expect(u"This option is only available when 2 signal data columns are present."_s);
        return chooseItem(*main_, u"mnuSigCorr"_s);
    }
    if (!choose(u"mnuSigCorr"_s, false)) return;
    QWidget& window = shownWindow(u"frmSigCorrStruct"_s);
    chooseItem(window, u"mnuPlot1"_s);
    QCoreApplication::processEvents();
    auto& chart = controlAs<Chart2D>(window, u"Chart2D1"_s);
    same<long>("points of the correlation plot", chart.pointCount(Chart2D::kData, 1),
               static_cast<long>(survey_.sites.size()));
    for (std::size_t i = 0; difference_.empty() && i < survey_.sites.size(); ++i)
        if (chart.point(Chart2D::kData, 1, static_cast<qsizetype>(i) + 1) !=
            Chart2D::Point{survey_.sites[i].em1, survey_.sites[i].em2})
            differ("a point of the correlation plot differs");
    if (chance(50)) lookCloser(chart);
    if (chance(40)) print([&] { useOrPress(window, u"mnuPrint"_s, Qt::Key_P, Qt::ControlModifier); });
    if (chance(70)) leave(window, u"mnuExit"_s);
}

}  // namespace tessel
