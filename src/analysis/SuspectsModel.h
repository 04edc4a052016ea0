// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/suspect_list.h"

#include <QAbstractTableModel>
#include <QModelIndexList>

#include <memory>
#include <vector>

namespace tessel {

/// The suspicious sites as a table: a line for each flagged site, with a tick that can be taken away. Written
/// down only where it is looked at.
class SuspectsModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Another survey, of which nothing is suspicious yet.
    void setSurvey(std::shared_ptr<const Survey> survey);
    /// What has been found in it, in the order that was chosen last; ticks that were taken away stay away.
    void show(Suspects suspects);

    const Suspects& suspects() const { return suspects_; }
    /// The sites in the order of the survey.
    const std::vector<SiteIndex>& flagged() const { return flagged_; }
    SiteIndex siteAt(int line) const { return lines_[static_cast<std::size_t>(line)]; }
    /// The line of a site; -1 where it is not flagged.
    int lineOf(SiteIndex site) const;

    SiteIndex ticked() const { return suspects_.sites - sparedAmongFlagged_; }
    SiteIndex spared() const { return sparedAmongFlagged_; }
    std::vector<IndexRange> tickedRuns() const { return condemnedRuns(suspects_, spared_); }
    /// All these lines get the tick that the first of them has not.
    void turnTicks(const QModelIndexList& lines);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  Q_SIGNALS:
    void ticksChanged();

  private:
    SuspectOrder kindOf(int column) const;
    QString cell(SiteIndex site, SuspectOrder kind) const;
    bool isTicked(SiteIndex site) const { return spared_[static_cast<std::size_t>(site)] == 0; }
    void tick(SiteIndex site, bool ticked);

    std::shared_ptr<const Survey> survey_;
    Suspects suspects_;
    std::vector<SiteIndex> flagged_, lines_;
    std::vector<std::uint8_t> spared_;  ///< of each site of the survey: its tick has been taken away
    SiteIndex sparedAmongFlagged_ = 0;
    int sortColumn_ = 0;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

}  // namespace tessel
