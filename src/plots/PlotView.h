// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// A view in the main window's chart area. Every view shows itself in place of whatever was shown there
/// before; the one that is shown follows the survey.
class PlotView {
  public:
    virtual ~PlotView() = default;

    virtual bool isShown() const = 0;
    /// Draws the survey anew as it is now, in the same view: what the user looks at closely stays in sight
    /// where the survey still reaches there. Requires the view to be shown. False, or a RunTimeError, when
    /// the view cannot show such a survey; then it is to be hidden.
    virtual bool redraw() = 0;
};

}  // namespace tessel
