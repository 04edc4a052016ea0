// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/HistoryModel.h"
#include "ui_frmHistory.h"

#include <QDialog>

namespace tessel {

/// What has been done to the survey, one line an act, and the way to any point of it.
class frmHistory : public QDialog, public Ui::frmHistory {
    Q_OBJECT

  public:
    explicit frmHistory(QWidget* parent = nullptr);

    /// Shows the journal as it is now, the present state in sight.
    void redraw();

  Q_SIGNALS:
    /// The survey is to be as it was behind so many acts.
    void positionChosen(std::size_t position);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void choose(const QModelIndex& line);

    HistoryModel* model_;
};

}  // namespace tessel
