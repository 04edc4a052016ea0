// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/journal.h"

#include <QAbstractTableModel>

namespace tessel {

/// The acts of the process's journal, one a line below a line for what was before them. It asks the journal
/// for each line as it is painted.
class HistoryModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kNumber, kTime, kWhat, kSites, kRows, kColumns };

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// The journal is another one now.
    void follow();

  private:
    QString textOf(int line, int column) const;

    int lines_ = 1;
};

}  // namespace tessel
