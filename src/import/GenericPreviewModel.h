// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/generic_preview.h"

#include <QAbstractTableModel>
#include <QColor>

namespace tessel {

/// The beginning of a delimited file as a table: one line for each record, headed by the number of the file's
/// line on which it begins. Values that are missing or no numbers are marked.
class GenericPreviewModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// `mark` is the colour of values that are missing or no numbers.
    void show(GenericPreview preview, const GenericLayout& layout, const QColor& mark);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    GenericPreview preview_;
    QStringList columns_;
    QColor mark_;
};

}  // namespace tessel
