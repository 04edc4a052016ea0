// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <array>

namespace tessel {

/// What a survey is like in a few figures. A step is the way from a site to the next one in file order; a
/// step of a repeated position is exactly 0 m long, any other is a move.
struct SurveyFacts {
    /// Of X, Y (metres), EM1, EM2 (mS/m), from the smallest to the largest value; all 0 without a site.
    std::array<Interval, 4> ranges{{{0, 0}, {0, 0}, {0, 0}, {0, 0}}};
    SiteIndex steps = 0;              ///< one fewer than sites
    SiteIndex repeatedPositions = 0;  ///< steps that are no moves
    double medianStep = 0;            ///< metres, over all steps; no larger than the largest Double
    double medianMove = 0;            ///< metres, over the moves alone
    SiteIndex sitesAtZero = 0;        ///< at X 0 and Y 0, as loggers write a missing position
    bool looksLikeDegrees = false;    ///< X and Y can be longitude and latitude and hardly metres
};

/// Looks at every site once and, for the medians, at a copy of the moves: 8 bytes a site for as long as it
/// runs.
SurveyFacts surveyFacts(const Survey& survey);

}  // namespace tessel
