// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/SuspectsModel.h"

#include "app/site_runs.h"
#include "base/bounded.h"
#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const std::array kHeader = {u"Site"_s, u"Row"_s, u"X"_s, u"Y"_s, u"EM1"_s, u"EM2"_s, u"Rules"_s};

}  // namespace

void SuspectsModel::setSurvey(std::shared_ptr<const Survey> survey) {
    beginResetModel();
    survey_ = std::move(survey);
    suspects_ = {};
    flagged_.clear();
    lines_.clear();
    spared_.assign(static_cast<std::size_t>(survey_->NumSites), 0);
    sparedAmongFlagged_ = 0;
    endResetModel();
}

void SuspectsModel::show(Suspects suspects) {
    beginResetModel();
    suspects_ = std::move(suspects);
    lines_ = flagged_ = flaggedSites(suspects_);
    sparedAmongFlagged_ = suspects_.sites - sitesIn(tickedRuns());
    sortSuspects(lines_, *survey_, suspects_, kindOf(sortColumn_), sortOrder_ == Qt::AscendingOrder);
    endResetModel();
}

int SuspectsModel::lineOf(SiteIndex site) const {
    const auto line = std::find(lines_.begin(), lines_.end(), site);
    return line == lines_.end() ? -1 : static_cast<int>(line - lines_.begin());
}

void SuspectsModel::turnTicks(const QModelIndexList& lines) {
    if (lines.isEmpty()) return;
    const bool ticked = !isTicked(siteAt(lines.first().row()));
    for (const QModelIndex& line : lines)
        tick(siteAt(line.row()), ticked);
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
    Q_EMIT ticksChanged();
}

void SuspectsModel::tick(SiteIndex site, bool ticked) {
    sparedAmongFlagged_ += isTicked(site) - ticked;
    spared_[static_cast<std::size_t>(site)] = ticked ? 0 : 1;
}

int SuspectsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int SuspectsModel::columnCount(const QModelIndex& parent) const {
    constexpr auto kAll = static_cast<int>(kHeader.size());
    return parent.isValid() ? 0 : survey_ && survey_->TwoEMColumns ? kAll : kAll - 1;
}

// The second reading is left out where there is none.
SuspectOrder SuspectsModel::kindOf(int column) const {
    const auto kind = static_cast<SuspectOrder>(column);
    return kind == SuspectOrder::kEM2 && !survey_->TwoEMColumns ? SuspectOrder::kRules : kind;
}

Qt::ItemFlags SuspectsModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == 0 ? flags | Qt::ItemIsUserCheckable : flags;
}

QString SuspectsModel::cell(SiteIndex site, SuspectOrder kind) const {
    const auto shown = [](double value, int decimals) {
        return QString::fromStdString(pictureFormat(bounded(value), decimals));
    };
    const SiteTable& table = survey_->SiteData;
    switch (kind) {
        case SuspectOrder::kSite:
            return survey_->SiteIDPresent
                       ? QString::number(survey_->SiteID[static_cast<std::size_t>(site)], 'g', 15)
                       : QString::number(site + 1);
        case SuspectOrder::kRow:
            return shown(table(kRow, site), 0);
        case SuspectOrder::kX:
            return shown(table(kX, site), 2);
        case SuspectOrder::kY:
            return shown(table(kY, site), 2);
        case SuspectOrder::kEM1:
            return shown(table(kEM1, site), 2);
        case SuspectOrder::kEM2:
            return shown(table(kEM2, site), 2);
        case SuspectOrder::kRules:
            break;
    }
    return QString::fromStdString(ruleNames(suspects_.flags[static_cast<std::size_t>(site)]));
}

QVariant SuspectsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const SuspectOrder kind = kindOf(index.column());
    const SiteIndex site = siteAt(index.row());
    if (role == Qt::DisplayRole) return cell(site, kind);
    if (role == Qt::CheckStateRole && kind == SuspectOrder::kSite)
        return isTicked(site) ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::TextAlignmentRole)
        return QVariant((kind == SuspectOrder::kRules ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

bool SuspectsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != 0) return false;
    tick(siteAt(index.row()), value.toInt() == Qt::Checked);
    Q_EMIT dataChanged(index, index, {role});
    Q_EMIT ticksChanged();
    return true;
}

QVariant SuspectsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical || !survey_) return {};
    const SuspectOrder kind = kindOf(section);
    if (role == Qt::DisplayRole) return kHeader.at(static_cast<std::size_t>(kind));
    if (role == Qt::TextAlignmentRole)
        return QVariant((kind == SuspectOrder::kRules ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

void SuspectsModel::sort(int column, Qt::SortOrder order) {
    sortColumn_ = std::max(column, 0);
    sortOrder_ = order;
    if (!survey_) return;
    beginResetModel();
    sortSuspects(lines_, *survey_, suspects_, kindOf(sortColumn_), order == Qt::AscendingOrder);
    endResetModel();
}

}  // namespace tessel
