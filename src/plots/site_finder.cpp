// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_finder.h"

#include "base/geometry.h"
#include "base/whole_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tessel {

namespace {

/// The 16 bits of a number with a free one above each.
std::uint64_t spread(std::uint64_t bits) {
    constexpr std::pair<int, std::uint64_t> kSteps[] = {
        {8, 0x00FF00FFU}, {4, 0x0F0F0F0FU}, {2, 0x33333333U}, {1, 0x55555555U}};
    for (const auto& [by, mask] : kSteps)
        bits = (bits | bits << by) & mask;
    return bits;
}

/// The extent of the values that are finite, and each of them as a part of it in 16 bits.
class Side {
  public:
    explicit Side(std::span<const double> values) {
        for (const double value : values)
            if (!isHole(value, 0)) range_ = range_.with({value, value});
    }
    std::uint64_t part(double value) const {
        constexpr double kMost = std::numeric_limits<std::uint16_t>::max();
        const double half = range_.halfLength();
        const double part = half > 0 ? (value / 2 - range_.from / 2) / half : 0;
        return static_cast<std::uint64_t>(int64Within(std::clamp(part, 0.0, 1.0) * kMost));
    }

  private:
    static constexpr double kFar = std::numeric_limits<double>::infinity();
    Interval range_{kFar, -kFar};
};

}  // namespace

// Along a curve that goes through the plane quarter by quarter, so that neighbours on it lie close together;
// of one place in the order of the sites, which mostly are neighbours too. Place and site are one number, as
// that is sorted twice as fast.
void SiteFinder::index(std::span<const double> x, std::span<const double> y) {
    const Side across(x);
    const Side along(y);
    std::vector<std::uint64_t> order;
    order.reserve(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        if (!isHole(x[i], y[i]))
            order.push_back((spread(across.part(x[i])) | spread(along.part(y[i])) << 1) << 32 | i);
    std::sort(order.begin(), order.end());
    sites_.resize(order.size());
    std::transform(order.begin(), order.end(), sites_.begin(),
                   [](std::uint64_t number) { return static_cast<std::uint32_t>(number); });
    std::vector<double> xs, ys;
    xs.reserve(order.size());
    ys.reserve(order.size());
    for (const std::uint32_t site : sites_) {
        xs.push_back(x[site]);
        ys.push_back(y[site]);
    }
    series_.assign(1, {});
    series_.front().points.assign(xs, ys);
}

SiteFinder::Found SiteFinder::nearest(const PixelMap& map, double px, double py, double within,
                                      const std::uint8_t* skip) const {
    const auto isMeant = [&](std::size_t point) { return !skip || skip[sites_[point - 1]] == 0; };
    std::int64_t lookedAt = 0;
    // In ever larger circles: many sites may lie within the largest one.
    for (const double circle : {within / 64, within / 16, within / 4, within}) {
        const NearestPoint found = nearestPoint(series_, map, px, py, circle, isMeant);
        lookedAt += found.lookedAt;
        if (found.series > 0) return {sites_[static_cast<std::size_t>(found.point) - 1], lookedAt};
    }
    return {-1, lookedAt};
}

SiteIndex nearestSite(std::span<const double> x, std::span<const double> y, const PixelMap& map, double px,
                      double py, double within) {
    SiteIndex nearest = -1;
    // Just above, so that what lies exactly `within` pixels away is found.
    double best = std::nextafter(within * within, std::numeric_limits<double>::infinity());
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double dx = map.pixelX(x[i]) - px, dy = map.pixelY(y[i]) - py;
        if (!(dx * dx + dy * dy < best)) continue;
        best = dx * dx + dy * dy;
        nearest = static_cast<SiteIndex>(i);
    }
    return nearest;
}

}  // namespace tessel
