#pragma once

#include "analysis/lag_distance.h"
#include "plots/Chart2D.h"

#include <QObject>

class frmMain;

/// The lag distance plots: the distance from each site to the one before it on Chart2D1, with a line at the
/// minimum distance that separates rows.
class LagDistancePlot : public QObject {
    Q_OBJECT

  public:
    /// Puts its chart into the main window, hidden.
    explicit LagDistancePlot(frmMain& main);

    /// Calculate the distances anew and show them in place of whatever the main window showed.
    void mnuTrue_Dis_Click();
    void mnuX_Dis_Click();
    void mnuY_Dis_Click();

    Chart2D* const Chart2D1;

  private:
    void plot(LagMeasure measure);
    void fill(const LagDistances& lag);
    void setStyles(SiteIndex sites);
    void readOut(QPoint pixel);

    frmMain& main_;
};
