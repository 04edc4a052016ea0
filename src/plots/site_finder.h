// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "plots/chart_geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessel {

/// Which site lies under the pointer, however many there are and in whatever order: an index, made once, that
/// has neighbours in the plane side by side.
class SiteFinder {
  public:
    /// The index has not been made, or is out of date.
    bool isEmpty() const { return series_.empty(); }
    void clear() { series_.clear(); }

    /// Makes the index of sites at these places; those that are no finite numbers are left out. Requires x
    /// and y of equal length, below 2^32.
    void index(std::span<const double> x, std::span<const double> y);

    struct Found {
        SiteIndex site = -1;  ///< none
        std::int64_t lookedAt = 0;
    };
    /// The site nearest to a pixel position among those that lie in the map's area and not farther away than
    /// `within` pixels, and how many places were looked at for it. Sites whose entry in `skip` is not 0 are
    /// passed over; `skip` may be null.
    Found nearest(const PixelMap& map, double px, double py, double within,
                  const std::uint8_t* skip = nullptr) const;

  private:
    std::vector<ChartSeries> series_;   ///< one, of all sites
    std::vector<std::uint32_t> sites_;  ///< of its points, from point 1 on
};

/// The same without an index: one pass over all sites, for a single click.
SiteIndex nearestSite(std::span<const double> x, std::span<const double> y, const PixelMap& map, double px,
                      double py, double within);

}  // namespace tessel
