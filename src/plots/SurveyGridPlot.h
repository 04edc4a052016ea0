// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PlotArea.h"
#include "plots/Chart2D.h"
#include "plots/PlotView.h"

#include <QObject>

namespace tessel {

/// The survey grid plot: every site in plan on Chart2D2, one coloured series for each row. It only shows.
class SurveyGridPlot : public QObject, public PlotView {
    Q_OBJECT

  public:
    /// Puts its chart into the area, hidden.
    explicit SurveyGridPlot(PlotArea& area);

    /// Draws the survey and shows it in place of whatever the area showed. Requires sites and usable
    /// rows; with more rows than NumPoints holds it throws subscriptOutOfRange and shows nothing.
    void mnuGrid_Click();

    bool isShown() const override { return !Chart2D2->isHidden(); }
    /// Requires sites and usable rows to be drawn.
    bool redraw() override;

    Chart2D* const Chart2D2;

  private:
    void draw();
    void fillRows();
    void setLimits();
    void readOut(QPoint pixel);

    PlotArea& area_;
};

}  // namespace tessel
