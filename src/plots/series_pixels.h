// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessel {

/// Which point of a long series lies under the pointer, where thousands of them share each column of pixels.
/// What is drawn at each pixel is written down the first time that a view is asked about; then an answer
/// costs the same however many points there are.
class SeriesPixels {
  public:
    struct Found {
        std::int64_t point = -1;    ///< none
        std::int64_t lookedAt = 0;  ///< points and pixels that were looked at for it
    };

    /// The points are others than before.
    void clear() { pixels_.clear(); }

    /// Point i lies at i across and values[i] along, i = 1, 2, ...; the first value is none's. Gives the
    /// point whose pixel is nearest to this one, rounded to whole pixels no farther away than `within`, among
    /// those that lie in the map's area; of several the first. Requires the values of the call before unless
    /// clear() was called in between, and fewer than 2^32.
    Found nearest(const PixelMap& map, std::span<const double> values, int px, int py, int within);

  private:
    bool areFor(const PixelMap& map) const;
    std::int64_t write(const PixelMap& map, std::span<const double> values);
    std::uint32_t at(int px, int py) const;

    PixelMap map_;
    int left_ = 0, top_ = 0, width_ = 0, height_ = 0;
    std::vector<std::uint32_t> pixels_;  ///< the first point of each pixel, line by line; 0 for none
};

}  // namespace tessel
