// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace tessel {

/// The place of charts and of an editor's controls, all that those who draw there know of the main window.
class PlotArea {
  public:
    virtual ~PlotArea() = default;

    /// Takes a chart into the chart area, hidden. Charts that are visible at the same time stand one below
    /// the other in the order in which they were added.
    virtual void addChart(QWidget* chart) = 0;
    /// Takes the frame of an editor's controls to the side of the chart area, hidden.
    virtual void addEditor(QWidget* frame) = 0;
    /// Hides every chart and every editor frame; every view does so before it shows its own.
    virtual void hidePlots() = 0;
};

}  // namespace tessel
