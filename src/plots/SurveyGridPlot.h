// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PlotArea.h"
#include "app/survey.h"
#include "plots/Chart2D.h"
#include "plots/ColourScale.h"
#include "plots/PlotView.h"

#include <QObject>

#include <optional>

namespace tessel {

/// The survey grid plot: every site in plan on Chart2D2, one series for each row, which has its own colour or
/// shows a reading in colours with their scale beside it. It only shows.
class SurveyGridPlot : public QObject, public PlotView {
    Q_OBJECT

  public:
    /// Puts its chart into the area, hidden.
    explicit SurveyGridPlot(PlotArea& area);

    /// Draws the survey and shows it in place of whatever the area showed. Requires sites and usable
    /// rows; with more rows than NumPoints holds it throws subscriptOutOfRange and shows nothing.
    void mnuGrid_Click() { plot({}); }
    /// The same in the colours of a reading, which the survey must have.
    void mnuGridEM1_Click() { plot(kEM1); }
    void mnuGridEM2_Click() { plot(kEM2); }

    bool isShown() const override { return !sheet_->isHidden(); }
    /// Requires sites and usable rows to be drawn.
    bool redraw() override;

  private:
    QWidget* const sheet_;  ///< holds chart and scale

  public:
    Chart2D* const Chart2D2;
    ColourScale* const scale;

  private:
    void plot(std::optional<SiteColumn> reading);
    void draw();
    void fillRows();
    void colourRows();
    void setLimits();
    void readOut(QPoint pixel);

    PlotArea& area_;
    std::optional<SiteColumn> reading_;  ///< that is shown in colours
};

}  // namespace tessel
