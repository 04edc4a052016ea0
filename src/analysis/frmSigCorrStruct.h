// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/site_finder.h"
#include "ui_frmSigCorrStruct.h"

#include <QMainWindow>

namespace tessel {

/// Scatter plot of every site's second reading against its first. Open it on a survey with two readings only.
/// What it has plotted follows the survey.
class frmSigCorrStruct : public QMainWindow, public Ui::frmSigCorrStruct {
    Q_OBJECT

  public:
    explicit frmSigCorrStruct(QWidget* parent = nullptr);

    /// Plots the survey as it is now, where a plot is shown; what is looked at closely stays in sight. A
    /// survey that cannot be plotted takes the plot away.
    void redraw();

  private:
    void mnuPlot1_Click();
    void MakeChart();
    void readOut(QPoint pixel);
    void showHint();
    void mnuPrint_Click();
    void mnuSavePicture_Click();

    SiteFinder finder_;  ///< of what is plotted, once it has been asked for
};

}  // namespace tessel
