// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "plots/RowPlotEditor.h"
#include "plots/chart_views.h"
#include "support/Pixels.h"
#include "support/UserDriver.h"

namespace tessel {

// A closer look
// ----------------------------------------------------------------------------------------------

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
    const QPoint pixel = chart.rect().center() + QPoint(below(61) - 30, below(41) - 20);
    const int way = below(4);
    if (way == 0) turnWheel(chart, pixel, 120 * (chance(70) ? 1 + below(4) : -1 - below(3)));
    if (way == 1) drag(chart, pixel, pixel + QPoint(below(41) - 20, below(31) - 15));
    if (way == 2) lookCloserByKeys(chart);
    if (way == 3) {
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

void RandomSession::printRow() {
    const QString footer = editor_->Chart2D3->footerText();
    print([&] { useOrPress(*main_, u"Command6"_s, Qt::Key_P, Qt::ControlModifier); });
    sameText("the footer after printing", editor_->Chart2D3->footerText(), footer);
}

}  // namespace tessel
