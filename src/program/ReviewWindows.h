// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/frmHistForm.h"
#include "analysis/frmSigCorrStruct.h"
#include "rows/frmStat.h"

#include <QPointer>

namespace tessel {

class frmMain;

/// The windows that only show the survey: there is one of each, beside the main window, and it follows what
/// is done to the survey.
class ReviewWindows {
  public:
    explicit ReviewWindows(frmMain& main) : main_(main) {}

    /// Each shows its window anew. Requires sites in usable rows, for the correlation two readings.
    void mnuStat_Click();
    void mnuHist_Click();
    void mnuSigCorr_Click();

    /// The survey has changed, or is another.
    void followSurvey();

  private:
    template <typename Window>
    void showAfresh(QPointer<Window>& shown);

    frmMain& main_;
    QPointer<frmStat> statistics_;
    QPointer<frmHistForm> histograms_;
    QPointer<frmSigCorrStruct> correlation_;
};

}  // namespace tessel
