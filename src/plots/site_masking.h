// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"
#include "rows/site_removal.h"

#include <cstdint>
#include <vector>

namespace tessel {

// The map of the whole survey on which sites are masked, restored and deleted.
//
// A site at (X, Y) lies on the map at x = (X - MapXMin) / (MapXMax - MapXMin) and
// y = 1 - (Y - MapYMin) / (MapYMax - MapYMin): north is up and the extent is the unit square. Zooming changes
// the window of that space that is shown, never the extent.

/// The part of the survey's plane (metres or degrees) that is the map's unit square. Its width and height are
/// greater than zero.
struct MapExtent {
    double MapXMin = 0, MapXMax = 1, MapYMin = 0, MapYMax = 1;

    Rectangle area() const { return {{MapXMin, MapXMax}, {MapYMin, MapYMax}}; }

    // Half the width and height, because the whole may be too large for a Double; halving changes no digit.
    double halfWidth() const { return MapXMax / 2 - MapXMin / 2; }
    double halfHeight() const { return MapYMax / 2 - MapYMin / 2; }

    /// Infinite for a place beyond all Doubles.
    double surveyX(double mapX) const { return (mapX * halfWidth() + MapXMin / 2) * 2; }
    double surveyY(double mapY) const { return ((1 - mapY) * halfHeight() + MapYMin / 2) * 2; }
};

/// The extent of all sites; with TrueScale the shorter axis is widened around its centre, so that a metre is
/// as long on either axis. An axis without extent, which could not be divided by, is widened around its
/// centre: to the other axis's extent with TrueScale, else to one unit. What would lie beyond all
/// Doubles is the largest one. Requires a site; throws subscriptOutOfRange without one.
MapExtent SetMapScale(const Survey& survey, bool TrueScale);

/// One entry a site: 0 = shown and kept, 1 = masked.
using SiteMaskArray = std::vector<std::uint8_t>;

/// Masks the sites strictly inside the rectangle with these opposite corners (map space, in either order); a
/// site on an edge stays as it is, and so do masks set before. Gives the number of sites masked in all. y1
/// and y2 are overwritten with the rectangle's northern and southern edge in survey units (infinite beyond
/// all Doubles). Requires one entry of SiteMask for each site.
SiteIndex MaskSites(const Survey& survey, const MapExtent& extent, SiteMaskArray& SiteMask, double x1,
                    double& y1, double x2, double& y2);

/// Unmasks every site.
void recoverSites(SiteMaskArray& SiteMask);

/// Takes the masked sites out of the survey for good, shrinks the storage to the sites kept, and leaves
/// SiteMask with an entry of 0 for each of them. A row that has lost all its sites is a gap in the numbering.
RemovedSites deleteMaskedSites(Survey& survey, SiteMaskArray& SiteMask);

/// All sites in order, in blocks whose ends are multiples of 100 sites (but for the last): after each of them
/// a map that is being drawn may be shown as far as it is.
std::vector<IndexRange> drawingBlocks(const Survey& survey);

/// The runs of sites whose row number, rounded, is `row`; one run where rows are stored as they should be.
std::vector<IndexRange> sitesOfRow(const Survey& survey, int row);

}  // namespace tessel
