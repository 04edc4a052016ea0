#include "app/frmMain.h"
#include "app/survey.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "plots/RowPlotEditor.h"
#include "support/UserDriver.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int kClear = 6;  // pixels between a point that is clicked and every other

bool isNear(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) < kClear && std::abs(a.y() - b.y()) < kClear;
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
}

void RandomSession::openEditorAtRowOne() {
    editing_ = true;
    counted_ = true;
    showRow(1);
}

void RandomSession::openRowPlots() {
    const bool byX = chance(50);
    if (!choose(byX ? u"mnuX"_s : u"mnuY"_s, true)) return;
    chart_.clear();
    byX_ = byX;
    openEditorAtRowOne();
}

void RandomSession::stepRow() {
    const bool forward = forward_ && (!back_ || chance(65));
    clickOn(*editor_, forward ? u"Command2"_s : u"Command1"_s);
    // The next row has moved up into the number of a row that was emptied.
    showRow(!forward ? row_ - 1 : emptied_ ? row_ : row_ + 1);
}

void RandomSession::plotRowNumber() {
    clickOn(*editor_, u"Option2"_s);
    delete_ = false;
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
    typeInto(*editor_, u"Text1"_s, text);
    double value = 0;
    const bool numeric = plainNumeric(text.toStdString(), value);
    const double typed = std::nearbyint(value);
    const bool valid = numeric && typed >= 1 && typed <= survey_.rows;
    if (!numeric)
        expect(u"Invalid Input: you have to enter a numeric value"_s);
    else if (!valid)
        expect(u"Invalid Input: row number out of range"_s);
    clickOn(*editor_, u"Command3"_s);
    if (valid) showRow(static_cast<int>(typed));
}

void RandomSession::pickPoints() {
    if (emptied_) return;
    // Now and then a whole row, which only points that stand apart allow.
    const auto count = static_cast<int>(survey_.sitesOfRow(row_).size());
    const int picks = chance(30) ? count : 1 + below(4);
    for (int i = 0; i < picks && i < 40; ++i)
        pickPoint(chance(70) ? *editor_->Chart2D3 : *editor_->Chart2D4);
}

// Clicks a point that no other is near, and nothing when there is none such.
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
    for (std::size_t k = 0; k < sites.size(); ++k) {
        if (k != target && isNear(place(k, false), pixel)) return;
        if (profile && survey_.two && isNear(place(k, true), pixel)) return;
    }
    movePointer(chart, pixel.toPoint());
    QTest::mouseClick(&chart, Qt::LeftButton, Qt::NoModifier, pixel.toPoint());
    const auto along = [&](int point) {
        const PlainSite& site = survey_.sites[sites[static_cast<std::size_t>(point - 1)]];
        return byX_ ? site.x : site.y;
    };
    const int point = static_cast<int>(target) + 1;
    const auto same =
        std::find_if(picked_.begin(), picked_.end(), [&](int other) { return along(other) == along(point); });
    if (same == picked_.end())
        picked_.push_back(point);
    else
        picked_.erase(same);
    delete_ = !picked_.empty();
    print_ = false;
}

void RandomSession::deletePoints() {
    const auto sites = survey_.sitesOfRow(row_);
    std::vector<std::size_t> chosen;
    for (const int point : picked_)
        chosen.push_back(sites[static_cast<std::size_t>(point - 1)]);
    clickOn(*editor_, u"Command5"_s);
    deletePlainSites(survey_, row_, chosen);
    if (survey_.empty()) survey_.rowIndex = 0;
    const bool emptied = chosen.size() == sites.size();
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
    clickOn(*editor_, u"Command4"_s);
    plotsHidden();
    setMenus(true, {"mnuData"});
}
