// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/row_statistics.h"

#include <QAbstractTableModel>

namespace tessel {

/// Row statistics as a table: one line for each row, its figures written with two decimals. Holds its own
/// copy, so that what happens to the survey meanwhile does not disturb it.
class RowStatisticsModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit RowStatisticsModel(RowStatistics statistics, QObject* parent = nullptr);

    /// Other statistics in the place of these.
    void replace(RowStatistics statistics);
    /// Lengths in survey units, or as a percentage of the longest.
    void showRelativeLengths(bool relative);
    /// The header and these lines, cells separated by tabs and lines by line feeds, as spreadsheets take
    /// them.
    QString tabSeparated(const QList<int>& lines) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    enum Column { kOrdinal, kSites, kLength, kEM1Mean, kEM2Mean };

    QString cell(int line, int column) const;

    RowStatistics statistics_;
    bool relative_ = false;
};

}  // namespace tessel
