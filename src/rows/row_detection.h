// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/site_runs.h"

namespace tessel {

// Rows (transects) are found from the gaps between consecutive sites, which a logger writes in driving order:
// a gap longer than MinDistance starts a new row.

/// What Assign_Row arrived at.
enum class RowDetection {
    kAssigned,    ///< every site has its row number; NumRows and RowIndex are the number of rows
    kTooManyRows  ///< more than kMaxRows: RowIndex is kMaxRows + 1, NumRows keeps its old value
};

/// The words for RowDetection::kTooManyRows.
inline constexpr const char* kTooManyRows = "Too many rows: Please specify a larger distance value";

/// Fill TrueDist / XDist / YDist (metres; entries 0 and NumSites stay 0) and the largest value of each. A
/// distance that is too large for a Double is the largest Double.
void Calculate_Distance(Survey& survey);
void Calculate_X_Distance(Survey& survey);
void Calculate_Y_Distance(Survey& survey);

/// The same by a measure (1 true distance, 2 along X, 3 along Y; 0, nothing), and by the measure chosen
/// (UseTrueDist, else UseXDist, else UseYDist; none, nothing).
void Calculate_Distances(Survey& survey, int distanceMode);
void measureDistances(const Survey& survey, int distanceMode, SurveyCounts& counts,
                      DistanceArrays& distances);
void Calculate_Chosen_Distance(Survey& survey);

/// Makes room for the distances of the measure chosen. Who takes sites out calls it first, so that nothing
/// behind the first site taken out can fail for want of memory.
void Reserve_Chosen_Distance(Survey& survey);

/// The distances by a measure (1 true distance, 2 along X, 3 along Y), as the procedures above fill them,
/// with the survey left alone.
std::vector<double> distancesBy(const Survey& survey, int distanceMode);

/// Brings all distances in step with sites that have been removed, given the runs in which they stood (in
/// order, none reaching into the next) and the number of sites that there were: arrays that were in step
/// become those that a calculation of all would give, with only the distances across a gap calculated; of the
/// others those of the measure chosen are calculated and those of the rest forgotten.
void Distances_After_Removal(Survey& survey, std::span<const IndexRange> removed, SiteIndex before);

/// Writes the row column from the distances of the measure chosen, which must have been calculated. The gap
/// behind site 0 is never looked at: sites 0 and 1 share row 1 however far apart they are. With no measure
/// chosen the row column is left alone and there is one row. On TooManyRows the sites before the 251st row
/// have their numbers and the others keep theirs.
RowDetection Assign_Row(Survey& survey);

/// False after TooManyRows, until rows have been found again: the row column then is half old, half new.
bool rowsAreUsable(const Survey& survey);

/// Counts the sites of each run of equal row numbers into NumPoints, and the runs in RowIndex. Requires rows
/// contiguous and numbered 1, 2, 3, ... in site order. Throws subscriptOutOfRange, changing nothing, when
/// there are more than kMaxRows runs.
void Calculate_NumPoints(Survey& survey);
void countPoints(const Survey& survey, SurveyCounts& counts);

/// Largest X and Y, starting from 0: a survey at negative coordinates has a maximum of 0.
void Calculate_Max(Survey& survey);
/// Smallest X and Y, starting from site 0. Requires a site; without one both are 0.
void Calculate_Min(Survey& survey);
/// Both.
void findExtents(const Survey& survey, SurveyCounts& counts);

}  // namespace tessel
