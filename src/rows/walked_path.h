// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "base/geometry.h"

#include <vector>

namespace tessel {

// The way that a logger took, of places that can be told apart: a step between sites is none, because
// positions repeat, tremble and jump.

/// The mean of consecutive sites that lie together. Its sites end where those of the next place begin.
struct WayPlace {
    double x = 0, y = 0;
    double way = 0;       ///< metres from the first place of its piece
    SiteIndex first = 0;  ///< the first of its sites
};

struct WalkedPath {
    std::vector<WayPlace> places;
    std::vector<IndexRange> pieces;  ///< the places between two gaps, in order
    std::vector<IndexRange>
        strays;  ///< sites that have jumped away and are followed by a jump back, in order
    SiteIndex sites = 0;

    const WayPlace& place(std::int64_t i) const { return places[static_cast<std::size_t>(i)]; }
    /// The first site of this place; behind the last place the number of sites.
    SiteIndex siteAt(std::int64_t i) const {
        return i < static_cast<std::int64_t>(places.size()) ? place(i).first : sites;
    }
};

struct PathRules {
    double together = 1;   ///< sites within this of their mean are one place (metres)
    double gap = 0;        ///< a step longer than this ends a piece (metres) ...
    int distanceMode = 1;  ///< ... by this measure: 1 true distance, 2 along X, 3 along Y
    double stray = 1;      ///< how much further than a gap from where they left strays come back (metres)
};

/// The way through all sites. Single sites outside of a place do not end it: two in a row begin another.
/// Sites that jump away over a gap and are followed, at most kMostStrays places later, by a jump back to
/// where they left (nearer than half of either jump) are strays, such as lost fixes written as 0, 0: they
/// belong to the place that they left and do not move it. One pass.
WalkedPath walkedPath(const Survey& survey, const PathRules& rules);
inline constexpr int kMostStrays = 10;

/// These sites without strays at their ends; none where all are strays.
IndexRange withoutStrayEnds(const WalkedPath& path, IndexRange sites);

/// The point of a piece (its places) after `way` metres, between two places as the crow flies. Requires
/// place(i).way <= way <= place(i + 1).way, or the last place i.
struct WayPoint {
    double x = 0, y = 0;
};
WayPoint pointOnWay(const WalkedPath& path, const IndexRange& piece, std::int64_t i, double way);

/// The median of the steps between neighbours that are not 0 (metres); 0 where all are. Of a sample of at
/// most kSampleSize steps (base/sample.h).
double medianStep(const Survey& survey);

}  // namespace tessel
