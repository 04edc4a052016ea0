// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/lag_distance.h"
#include "app/PlotArea.h"
#include "plots/Chart2D.h"
#include "plots/PlotView.h"
#include "plots/series_pixels.h"

#include <QObject>

#include <optional>

namespace tessel {

/// The lag distance plots: the distance from each site to the one before it on Chart2D1, with a line at the
/// minimum distance that separates rows.
class LagDistancePlot : public QObject, public PlotView {
    Q_OBJECT

  public:
    /// Puts its chart into the area, hidden.
    explicit LagDistancePlot(PlotArea& area);

    /// Calculate the distances anew and show them in place of whatever the area showed.
    void mnuTrue_Dis_Click();
    void mnuX_Dis_Click();
    void mnuY_Dis_Click();

    bool isShown() const override { return !Chart2D1->isHidden(); }
    /// Requires a site to be drawn.
    bool redraw() override;

    /// Whether a window is open in which a distance can be chosen. Meanwhile the line of showTyped() is
    /// there, at the minimum distance in force until another is chosen, and the user can move it.
    void offerChoice(bool open);
    /// While a distance is being chosen: where the plot shows this measure (1 true distance, 2 along X, 3
    /// along Y), or does so later, a thin line stands at the distance (metres) and tells it.
    void showTyped(int distanceMode, std::optional<double> distance);

    Chart2D* const Chart2D1;

  Q_SIGNALS:
    /// The line has been moved to a distance (metres) of the measure that is shown.
    void distanceChosen(int distanceMode, double distance);
    /// Enter or Escape on the plot while a distance of its measure is being chosen.
    void choiceAccepted();
    void choiceGivenUp();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void plot(LagMeasure measure);
    void draw(const LagDistances& lag);
    void fill(const LagDistances& lag);
    void setStyles(SiteIndex sites);
    void showLine();
    bool hasChoice() const;
    void readOut(QPoint pixel);

    PlotArea& area_;
    int typedMode_ = 0;
    std::optional<double> typed_;
    bool offersChoice_ = false;
    LagMeasure measure_ = LagMeasure::kTrueDistance;  ///< of the plot that was shown last
    SeriesPixels pixels_;                             ///< of its distances
};

}  // namespace tessel
