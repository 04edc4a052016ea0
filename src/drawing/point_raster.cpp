// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawing/point_raster.h"

#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tessel {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;

std::uint32_t alphaOf(std::uint32_t colour) {
    return colour >> 24;
}

/// The premultiplied colour laid over what is there, all four channels in one word.
std::uint32_t blended(std::uint32_t over, std::uint32_t under) {
    constexpr std::uint64_t kChannels = 0x00FF00FF00FF00FFU;
    const std::uint64_t spread = (under | (std::uint64_t{under} << 24)) & kChannels;
    std::uint64_t rest = spread * (255 - alphaOf(over)) + 0x0080008000800080U;
    rest = ((rest + ((rest >> 8) & kChannels)) >> 8) & kChannels;
    return over + static_cast<std::uint32_t>(rest | (rest >> 24));
}

/// The colour without its transparency.
std::uint32_t madeOpaque(std::uint32_t premultiplied) {
    std::uint32_t colour = kOpaque;
    for (const int shift : {0, 8, 16})
        colour |= std::min(255U, ((premultiplied >> shift & 255) * 255 + alphaOf(premultiplied) / 2) /
                                     alphaOf(premultiplied))
                  << shift;
    return colour;
}

/// Four pixels at a time; the last four overlap what is written already.
void fillRun(std::uint32_t* first, std::uint32_t* end, std::uint32_t colour) {
    constexpr std::ptrdiff_t kFour = 4;
    if (end - first < kFour) {
        for (; first != end; ++first)
            *first = colour;
        return;
    }
    for (; end - first > kFour; first += kFour)
        std::fill_n(first, kFour, colour);
    std::fill_n(end - kFour, kFour, colour);
}

bool isInside(const Raster& raster, int x, int y) {
    return x >= 0 && y >= 0 && x < raster.width && y < raster.height;
}

/// All four channels of a colour so opaque.
std::uint32_t premultiplied(std::uint32_t colour, std::uint32_t alpha) {
    std::uint32_t result = alpha << 24;
    for (const int shift : {0, 8, 16})
        result |= ((colour >> shift & 255) * alpha + 127) / 255 << shift;
    return result;
}

/// Every point as its stamp is.
struct OwnInk {
    struct Tint {
        std::uint32_t operator()(std::uint32_t colour) const { return colour; }
    };
    Tint at(std::size_t) const { return {}; }
};

/// Every point in the colour of its shade.
struct ShadeInk {
    struct Tint {
        std::uint32_t colour;
        std::uint32_t operator()(std::uint32_t own) const {
            return own >= kOpaque ? kOpaque | colour : premultiplied(colour, alphaOf(own));
        }
    };
    Tint at(std::size_t point) const { return {colours[shades[point]]}; }

    const Shade* shades;
    const std::uint32_t* colours = colourMap().data();
};

/// A stamp laid out for the rows of one raster: pixels of one colour side by side are one run.
class PlacedStamp {
  public:
    PlacedStamp(const Stamp& stamp, std::ptrdiff_t stride) : stamp_(stamp) {
        for (const Stamp::Pixel& p : stamp.opaque) {
            const std::ptrdiff_t at = p.dy * stride + p.dx;
            const bool continues =
                !runs_.empty() && runs_.back().colour == p.colour && runs_.back().end == at && p.dx > 0;
            if (continues)
                ++runs_.back().end;
            else
                runs_.push_back({at, at + 1, p.colour});
        }
        for (const Stamp::Pixel& p : stamp.translucent)
            translucent_.push_back({p.dy * stride + p.dx, p.colour});
    }

    const Stamp& stamp() const { return stamp_; }

    template <class Tint>
    void write(std::uint32_t* corner, const Tint& tint) const {
        for (const Run& run : runs_) {
            fillRun(corner + run.begin, corner + run.end, tint(run.colour));
        }
        for (const Pixel& p : translucent_)
            corner[p.at] = blended(tint(p.colour), corner[p.at]);
    }

  private:
    struct Run {
        std::ptrdiff_t begin, end;
        std::uint32_t colour;
    };
    struct Pixel {
        std::ptrdiff_t at;
        std::uint32_t colour;
    };
    const Stamp& stamp_;
    std::vector<Run> runs_;
    std::vector<Pixel> translucent_;
};

