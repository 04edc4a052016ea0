// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rows/site_removal.h"

#include <array>
#include <span>

namespace tessel {

/// The points of the current row that are picked for deletion, in the order of selection.
struct RowSelection {
    static constexpr int kMost = 101;

    /// Positions within the row, 1 for its first site; entries 0..SelCount-1 are valid.
    std::array<SiteIndex, kMost> SelPoints{};
    int SelCount = 0;

    /// The entry whose point has this horizontal value, or -1. `along` holds the row's horizontal values, in
    /// site order.
    int entryAt(double horizontal, std::span<const double> along) const;

    /// Appends a point. Throws subscriptOutOfRange with advice, changing nothing, when kMost are
    /// selected already.
    void append(SiteIndex point);
    /// Takes entry 0..SelCount-1 out; later entries move down.
    void remove(int entry);
    /// Appends those of `points`, in their order, that are not selected, until kMost are. Sites with the same
    /// horizontal value count each for itself. Gives how many found no room.
    SiteIndex select(std::span<const SiteIndex> points);
    /// Takes those of `points` out that are selected. Requires rising ones.
    void deselect(std::span<const SiteIndex> points);
    void clear() { SelCount = 0; }

    /// Picks or unpicks `point` (1..along.size()). Two sites with the same horizontal value count as one:
    /// picking the second unpicks the first. Gives the entry taken out, or -1 when the point was appended.
    int toggle(SiteIndex point, std::span<const double> along);
};

/// Takes the selected sites of a row out of the survey for good and clears the selection. A row that has lost
/// its last site goes, and those behind it move down by one. Requires NumPoints as counted, and a selection
/// of different sites of this row.
RemovedSites deleteSelectedSites(Survey& survey, int row, RowSelection& selection);

}  // namespace tessel
