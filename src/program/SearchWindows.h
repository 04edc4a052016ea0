// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/frmSuspects.h"
#include "rows/frmTurns.h"

#include <QObject>
#include <QPointer>

namespace tessel {

class SurveyGridPlot;
class frmMain;

/// The windows that look for something in the survey. They stand beside the main window, and go when another
/// survey takes the place of theirs.
class SearchWindows : public QObject {
    Q_OBJECT

  public:
    SearchWindows(frmMain& main, SurveyGridPlot& grid);

    /// Requires sites.
    void mnuTurns_Click();
    void mnuSuspects_Click();

    /// The survey has changed, or is another.
    void followSurvey();

  Q_SIGNALS:
    void surveyChanged();
    /// After surveyChanged().
    void rowsRecalculated();
    /// Before surveyChanged().
    void rowsLost();
    void noSitesLeft();

  private:
    static bool isShown(const QWidget* window) { return window && !window->isHidden(); }
    void followInTurns();

    frmMain& main_;
    SurveyGridPlot& grid_;
    QPointer<frmTurns> turns_;
    QPointer<frmSuspects> suspects_;
    bool turnsFollow_ = false;  ///< the survey has changed, and not what is looked for
    int import_ = 0;            ///< of the survey that they look at
};

}  // namespace tessel
