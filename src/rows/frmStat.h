// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/RowStatisticsModel.h"
#include "ui_frmStat.h"

#include <QMainWindow>

namespace tessel {

/// Row statistics: one table line for each row of the survey. When it is made, RowIndex and NumPoints become
/// the rows' count and sites; nothing else in the survey changes.
class frmStat : public QMainWindow, public Ui::frmStat {
    Q_OBJECT

  public:
    explicit frmStat(QWidget* parent = nullptr);

    /// Shows the rows of the survey as it is now, in the scale chosen; no lines where they are of no use.
    /// Changes nothing.
    void redraw();

  private:
    void showCount();
    void showDistanceScale(int scale);
    void showMenu(QPoint place);
    void copyToClipboard() const;
    QList<int> linesToCopy() const;
    void fitColumns();

    RowStatisticsModel* model_;
};

}  // namespace tessel
