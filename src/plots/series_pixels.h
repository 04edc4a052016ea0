// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessel {

/// Which point of a long series lies under the pointer, where thousands of them share each column of pixels.
/// What is drawn at the pixels of a column is written down the first time that the pointer comes near it;
/// then an answer costs the same however many points there are.
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
    void begin(const PixelMap& map);
    std::int64_t write(std::span<const double> values, int column);
    std::uint32_t at(int column, int line) const;

    PixelMap map_;
    int left_ = 0, top_ = 0, height_ = 0;
    std::vector<std::uint32_t> pixels_;  ///< the first point of each pixel, column by column; 0 for none
    std::vector<bool> written_;          ///< the columns that are
};

}  // namespace tessel
