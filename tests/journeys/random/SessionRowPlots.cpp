// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "plots/RowPlotEditor.h"
#include "support/PlotWindow.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

constexpr int kClear = 9;  // pixels between a point that is clicked and every other

bool isNear(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) < kClear && std::abs(a.y() - b.y()) < kClear;
}

// So that rounding does not decide whether a point is in sight.
bool isWellInside(const Chart2D& chart, const QPointF& pixel) {
    for (const QPointF& by : {QPointF(-3, -3), QPointF(3, 3)})
        if (!QRectF(chart.rect()).contains(pixel + by) ||
            !chart.pixelToData((pixel + by).toPoint()).inPlotArea)
            return false;
    return true;
}

}  // namespace

void RandomSession::showRow(int row) {
    row_ = row;
    back_ = row > 1;
    forward_ = row < survey_.rows;
    delete_ = false;
    print_ = true;
    emptied_ = false;
    picked_.clear();
    cursor_ = 0;
}

void RandomSession::openEditorAtRowOne() {
    editing_ = true;
    counted_ = true;
    byNumber_ = false;
    showRow(1);
}

void RandomSession::openRowPlots() {
    const bool byX = chance(50);
    if (!choose(byX ? u"mnuX"_s : u"mnuY"_s, true)) return;
    chart_.clear();
    byX_ = byX;
    openEditorAtRowOne();
    for (int steps = below(4); steps > 0 && canStepRow() && difference_.empty(); --steps)
        stepRow();
}

void RandomSession::stepRow() {
    const bool forward = forward_ && (!back_ || chance(65));
    useOrPress(*main_, forward ? u"Command2"_s : u"Command1"_s, forward ? Qt::Key_PageDown : Qt::Key_PageUp);
    // The next row has moved up into the number of a row that was emptied.
    showRow(!forward ? row_ - 1 : emptied_ ? row_ : row_ + 1);
    compareKeyboardOfRowPlots();
}

// Whichever button has drawn a row, the keys that move along it work at once.
void RandomSession::compareKeyboardOfRowPlots() {
    same("the keyboard on the profile", main_->focusWidget() == editor_->Chart2D3, true);
}

void RandomSession::plotRowNumber() {
    if (chance(20)) {
        clickOn(*editor_, u"Option1"_s);
        byNumber_ = false;
        delete_ = !picked_.empty();
        return;
    }
    const int row = survey_.rows > 0 ? 1 + below(survey_.rows) : 1;
    const std::vector<QString> texts = {u"abc"_s,
                                        u""_s,
                                        u"0"_s,
                                        u"-3"_s,
                                        u"1e9"_s,
                                        QString::number(survey_.rows + 1),
                                        QString::number(row),
                                        QString::number(row),
                                        QString::number(row),
                                        u" %1.25 "_s.arg(row),
                                        u"%1.5"_s.arg(row)};
    const QString text = oneOf(texts);
    const bool choosesFirst = text.isEmpty() || chance(50);
    if (choosesFirst) clickOn(*editor_, u"Option2"_s);
    // Whoever types a number means to specify one.
    if (choosesFirst || !byNumber_) delete_ = false;
    byNumber_ = true;
    typeInto(*editor_, u"Text1"_s, text);
    double value = 0;
    const bool numeric = plainNumeric(text.toStdString(), value);
    const double typed = std::nearbyint(value);
    const bool valid = numeric && typed >= 1 && typed <= survey_.rows;
    if (!numeric)
        expect(u"Invalid Input: you have to enter a numeric value"_s);
    else if (!valid)
        expect(u"Invalid Input: row number out of range"_s);
    if (chance(30))
        pressKey(*editor_->Text1, Qt::Key_Return);
    else
        clickOn(*editor_, u"Command3"_s);
    if (!valid) return;
    showRow(static_cast<int>(typed));
    compareKeyboardOfRowPlots();
}

void RandomSession::pickPoints() {
    if (emptied_) return;
    // Now and then a whole row, which only points that stand apart allow.
    const auto count = static_cast<int>(survey_.sitesOfRow(row_).size());
    const int picks = chance(30) ? count : 1 + below(4);
    for (int i = 0; i < picks && i < 40; ++i)
        pickPoint(chance(70) ? *editor_->Chart2D3 : *editor_->Chart2D4);
}

double RandomSession::along(int point) const {
    const auto sites = survey_.sitesOfRow(row_);
    const PlainSite& site = survey_.sites[sites[static_cast<std::size_t>(point - 1)]];
    return byX_ ? site.x : site.y;
}

