// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "plots/RowPlotEditor.h"
#include "plots/row_plot_texts.h"

#include <utility>

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
    const RowSelection before = selection_;
    const int taken = selection_.toggle(point, along());
    const bool another = taken >= 0 && before.SelPoints[static_cast<std::size_t>(taken)] != point;
    showSelection(another ? QString::fromStdString(otherDeselected(PlotByX)) : QString());
}

// Points of EM1, as a press picks.
void RowPlotEditor::takeBox(Chart2D* chart, const QRectF& box, bool taking) {
    chart->setFocus();
    const std::vector<qsizetype> found = chart->pointsIn(Chart2D::kData, 1, box);
    const std::vector<SiteIndex> points(found.begin(), found.end());
    if (points.empty()) return;
    SiteIndex left = 0;
    if (taking)
        selection_.deselect(points);
    else
        left = selection_.select(points);
    const auto all = static_cast<SiteIndex>(points.size());
    showSelection(left > 0 ? QString::fromStdString(tooManyInBox(all)) : QString());
}

void RowPlotEditor::showSelection(const QString& notice) {
    Chart2D3->beginBatch();
    Chart2D4->beginBatch();
    drawHighlights();
    Command6->setEnabled(false);
    Chart2D4->endBatch();
    Chart2D3->endBatch();
    showNotice(notice);
}

void RowPlotEditor::showNotice(const QString& notice) {
    lblNotice->setText(notice);
    lblNotice->setVisible(!notice.isEmpty());
    colourNotice(*lblNotice, true);
}

// The highlight groups show the selection in its order; Command5 and the count follow it.
void RowPlotEditor::drawHighlights() {
    for (int series = 1; series <= Chart2D3->seriesCount(Chart2D::kHighlight); ++series)
        Chart2D3->setPointCount(Chart2D::kHighlight, series, selection_.SelCount);
    Chart2D4->setPointCount(Chart2D::kHighlight, 1, selection_.SelCount);
    for (int i = 0; i < selection_.SelCount; ++i) {
        const auto selected = static_cast<qsizetype>(selection_.SelPoints[static_cast<std::size_t>(i)]);
        for (int series = 1; series <= Chart2D3->seriesCount(Chart2D::kHighlight); ++series) {
            const Chart2D::Point point = Chart2D3->point(Chart2D::kData, series, selected);
            Chart2D3->setPoint(Chart2D::kHighlight, series, i + 1, point.x, point.y);
        }
        const Chart2D::Point place = Chart2D4->point(Chart2D::kData, 1, selected);
        Chart2D4->setPoint(Chart2D::kHighlight, 1, i + 1, place.x, place.y);
    }
    locateSelection();
    Command5->setEnabled(selection_.SelCount > 0);
    cmdSplit->setEnabled(canSplit());
    lblSelected->setText(tr("Sites selected: %1").arg(selection_.SelCount));
}

void RowPlotEditor::locateSelection() {
    const auto end = selection_.SelPoints.begin() + selection_.SelCount;
    std::vector<SiteIndex> chosen(selection_.SelPoints.begin(), end);
    for (SiteIndex& point : chosen)
        point += sites().first - 1;
    picLocator->showSelected(std::move(chosen));
}

// As the step buttons do; the row that is shown keeps its selection.
void RowPlotEditor::goToRow(int row) {
    if (row == CurrentRow && !rowEmptied_) return;
    const Hourglass hourglass(window());
    showRow(row);
}

}  // namespace tessel
