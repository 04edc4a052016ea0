#pragma once

#include "rows/RowStatisticsModel.h"
#include "ui_frmStat.h"

#include <QMainWindow>

/// Row statistics: one table line for each row of the survey as it was when the window was made. Changes
/// nothing in the survey but RowIndex and NumPoints, which become the rows' count and sites.
class frmStat : public QMainWindow, public Ui::frmStat {
    Q_OBJECT

  public:
    explicit frmStat(QWidget* parent = nullptr);

  private:
    void showDistanceScale(int scale);
    void copyToClipboard() const;
    QList<int> linesToCopy() const;
    void fitColumns();

    RowStatisticsModel* model_;
};
