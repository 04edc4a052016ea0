// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"
#include "drawing/colour_map.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace tessel {

/// A picture in memory: 0xAARRGGBB, premultiplied, row after row. `stride` counts pixels from one row to the
/// next. The memory belongs to somebody else.
struct Raster {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;
};

/// A small symbol, ready to be written into a raster. Offsets count from its upper left corner.
struct Stamp {
    /// A place in pixels, and 0xAARRGGBB, premultiplied.
    struct Pixel {
        int dx = 0, dy = 0;
        std::uint32_t colour = 0;
    };
    int size = 0;  ///< pixels, both ways
    std::vector<Pixel> opaque;
    std::vector<Pixel> translucent;
};

/// The stamp of a pen of one colour that is `size` pixels wide (1 or more): a block up to 2 pixels, a disc
/// with hard edges above. `colour` is 0xRRGGBB.
Stamp penStamp(int size, std::uint32_t colour);

/// A stamp from a square picture of `size` by `size` premultiplied pixels; transparent ones are left out.
Stamp pictureStamp(int size, const std::uint32_t* pixels);

/// The same with hard edges: what is half covered or more is opaque, the rest is left out. Where stamps lie
/// over each other by the hundred their soft edges add up to that anyway, and take most of the time.
Stamp hardEdged(const Stamp& stamp);

/// The last stamp written at each place, so that a series writes a place once, however many points it has
/// there. Series are told apart by numbers; nextSeries() begins another.
class StampMarks {
  public:
    /// Forgets all; for rasters of this size.
    void reset(int width, int height);
    void nextSeries();
    /// True the first time the present series asks for this place.
    bool take(std::size_t place) {
        std::uint16_t& mark = marks_.data()[place];
        return std::exchange(mark, series_) != series_;
    }

  private:
    std::vector<std::uint16_t> marks_;
    std::uint16_t series_ = 0;
};

/// Writes a stamp, centred, for each of `count` points. Points that do not lie in the map's area (the hole
/// value, infinities and not-a-number among them) are left out, as are those whose entry in `skip` is
/// not 0 (`skip` may be null). Stamps are cut off at the raster's edges. `marks` may be null.
void stampPoints(const Raster& raster, const PixelMap& map, const Stamp& stamp, const double* x,
                 const double* y, const std::uint8_t* skip, std::size_t count, StampMarks* marks);

/// The same with every point in the colour of its shade. Of the stamp only the shape counts.
void stampPoints(const Raster& raster, const PixelMap& map, const Stamp& stamp, const Shade* shades,
                 const double* x, const double* y, const std::uint8_t* skip, std::size_t count,
                 StampMarks* marks);

}  // namespace tessel
