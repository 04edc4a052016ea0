// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "app/survey.h"
#include "journal/journal.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "plots/FieldLocator.h"
#include "plots/RowPlotEditor.h"
#include "plots/plot_limits.h"

namespace tessel {

namespace {

constexpr std::size_t kMostPicked = 101;
constexpr int kShortestDrag = 4;

}  // namespace

QPoint RandomSession::placeInPlot(Chart2D& chart) {
    const QRect area = chart.plotArea().toAlignedRect().adjusted(1, 1, -1, -1);
    return {area.left() + below(std::max(1, area.width())), area.top() + below(std::max(1, area.height()))};
}

// Every point of the first reading that is shown in the box, in the order of the row.
void RandomSession::drawBox() {
    Chart2D& chart = chance(50) ? *editor_->Chart2D3 : *editor_->Chart2D4;
    const QRect whole = chart.plotArea().toAlignedRect().adjusted(1, 1, -1, -1);
    const QPoint from = chance(40) ? whole.topLeft() : placeInPlot(chart);
    const QPoint to = chance(40) ? whole.bottomRight() : placeInPlot(chart);
    if ((to - from).manhattanLength() < kShortestDrag) return;
    const QRectF box = QRectF(from, to).normalized();
    std::vector<int> points;
    const auto sites = survey_.sitesOfRow(row_);
    for (std::size_t k = 0; k < sites.size(); ++k) {
        const PlainSite& site = survey_.sites[sites[k]];
        const double across = &chart == editor_->Chart2D3 ? site.em1 : byX_ ? site.y : site.x;
        const QPointF at = chart.dataToPixel(byX_ ? site.x : site.y, across);
        if (at.x() >= box.left() && at.x() <= box.right() && at.y() >= box.top() && at.y() <= box.bottom())
            points.push_back(static_cast<int>(k) + 1);
    }
    const bool taking = chance(25);
    drag(chart, from, to, Qt::LeftButton,
         taking ? Qt::ShiftModifier | Qt::ControlModifier : Qt::KeyboardModifiers(Qt::ShiftModifier));
    if (!points.empty()) takeBox(points, taking);
}

void RandomSession::takeBox(const std::vector<int>& points, bool taking) {
    reached_.note(taking ? "a box that takes marks away" : "a box drawn");
    bool tooMany = false;
    for (const int point : points) {
        const auto picked = std::find(picked_.begin(), picked_.end(), point);
        if (taking && picked != picked_.end()) picked_.erase(picked);
        if (taking || picked != picked_.end()) continue;
        tooMany = picked_.size() == kMostPicked;
        if (tooMany) break;
        picked_.push_back(point);
    }
    delete_ = !picked_.empty();
    print_ = false;
    same("a notice of too many sites", editor_->lblNotice->isVisible(), tooMany);
    if (!tooMany) return;
    reached_.note("a box with more than may be picked");
    if (!editor_->lblNotice->text().startsWith(QString::number(points.size()) + u" sites "_s))
        differ("the notice is " + editor_->lblNotice->text().toStdString());
}

void RandomSession::goWhereClicked() {
    FieldLocator& map = *editor_->picLocator;
    if (std::min(map.width(), map.height()) < 56) return;
    QCoreApplication::processEvents();
    const Rectangle inner{{6.5, map.width() - 6.5}, {6.5, map.height() - 6.5}};
    const PixelMap pixels = fittedMap(inner, siteExtent(theSurvey()));
    const PlainSite& aim =
        survey_.sites[static_cast<std::size_t>(below(static_cast<int>(survey_.sites.size())))];
    const QPoint pixel = QPointF(pixels.pixelX(aim.x), pixels.pixelY(aim.y)).toPoint();
    const auto away = [&](const PlainSite& site) {
        const double x = pixels.pixelX(site.x) - pixel.x(), y = pixels.pixelY(site.y) - pixel.y();
        return x * x + y * y;
    };
    const PlainSite& nearest =
        *std::min_element(survey_.sites.begin(), survey_.sites.end(),
                          [&](const PlainSite& a, const PlainSite& b) { return away(a) < away(b); });
    const int row = static_cast<int>(nearest.row);
    QTest::mouseClick(&map, Qt::LeftButton, Qt::NoModifier, pixel);
    if (row == row_ && !emptied_) return;
    reached_.note("a row chosen on the small map");
    showRow(row);
    compareKeyboardOfRowPlots();
}

}  // namespace tessel
