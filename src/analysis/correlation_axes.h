// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

namespace tessel {

/// The limits of one axis (mS/m).
struct AxisLimits {
    double minimum = 0;
    double maximum = 0;
};

/// The axes of a plot of EM2 (y) against EM1 (x).
struct CorrelationAxes {
    AxisLimits x, y;
};

/// Each column's range widened at both ends by a tenth of its span; a constant column gives equal limits.
/// A limit that would lie beyond all Doubles is the largest one. Throws subscriptOutOfRange without a site.
CorrelationAxes correlationAxes(const Survey& survey);

}  // namespace tessel
