// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "plots/RowPlotEditor.h"
#include "plots/chart_views.h"
#include "support/UserDriver.h"

namespace tessel {

// A closer look
// ----------------------------------------------------------------------------------------------

namespace {

// Where the plot area begins and ends at middle height: longer labels move it.
struct Sides {
    int left = 0, right = 0;
};

Sides sidesOf(const Chart2D& chart) {
    const auto inPlot = [&](int x) { return chart.pixelToData({x, chart.height() / 2}).inPlotArea; };
    Sides sides{0, chart.width() - 1};
    while (sides.left < sides.right && !inPlot(sides.left))
        ++sides.left;
    while (sides.right > sides.left && !inPlot(sides.right))
        --sides.right;
    return sides;
}

QPoint middleOf(const Chart2D& chart) {
    return chart.rect().center();
}

// What the view spans from the middle a quarter of the chart to the right and upwards.
QPointF spanOf(const Chart2D& chart) {
    const QPoint middle = middleOf(chart), beside = middle + QPoint(chart.width() / 4, -chart.height() / 4);
    const Chart2D::PixelData a = chart.pixelToData(middle), b = chart.pixelToData(beside);
    return {b.x - a.x, b.y - a.y};
}

}  // namespace

void RandomSession::lookCloser() {
    auto& chart =
        editing_ ? chance(60) ? *editor_->Chart2D3 : *editor_->Chart2D4 : controlAs<Chart2D>(*main_, chart_);
    lookCloser(chart);
    if (editing_ &&
        !(editor_->Chart2D3->views().view(ChartViews::kX) == editor_->Chart2D4->views().view(ChartViews::kX)))
        differ("map and profile show different parts of the row");
}

// The view changes, the limits that were set never do.
void RandomSession::lookCloser(Chart2D& chart) {
    const auto limits = [&] {
        return std::vector<Interval>{chart.axisRange(Chart2D::Axis::kX), chart.axisRange(Chart2D::Axis::kY),
                                     chart.axisRange(Chart2D::Axis::kY2)};
    };
    const auto before = limits();
    const QPointF span = spanOf(chart);
    const QPoint middle = middleOf(chart);
    const QPoint pixel = middle + QPoint(below(61) - 30, below(41) - 20);
    const Chart2D::PixelData at = chart.pixelToData(pixel);
    const int way = below(4);
    const Sides sides = sidesOf(chart);
    const auto fixed = [&](const QPoint& now) {
        const Chart2D::PixelData data = chart.pixelToData(now);
        const Sides moved = sidesOf(chart);
        // Pixels are counted at their middle or their corner, before zooming and after.
        const int across = 3 + 3 * (std::abs(moved.left - sides.left) + std::abs(moved.right - sides.right));
        if (std::abs(data.x - at.x) > across * 4.0 / chart.width() * std::abs(span.x()) ||
            std::abs(data.y - at.y) > 3 * 4.0 / chart.height() * std::abs(span.y()))
            differ("the view has not kept what is under the pointer");
    };
    if (way == 0) {
        const int notches = chance(70) ? 1 + below(4) : -1 - below(3);
        turnWheel(chart, pixel, notches);
        fixed(pixel);
        const QPointF now = spanOf(chart);
        if (notches > 0 ? std::abs(now.x()) >= std::abs(span.x()) : std::abs(now.x()) <= std::abs(span.x()))
            differ("the wheel has not changed the view");
    } else if (way == 1) {
        const QPoint to = pixel + QPoint(below(41) - 20, below(31) - 15);
        drag(chart, pixel, to);
        fixed(to);
    } else if (way == 2) {
        lookCloserByKeys(chart);
    } else {
        pressKey(chart, Qt::Key_Home);
        same("zoomed", chart.isZoomed(), false);
    }
    if (limits() != before) differ("looking closer has changed the limits");
}

void RandomSession::lookCloserByKeys(Chart2D& chart) {
    static constexpr Qt::Key kArrows[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
    for (int keys = 5 + below(8); keys > 0; --keys) {
        const int key = below(7);
        if (key < 2)
            pressKey(chart, Qt::Key_Plus);
        else if (key == 2)
            pressKey(chart, Qt::Key_Minus);
        else
            pressKey(chart, kArrows[key - 3], Qt::ControlModifier);
    }
}

// Paper
// ------------------------------------------------------------------------------------------------------

void RandomSession::print(const Action& choose) {
    const std::string page = folder_ / "page.pdf";
    std::filesystem::remove(page);
    const int outcome = below(4);
    printer_ = outcome == 3 ? u"no-such-printer"_s : QString();
    if (outcome == 0) {
        reached_.note("a page printed");
        expectFile(QString::fromStdString(page), true);
    } else if (outcome == 1) {
        expectFile({}, true);
    } else if (outcome == 2) {
        const std::string nowhere = folder_ / "gone/page.pdf";
        reached_.note("a page that cannot be written");
        expectFile(QString::fromStdString(nowhere), true);
        expectFailure(nowhere + " cannot be written: ");
    } else {
        reached_.note("a printer that fails");
        expectFailure("no-such-printer cannot be printed on: ");
    }
    choose();
    same("a page written", std::filesystem::exists(page), outcome == 0);
    if (outcome == 0 && !readFile(page).starts_with("%PDF-")) differ("the page is no PDF");
}

void RandomSession::savePicture(QWidget& window) {
    struct Format {
        QString option;
        const char* beginning;
    };
    const Format format =
        oneOf(std::vector<Format>{{u"optPNG"_s, "\x89PNG"}, {u"optSVG"_s, "<?xml"}, {u"optPDF"_s, "%PDF-"}});
    const std::string file = folder_ / "picture";
    std::filesystem::remove(file);
    chooseItem(window, u"mnuSavePicture"_s);
    QWidget& dialog = shownWindow(u"frmPicture"_s);
    clickOn(dialog, format.option);
    const int way = below(5);
    if (way == 0) {
        clickOn(dialog, u"cmdCancel"_s);
    } else if (way == 1) {
        expectFile({}, true);
        clickOn(dialog, u"cmdSave"_s);
        pressKey(dialog, Qt::Key_Escape);
    } else {
        expectFile(QString::fromStdString(file), true);
        clickOn(dialog, u"cmdSave"_s);
    }
    waitUntilClosed(u"frmPicture"_s);
    same("a picture saved", std::filesystem::exists(file), way > 1);
    if (way > 1 && !readFile(file).starts_with(format.beginning)) differ("the picture is of another kind");
}

void RandomSession::saveMainPicture() {
    savePicture(*main_);
}

void RandomSession::printRow() {
    const QString footer = editor_->Chart2D3->footerText();
    const bool byKey = chance(50);
    print(
        [&] { byKey ? pressKey(*main_, Qt::Key_P, Qt::ControlModifier) : clickOn(*editor_, u"Command6"_s); });
    sameText("the footer after printing", editor_->Chart2D3->footerText(), footer);
}

}  // namespace tessel
