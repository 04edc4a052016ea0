// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/table_shape.h"

#include <QAbstractTableModel>
#include <QColor>

namespace tessel {

/// The first lines of a table under its own header; below a column's name stands what it is taken for, and
/// values that are no numbers in a column that needs them are marked.
class TablePreviewModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    void show(TablePreview preview, const TableShape& shape, std::vector<TableRole> roles,
              const QColor& mark);
    /// A column's name in the file, or its number where it has none.
    QString columnName(int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    bool isWrong(const QModelIndex& index) const;

    TablePreview preview_;
    TableShape shape_;
    std::vector<TableRole> roles_;
    QColor mark_;
};

}  // namespace tessel
