// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_views.h"

#include <algorithm>

namespace tessel {

bool stillMakesSense(const Interval& view, const Interval& home) {
    return view.falls() == home.falls() && view.low() < home.high() && view.high() > home.low();
}

void ChartViews::setLimits(Axis axis, const Interval& limits) {
    const Interval home = viewOfLimits(limits);
    axes_[axis] = {limits, home, home};
    if (axis == kY2) y2Set_ = true;
    if (axis == kY && !y2Set_) axes_[kY2] = axes_[kY];
}

bool ChartViews::isZoomed() const {
    return std::any_of(axes_.begin(), axes_.end(),
                       [](const State& axis) { return !(axis.view == axis.home); });
}

void ChartViews::reset() {
    for (State& axis : axes_)
        axis.view = axis.home;
}

void ChartViews::zoom(double xFraction, double xFactor, double yFraction, double yFactor) {
    for (const Axis a : {kX, kY, kY2}) {
        State& axis = axes_[a];
        axis.view =
            zoomed(axis.view, axis.home, a == kX ? xFraction : yFraction, a == kX ? xFactor : yFactor);
    }
}

void ChartViews::move(double xFraction, double yFraction) {
    for (const Axis a : {kX, kY, kY2}) {
        State& axis = axes_[a];
        axis.view = moved(axis.view, axis.home, a == kX ? xFraction : yFraction);
    }
}

void ChartViews::keepViews(const ChartViews& before) {
    std::array<Interval, 3> kept;
    for (const Axis a : {kX, kY, kY2}) {
        const State& old = before.axes_[a];
        const Interval& home = axes_[a].home;
        kept[a] = old.view == old.home ? home : old.view;
        if (!stillMakesSense(kept[a], home)) return;
    }
    for (const Axis a : {kX, kY, kY2})
        axes_[a].view = kept[a];
}

}  // namespace tessel
