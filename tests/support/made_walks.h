// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <vector>

namespace tessel {

// Fields made up for measuring how well rows are found: the way of a logger whose rows are known.

enum class WalkKind {
    kBoustrophedon,  ///< 20 parallel rows to and fro, 8 m apart, square turns
    kSpiral,         ///< inwards along the four sides of a field, every side a row
    kLoops,          ///< 20 parallel rows, 8 m apart, with loops of 6 m radius on the headland
    kContour,        ///< 16 rows along the contour of a slope, curved, square turns
    kTwoBlocks       ///< 12 rows, a way across, and 12 shorter rows at a right angle
};

struct WalkPlan {
    WalkKind kind = WalkKind::kBoustrophedon;
    double noise = 0;     ///< standard deviation of each coordinate of each fix (metres)
    double repeated = 0;  ///< part of the sites that repeat the position before
    int rests = 0;        ///< how often the logger rests for 40 sites on its way
    double lost = 0;      ///< part of the sites that have lost their fix and stand at 0, 0, up to 5 in a row
    bool paused = false;  ///< nothing is logged between rows
    unsigned seed = 1;
};

struct MadeWalk {
    Survey survey;                ///< true distances chosen and calculated
    std::vector<int> row;         ///< the true row of each site; 0 between rows
    std::vector<int> rowsBefore;  ///< of each site: how many rows have begun
    int rows = 0;
};

/// A site every metre or so, at coordinates of a national grid, turned against its axes.
MadeWalk madeWalk(const WalkPlan& plan);

/// What came of looking for the rows of a made walk.
struct RowScore {
    double right =
        0;         ///< part of the sites that are in the right row; between rows both neighbours are right
    int rows = 0;  ///< rows found
};

/// `found` holds a row for each site, or 0 for none, which is right between rows only. A row that was found
/// counts for one true row, that of most of its sites.
RowScore scoreRows(const MadeWalk& walk, const std::vector<int>& found);

}  // namespace tessel
