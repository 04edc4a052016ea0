// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <functional>
#include <string>
#include <vector>

namespace tessel {

/// Where an axis carries its ticks: at the whole multiples of `step`, labelled with `decimals` decimals. With
/// `endsOnly` only at the first and the last of those that lie on the axis.
struct TickStep {
    double step = 1;
    int decimals = 0;
    bool endsOnly = false;
};

/// From the first to the last multiple of the step on an axis; falls where there is none.
Interval tickEnds(const Interval& axis, double step);

/// The ticks in rising order.
std::vector<double> ticksOn(const Interval& axis, const TickStep& ticks);

/// The label of a tick, written in full with a point as decimal sign ("436000.12"); only values whose digits
/// nobody could read (1e15 and more, or finer than 1e-9) are written as powers of ten.
std::string tickLabel(double value, const TickStep& ticks);

/// The value with as many decimals as tell it from one that is a `resolution` away, and no more: whole
/// hundreds where that is some hundreds. Requires a resolution above 0.
double roundedTo(double value, double resolution);

/// What the labels of an axis need of its length, in pixels.
struct TickRoom {
    double axisLength = 0;
    double preferredDistance = 70;  ///< between ticks, where labels allow it
    double gap = 12;                ///< to be kept free between two labels
    /// The extent along the axis of a label (its width below an axis, its height beside one).
    std::function<double(const std::string&)> labelExtent;
};

/// The step 1, 2 or 5 times a power of ten that comes nearest to the preferred distance without letting two
/// neighbouring labels touch, and gives the axis two ticks at least. Where labels leave room for no such
/// step, ticks stand at the ends only; an axis on which not even two labels find room may have one tick or
/// none. Requires an axis of finite ends and a length other than 0.
TickStep chooseTickStep(const Interval& axis, const TickRoom& room);

}  // namespace tessel
