// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "geodesy/position_conversion.h"
#include "ui_frmCoordinates.h"

#include <QDialog>

#include <vector>

namespace tessel {

struct CoordinateSystem;

/// Asks what X and Y of the survey are, and makes metres of degrees: the UTM zone that fits is proposed, any
/// projected coordinate system can be found by its number or the words of its name.
class frmCoordinates : public QDialog, public Ui::frmCoordinates {
    Q_OBJECT

  public:
    explicit frmCoordinates(QWidget* parent = nullptr);

  Q_SIGNALS:
    /// An act has changed the survey.
    void positionsChanged();

  private:
    PositionRequest entries() const;
    void Form_Load();
    void kindChosen();
    void findSystems();
    void showNotices();
    QString whatIsWrong() const;
    void cmdApply_Click();

    PositionCheck check_;                           // of the kind that is chosen
    std::vector<const CoordinateSystem*> systems_;  // in the list
};

}  // namespace tessel
