// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

namespace tessel {

/// The limits (mS/m) of the axes of a plot of EM2 (y) against EM1 (x). Each column's range widened at both
/// ends by a tenth of its span; a constant column gives equal limits. A limit that would lie beyond all
/// Doubles is the largest one. Throws subscriptOutOfRange without a site.
Rectangle correlationAxes(const Survey& survey);

}  // namespace tessel