template <class Tint>
void writeCut(const Raster& raster, int left, int top, const Stamp& stamp, const Tint& tint) {
    for (const Stamp::Pixel& p : stamp.opaque)
        if (isInside(raster, left + p.dx, top + p.dy))
            raster.pixels[(top + p.dy) * raster.stride + left + p.dx] = tint(p.colour);
    for (const Stamp::Pixel& p : stamp.translucent) {
        if (!isInside(raster, left + p.dx, top + p.dy)) continue;
        std::uint32_t& pixel = raster.pixels[(top + p.dy) * raster.stride + left + p.dx];
        pixel = blended(tint(p.colour), pixel);
    }
}

bool isPenPixel(int size, int x, int y) {
    if (size <= 2) return true;
    const double dx = x + 0.5 - size / 2.0;
    const double dy = y + 0.5 - size / 2.0;
    return dx * dx + dy * dy <= size * size / 4.0;
}

/// Many points, and whether each of them is left out.
struct Points {
    const double* x;
    const double* y;
    const std::uint8_t* skip;
};

template <class Ink>
void writeStamps(const Raster& raster, const PixelMap& map, const PlacedStamp& placed, const Ink& ink,
                 const Points& points, std::size_t first, std::size_t last, StampMarks* marks) {
    const Stamp& stamp = placed.stamp();
    const int size = stamp.size;
    // From the centre of a point to the upper left corner of its stamp; `size` keeps the sum positive, so
    // that cutting off decimals rounds downwards.
    const double toCorner = 0.5 - size / 2.0 + size;
    const double left = std::max(map.area.x.from, -size / 2.0);
    const double top = std::max(map.area.y.from, -size / 2.0);
    const double right = std::min(map.area.x.to, raster.width + size / 2.0);
    const double bottom = std::min(map.area.y.to, raster.height + size / 2.0);
    // Copies, which no pixel that is written can change.
    const double xScale = map.xScale, xShift = map.xShift, yScale = map.yScale, yShift = map.yShift;
    const int lastColumn = raster.width - size, lastRow = raster.height - size;
    const std::ptrdiff_t width = raster.width, stride = raster.stride;
    std::uint32_t* const pixels = raster.pixels;
    for (std::size_t i = first; i < last; ++i) {
        const double px = xScale * points.x[i] + xShift;
        const double py = yScale * points.y[i] + yShift;
        if (!(px >= left && px <= right && py >= top && py <= bottom)) continue;
        if (points.skip && points.skip[i]) continue;
        const int column = intWithin(px + toCorner) - size;
        const int row = intWithin(py + toCorner) - size;
        if (column < 0 || row < 0 || column > lastColumn || row > lastRow) {
            writeCut(raster, column, row, stamp, ink.at(i));
            continue;
        }
        if (marks && !marks->take(static_cast<std::size_t>(row * width + column))) continue;
        placed.write(pixels + row * stride + column, ink.at(i));
    }
}

// A stamp that is a square of one colour, as the pens of dots on a map are.
bool isBlock(const Stamp& stamp, int size) {
    return stamp.size == size &&
           stamp.opaque.size() == static_cast<std::size_t>(size) * static_cast<std::size_t>(size) &&
           std::all_of(stamp.opaque.begin(), stamp.opaque.end(),
                       [&](const Stamp::Pixel& p) { return p.colour == stamp.opaque.front().colour; });
}

