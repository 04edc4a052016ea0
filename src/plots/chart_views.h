// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <array>
#include <cstddef>

namespace tessel {

/// Whether something of what there is (home) can still be seen in a view that was chosen before.
bool stillMakesSense(const Interval& view, const Interval& home);

/// The limits that were set for the axes of a chart, and the part of each that is shown of them: the user
/// zooms and moves the view, never the limits.
class ChartViews {
  public:
    /// The axes that have limits: one across, and two upwards.
    enum Axis : std::size_t { kX, kY, kY2 };

    /// Keeps the limits as they are, equal or falling ones too, and returns the view of this axis to them.
    /// The second Y axis follows the first one until it is set itself.
    void setLimits(Axis axis, const Interval& limits);
    const Interval& limits(Axis axis) const { return axes_[axis].limits; }

    const Interval& view(Axis axis) const { return axes_[axis].view; }
    void setView(Axis axis, const Interval& view) { axes_[axis].view = view; }
    /// Whether a view is another than that of the limits.
    bool isZoomed() const;
    void reset();

    /// Makes the view `xFactor` and `yFactor` times as wide around a place that is given in parts of the plot
    /// area's width and height, from its lower left corner.
    void zoom(double xFraction, double xFactor, double yFraction, double yFactor);
    /// Moves the view by parts of its width and height, to the right and upwards.
    void move(double xFraction, double yFraction);

    /// Shows again what was zoomed or moved in `before`, the same chart before its limits were set anew; axes
    /// that showed their limits show the new ones. Where one axis would show nothing of its limits, or would
    /// run the other way, every axis shows its limits.
    void keepViews(const ChartViews& before);

  private:
    struct State {
        Interval limits, home, view;
    };
    std::array<State, 3> axes_;
    bool y2Set_ = false;
};

}  // namespace tessel
