// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/frmDataEdit.h"

#include <QPointer>

namespace tessel {

class LagDistancePlot;
class SurveyGridPlot;
class frmMain;

/// The row dialog, beside the main window and the plots, which help to find a distance or a row. While it is
/// open: a distance that is typed in it stands in the lag distance plots, and one that is chosen there stands
/// in the dialog; the survey grid shows the rows that would come out. Enter and Escape on a plot on which a
/// distance has been chosen are those of the dialog. A window that edits the survey itself blocks it like the
/// main window.
class RowDialog : public QObject {
    Q_OBJECT

  public:
    /// Requires plots that outlive the dialog.
    RowDialog(frmMain& main, LagDistancePlot& lag, SurveyGridPlot& grid);

    /// Shows it, at the right of the main window when it comes up.
    void mnuData_Click();

    /// The survey has changed.
    void followSurvey();
    void takeAway();

  Q_SIGNALS:
    /// Those of the dialog (frmDataEdit).
    void surveyChanged();
    void rowsRecalculated();
    void noSitesLeft();

  private:
    void open();

    frmMain& main_;
    LagDistancePlot& lag_;
    SurveyGridPlot& grid_;
    QPointer<frmDataEdit> dialog_;
};

}  // namespace tessel
