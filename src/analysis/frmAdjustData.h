// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/em_adjustment.h"
#include "analysis/em_summary.h"
#include "ui_frmAdjustData.h"

#include <QDialog>

namespace tessel {

/// Adds a constant to a column of readings or scales the readings of the whole survey, in place, and shows
/// statistics of both columns beside it. Edits the survey: show it modally.
class frmAdjustData : public QDialog, public Ui::frmAdjustData {
    Q_OBJECT

  public:
    explicit frmAdjustData(QWidget* parent = nullptr);

  Q_SIGNALS:
    /// Readings were changed, whatever became of the rest of the adjustment.
    void readingsChanged();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void chooseAddEM1();
    void chooseAddEM2();
    void chooseScale();
    void showEntries(const QList<QWidget*>& shown, QLineEdit* first);
    AdjustmentRequest request() const;
    void cmdCompute_Click();
    void apply(Adjustment adjustment);
    void showTotals();
    void refresh();
    void showNoEM2();
    void reportOnceShown();

    std::optional<RunTimeError> errorOfOpening_;
};

}  // namespace tessel