// The same as writeStamps() without marks, for blocks: nearly every point takes the way whose limits leave
// room for a whole block, which then is written without looking again.
template <int Size, class Ink>
void stampBlocks(const Raster& raster, const PixelMap& map, const PlacedStamp& block, const Ink& ink,
                 const Points& points, std::size_t count) {
    constexpr double kToCorner = 0.5 + Size / 2.0;
    constexpr double kRounding = 1e-6;  // what is nearer to the far edges than this goes the careful way
    const double left = std::max(map.area.x.from, Size / 2.0 - 0.5);
    const double top = std::max(map.area.y.from, Size / 2.0 - 0.5);
    const double right = std::min(map.area.x.to, raster.width + 0.5 - Size / 2.0 - kRounding);
    const double bottom = std::min(map.area.y.to, raster.height + 0.5 - Size / 2.0 - kRounding);
    const std::uint32_t own = block.stamp().opaque.front().colour;
    for (std::size_t i = 0; i < count; ++i) {
        const double px = map.xScale * points.x[i] + map.xShift;
        const double py = map.yScale * points.y[i] + map.yShift;
        if (!(px >= left && px <= right && py >= top && py <= bottom)) {
            writeStamps(raster, map, block, ink, points, i, i + 1, nullptr);
            continue;
        }
        if (points.skip && points.skip[i]) continue;
        const std::uint32_t colour = ink.at(i)(own);
        std::uint32_t* row = raster.pixels + (intWithin(py + kToCorner) - Size) * raster.stride +
                             (intWithin(px + kToCorner) - Size);
        for (int dy = 0; dy < Size; ++dy, row += raster.stride)
            std::fill_n(row, Size, colour);
    }
}

template <class Ink>
void stampAll(const Raster& raster, const PixelMap& map, const Stamp& stamp, const Ink& ink,
              const Points& points, std::size_t count, StampMarks* marks) {
    const PlacedStamp placed(stamp, raster.stride);
    if (marks == nullptr && isBlock(stamp, 1))
        stampBlocks<1>(raster, map, placed, ink, points, count);
    else if (marks == nullptr && isBlock(stamp, 2))
        stampBlocks<2>(raster, map, placed, ink, points, count);
    else
        writeStamps(raster, map, placed, ink, points, 0, count, marks);
}

}  // namespace

Stamp penStamp(int size, std::uint32_t colour) {
    Stamp stamp;
    stamp.size = std::max(1, size);
    for (int y = 0; y < stamp.size; ++y)
        for (int x = 0; x < stamp.size; ++x)
            if (isPenPixel(stamp.size, x, y)) stamp.opaque.push_back({x, y, kOpaque | colour});
    return stamp;
}

Stamp pictureStamp(int size, const std::uint32_t* pixels) {
    Stamp stamp;
    stamp.size = size;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const std::uint32_t colour = pixels[y * size + x];
            if (alphaOf(colour) == 255) stamp.opaque.push_back({x, y, colour});
            if (alphaOf(colour) > 0 && alphaOf(colour) < 255) stamp.translucent.push_back({x, y, colour});
        }
    return stamp;
}

Stamp hardEdged(const Stamp& stamp) {
    Stamp hard{stamp.size, stamp.opaque, {}};
    for (const Stamp::Pixel& p : stamp.translucent)
        if (alphaOf(p.colour) >= 128) hard.opaque.push_back({p.dx, p.dy, madeOpaque(p.colour)});
    // Row by row, as pixels side by side are written fastest.
    std::sort(hard.opaque.begin(), hard.opaque.end(), [](const Stamp::Pixel& a, const Stamp::Pixel& b) {
        return std::pair(a.dy, a.dx) < std::pair(b.dy, b.dx);
    });
    return hard;
}

void StampMarks::reset(int width, int height) {
    marks_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
    series_ = 0;
    nextSeries();
}

void StampMarks::nextSeries() {
    if (series_ == std::numeric_limits<std::uint16_t>::max()) {
        std::fill(marks_.begin(), marks_.end(), std::uint16_t{0});
        series_ = 0;
    }
    ++series_;
}

void stampPoints(const Raster& raster, const PixelMap& map, const Stamp& stamp, const double* x,
                 const double* y, const std::uint8_t* skip, std::size_t count, StampMarks* marks) {
    stampAll(raster, map, stamp, OwnInk{}, {x, y, skip}, count, marks);
}

void stampPoints(const Raster& raster, const PixelMap& map, const Stamp& stamp, const Shade* shades,
                 const double* x, const double* y, const std::uint8_t* skip, std::size_t count,
                 StampMarks* marks) {
    stampAll(raster, map, stamp, ShadeInk{shades}, {x, y, skip}, count, marks);
}

}  // namespace tessel