// Clicks a point that no other is near, and nothing when there is none such. On a closer look a point may be
// out of sight; then there is nothing to click either.
void RandomSession::pickPoint(Chart2D& chart) {
    const bool profile = &chart == editor_->Chart2D3;
    const auto sites = survey_.sitesOfRow(row_);
    const auto target = static_cast<std::size_t>(below(static_cast<int>(sites.size())));
    const auto place = [&](std::size_t k, bool second) {
        const PlainSite& site = survey_.sites[sites[k]];
        const double along = byX_ ? site.x : site.y;
        return chart.dataToPixel(along, !profile ? (byX_ ? site.y : site.x) : second ? site.em2 : site.em1);
    };
    const QPointF pixel = place(target, false);
    if (!isWellInside(chart, pixel)) return;
    for (std::size_t k = 0; k < sites.size(); ++k) {
        if (k != target && isNear(place(k, false), pixel)) return;
        if (profile && survey_.two && isNear(place(k, true), pixel)) return;
    }
    if (chart.isZoomed()) reached_.note("a point picked on a closer look");
    pointAt(chart, pixel.toPoint());
    const int point = static_cast<int>(target) + 1;
    compareReadout(chart, point);
    // One beyond what may be picked.
    if (picked_.size() == kMostPicked && !isPickedAt(along(point))) return;
    // Two pixels away is near enough.
    QTest::mouseClick(&chart, Qt::LeftButton, Qt::NoModifier,
                      pixel.toPoint() + QPoint(below(3) - 1, below(3) - 1));
    toggleModel(point);
    cursor_ = point;
}

bool RandomSession::isPickedAt(double horizontal) const {
    return std::any_of(picked_.begin(), picked_.end(), [&](int other) { return along(other) == horizontal; });
}

void RandomSession::toggleModel(int point) {
    const auto same =
        std::find_if(picked_.begin(), picked_.end(), [&](int other) { return along(other) == along(point); });
    if (same == picked_.end())
        picked_.push_back(point);
    else
        picked_.erase(same);
    delete_ = !picked_.empty();
    print_ = false;
}

void RandomSession::compareReadout(const Chart2D& chart, int point) {
    const auto sites = survey_.sitesOfRow(row_);
    const PlainSite& site = survey_.sites[sites[static_cast<std::size_t>(point - 1)]];
    const bool profile = &chart == editor_->Chart2D3;
    const QStringList parts = chart.footerText().split(u", "_s);
    if (parts.size() != 2) return differ("the read-out is " + chart.footerText().toStdString());
    const auto part = [&](const QString& text, const QString& name, double value) {
        if (!text.startsWith(name + u" = "_s))
            return differ("the read-out is " + chart.footerText().toStdString());
        sameFigure("the read-out", text.mid(name.size() + 3), value, 2);
    };
    part(parts[0], byX_ ? u"UTM X"_s : u"UTM Y"_s, byX_ ? site.x : site.y);
    if (profile)
        part(parts[1], u"ECa"_s, site.em1);
    else
        part(parts[1], byX_ ? u"UTM Y"_s : u"UTM X"_s, byX_ ? site.y : site.x);
}

// The keys: along the points of the row, to the right towards larger coordinates.
void RandomSession::walkAlongRow() {
    Chart2D& chart = chance(50) ? *editor_->Chart2D3 : *editor_->Chart2D4;
    const auto count = static_cast<int>(survey_.sitesOfRow(row_).size());
    if (emptied_ || count == 0) return pressKey(chart, Qt::Key_Right);
    const bool rises = along(count) >= along(1);
    for (int steps = 1 + below(8); steps > 0; --steps) {
        const bool right = chance(50), onward = right == rises;
        pressKey(chart, chance(50) ? right ? Qt::Key_Right : Qt::Key_Left
                        : right    ? Qt::Key_Up
                                   : Qt::Key_Down);
        if (cursor_ == 0)
            cursor_ = onward ? 1 : count;
        else
            cursor_ = std::clamp(cursor_ + (onward ? 1 : -1), 1, count);
        compareReadout(chart, cursor_);
        if (chance(60)) continue;
        if (picked_.size() == kMostPicked && !isPickedAt(along(cursor_))) continue;
        pressKey(chart, Qt::Key_Space);
        toggleModel(cursor_);
    }
    if (chance(10) && isPickedAt(along(cursor_))) {
        // The space bar selects, wherever the keyboard has come to.
        pressKey(*editor_->Command4, Qt::Key_Space);
        toggleModel(cursor_);
    }
    // A button that is disabled has no key either.
    if (!delete_ && chance(50)) pressKey(chart, Qt::Key_Delete);
}

void RandomSession::deletePoints() {
    const auto sites = survey_.sitesOfRow(row_);
    std::vector<std::size_t> chosen;
    for (const int point : picked_)
        chosen.push_back(sites[static_cast<std::size_t>(point - 1)]);
    if (chance(30))
        pressKey(chance(50) ? *editor_->Chart2D3 : *editor_->Chart2D4, Qt::Key_Delete);
    else
        clickOn(*editor_, u"Command5"_s);
    deletePlainSites(survey_, row_, chosen);
    if (survey_.empty()) survey_.rowIndex = 0;
    statisticsFollow();
    compareKeyboardOfRowPlots();
    const bool emptied = chosen.size() == sites.size();
    if (emptied) reached_.note("a row emptied");
    if (!emptied && row_ == 1)
        openEditorAtRowOne();
    else
        showRow(row_);
    emptied_ = emptied;
    back_ = row_ >= survey_.rows || row_ != 1;
    forward_ = row_ < survey_.rows;
    if (survey_.rows >= 2) return;
    back_ = forward_ = false;
    setMenus(false, {"mnuRow", "mnuDistance", "mnuGrid", "mnuData", "mnuStat"});
}

void RandomSession::finishRowPlots() {
    if (chance(30))
        pressKey(*editor_->Command4, Qt::Key_Return);
    else
        clickOn(*editor_, u"Command4"_s);
    plotsHidden();
    setMenus(true, {"mnuData"});
}

}  // namespace tessel
