#pragma once

#include "ui_frmSigCorrStruct.h"

#include <QMainWindow>

/// Scatter plot of every site's second reading against its first. Open it on a survey with two readings only.
class frmSigCorrStruct : public QMainWindow, public Ui::frmSigCorrStruct {
    Q_OBJECT

  public:
    explicit frmSigCorrStruct(QWidget* parent = nullptr);

  private:
    void mnuPlot1_Click();
    void MakeChart();
    void mnuPrint_Click();
};
