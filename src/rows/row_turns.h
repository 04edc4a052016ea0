// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/site_removal.h"

#include <vector>

namespace tessel {

// Rows of a logger that never stopped: no gap lies between its passes, but a turn does.
//
// A turn is where the way of the logger changes its heading, seen over a chord and not over a step: the angle
// between the chord that arrives at a place and the chord that leaves it (H. Freeman and L. S. Davis, "A
// corner-finding algorithm for chain-coded curves", IEEE Transactions on Computers C-26, 1977), as movement
// libraries split tracks at changes of angle (A. Graser, "MovingPandas: efficient structures for movement
// data in Python", GI_Forum 7, 2019) and as those who clean harvesters' records tell passes apart. Rows are
// the stretches between turns that are long enough.

struct TurnParameters {
    double turnAngle = 45;  ///< degrees: a heading that changes by more is a turn
    double chord = 10;      ///< metres over which a heading is taken
    double shortest = 10;   ///< metres from a row's first site to its last; shorter stretches belong to turns
    double gap = 0;         ///< metres: a longer step between neighbours ends a row too (0: none does) ...
    int distanceMode = 1;   ///< ... by this measure: 1 true distance (0 too), 2 along X, 3 along Y
};

/// What `row` says of a site in a turn.
inline constexpr int kInTurn = 0;

/// What a search has found; the survey is as it was.
struct RowTurns {
    std::vector<int> row;  ///< of each site: 1, 2, 3, ... in site order, or kInTurn
    int rows = 0;          ///< may be more than a survey can hold
    SiteIndex sitesInTurns = 0;
    int gaps = 0;         ///< the gaps at which the way was cut, strays left aside
    double shortest = 0;  ///< metres from first to last site, of the shortest and the longest row
    double longest = 0;
};

/// A longer step than this ends a row (metres): the survey's minimum distance, or where it has none a hundred
/// times the median of the steps that are not 0.
double turnGap(const Survey& survey);

/// What the survey itself proposes: 45 degrees, a chord of ten times the median of the steps that are not 0,
/// this gap, the survey's own measure, and as the shortest row a fifth of the length that half of
/// the way is at least as long as.
TurnParameters proposedTurnParameters(const Survey& survey);

/// Finds the rows. Requires positive angle (below 180) and chord, shortest >= 0 and gap >= 0.
/// - A chord's ends lie on the way of the logger (`walked_path.h`), so that sites at rest do not turn, noise
/// is
///   averaged, and steps that jump out and back do not count.
/// - A stretch whose ends head in opposite directions has a turn that is wider than the chord: it is looked
/// for
///   with a chord twice and four times as long.
/// - A row reaches as far into its turns as its sites lie on the line of its last chord.
RowTurns findRowTurns(const Survey& survey, const TurnParameters& parameters);

/// Where the rows that were found stand, and the places in turns (metres).
struct FoundStretches {
    std::vector<IndexRange> rows;
    std::vector<double> turnX, turnY;
};
FoundStretches stretchesOf(const Survey& survey, const RowTurns& found);

/// What becomes of the sites in turns.
enum class TurnSites {
    kKeep,   ///< they go to the nearer of the rows before and behind them
    kDelete  ///< they leave the survey
};

/// The row of each site where those in turns stay: to the row before go the first of them, as many as are
/// nearer to its end than to the beginning of the row behind. Requires rows.
std::vector<int> rowsWithTurnsKept(const Survey& survey, const RowTurns& found);

/// Puts what has been found in the survey into it: row column, NumRows, RowIndex, NumPoints, and where sites
/// in turns are deleted all that `removeSites` brings in step. Requires what was found in this survey as it
/// stands, and 1 to kMaxRows rows. Where memory runs out nothing has been changed.
Difference applyRowTurns(Survey& survey, const RowTurns& found, TurnSites inTurns);

}  // namespace tessel
