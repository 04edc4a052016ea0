// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <span>
#include <string_view>
#include <vector>

namespace tessel {

/// The measure of a lag distance plot.
enum class LagMeasure { kTrueDistance, kAlongX, kAlongY };

/// What a lag distance plot shows: distances from each site to the one before it (metres) against the site's
/// sequence number, and a line at the minimum distance between rows.
struct LagDistances {
    std::string_view header;
    std::span<const double> distances;  ///< entry i is the distance from site i-1 to site i; entry 0 is none
    double top = 0;  ///< upper end of the distance axis: the largest distance or MinDistance
};

/// Gives the distances of this measure, which must have been calculated, with what the plot needs. Valid
/// until they are calculated again.
LagDistances lagDistances(const Survey& survey, LagMeasure measure);

/// The measure as row detection counts them: 1 true distance, 2 along X, 3 along Y.
int distanceModeOf(LagMeasure measure);

/// first, first + 1, ...: `count` sequence numbers of sites as positions on an axis.
std::vector<double> sequenceNumbers(SiteIndex first, SiteIndex count);

}  // namespace tessel
