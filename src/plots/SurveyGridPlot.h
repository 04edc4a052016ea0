// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PlotArea.h"
#include "app/survey.h"
#include "base/geometry.h"
#include "plots/Chart2D.h"
#include "plots/ColourScale.h"
#include "plots/PlotView.h"
#include "rows/row_turns.h"

#include <QObject>

#include <optional>
#include <vector>

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

    /// Shows rows that have been found and are not the survey's yet, in their colours, and sites in turns
    /// grey, in place of whatever the area showed. Requires rows that were found in the survey as it is, at
    /// most kMaxRows of them.
    void showFound(const RowTurns& found);
    /// The survey's own rows again, or nothing where they cannot be shown.
    void endFound();

    bool isShown() const override { return !sheet_->isHidden(); }
    /// Requires sites and usable rows to be drawn.
    bool redraw() override;

    /// While a distance between rows is being chosen: the plot that shows rows has them as they would come
    /// out, given as ranges of the sites as they are; none: as the survey has them. The survey is left alone.
    void showForeseen(const std::vector<IndexRange>& rows);

  private:
    QWidget* const sheet_;  ///< holds chart and scale

  public:
    Chart2D* const Chart2D2;
    ColourScale* const scale;

  private:
    void plot(std::optional<SiteColumn> reading);
    void draw();
    bool drawAgain();
    void drawInSameView();
    Rectangle fillRows();
    void colourRows();
    void setLimits(const Rectangle& extent);
    bool foresees() const { return !reading_ && turnSeries_ == 0 && !foreseen_.empty(); }
    QString restingFooter() const;
    void readOut(QPoint pixel);
    void fillFound(const RowTurns& found);

    PlotArea& area_;
    std::optional<SiteColumn> reading_;  ///< that is shown in colours
    int turnSeries_ = 0;                 ///< the series of sites in turns while found rows are shown
    std::vector<IndexRange> foreseen_;   ///< rows as they would come out
    std::vector<IndexRange> rows_;       ///< that are shown
};

}  // namespace tessel
