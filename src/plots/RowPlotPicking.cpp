// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/RowPlotEditor.h"
#include "plots/row_plot_texts.h"

namespace tessel {

// The pointer on the row plots.

namespace {

void showNothing(Chart2D& chart) {
    chart.setFooterText(QString::fromLatin1(kNoPointSelected));
    chart.unsetCursor();
}

}  // namespace

bool RowPlotEditor::pick(const Chart2D& chart, QPoint pixel) {
    const Chart2D::Nearest nearest = chart.nearestPoint(Chart2D::kData, pixel);
    PickSeries = nearest.series;
    PickPoint = nearest.point;
    PickDistance = nearest.distance;
    return chart.pixelToData(pixel).inPlotArea && PickPoint > 0 && PickSeries == 1 &&
           PickDistance <= Chart2D::kPickDistance;
}

void RowPlotEditor::readOut(Chart2D* chart, QPoint pixel) {
    if (pick(*chart, pixel)) {
        chart->setFooterText(readoutOf(chart, PickPoint));
        chart->setCursor(Qt::CrossCursor);
    } else {
        showNothing(*chart);
        window()->unsetCursor();
    }
}

// The read-out of the cross, which the keys move, does not depend on the pointer.
void RowPlotEditor::clearReadOut(Chart2D* chart) {
    if (cursorShown_)
        chart->setFooterText(readoutOf(chart, cursor_));
    else
        showNothing(*chart);
    window()->unsetCursor();
}

QString RowPlotEditor::readoutOf(const Chart2D* chart, qsizetype point) const {
    const Chart2D::Point at = chart->point(Chart2D::kData, 1, point);
    return QString::fromStdString(chart == Chart2D3 ? profileReadout(at.x, at.y, PlotByX)
                                                    : mapReadout(at.x, at.y, PlotByX));
}

void RowPlotEditor::press(Chart2D* chart, QPoint pixel) {
    chart->setFocus();
    readOut(chart, pixel);
    if (!pick(*chart, pixel)) return;
    toggle(PickPoint);
    // The keys go on from here.
    cursor_ = PickPoint;
    hideCursor();
}

void RowPlotEditor::toggle(qsizetype point) {
    selection_.toggle(point, along());
    Chart2D3->beginBatch();
    Chart2D4->beginBatch();
    drawHighlights();
    Command6->setEnabled(false);
    Chart2D4->endBatch();
    Chart2D3->endBatch();
}

}  // namespace tessel
