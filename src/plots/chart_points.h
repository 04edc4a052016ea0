// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace tessel {

/// The value of a point that is not there: it is neither drawn nor picked and interrupts a line.
inline constexpr double kHole = 1e308;

/// True for the hole value and for anything that is no finite coordinate.
inline bool isHole(double x, double y) {
    return !(std::fabs(x) < kHole && std::fabs(y) < kHole);
}

/// The points of one series of a chart, by number. Point 0 belongs to no site and is a hole unless somebody
/// sets it; the points proper are 1..size() - 1.
///
/// The points also know where they lie: in boxes around blocks of neighbours, and around blocks of blocks,
/// so that who asks for a small part of the plane need not look at all of them. The boxes are found as
/// points are set in their order, or the first time they are asked for after a change.
class ChartPoints {
  public:
    /// Points in a block, and blocks in the next larger one.
    static constexpr std::size_t kBlock = 128;
    static constexpr std::size_t kFan = 16;

    /// Around the points of a block that are no holes; falls in both directions when there is none.
    struct Box : Rectangle {
        bool isWhole;  ///< none of the points is a hole
    };

    std::size_t size() const { return x_.size(); }
    std::span<const double> x() const { return x_; }
    std::span<const double> y() const { return y_; }

    /// Further points are holes.
    void resize(std::size_t size);
    /// The points `first`, first + 1, ... become these. Requires x and y of equal length and
    /// first + x.size() <= size().
    void set(std::size_t first, std::span<const double> x, std::span<const double> y);
    /// The points 1, 2, ... become these and there are no others; point 0 becomes a hole. Requires x and y of
    /// equal length.
    void assign(std::span<const double> x, std::span<const double> y);

    /// One box for each block of kBlock points, in their order; the last block may be shorter.
    std::span<const Box> boxes() const { return levels().front(); }

    /// Calls points(first, last), `last` being one past the end, for the blocks whose box and whose larger
    /// blocks' boxes `matters(box)` takes, in the order of the points.
    template <class Matters, class Points>
    void visit(const Matters& matters, const Points& points) const {
        const std::vector<std::vector<Box>>& all = levels();
        visitLevel(all, all.size() - 1, 0, all.back().size(), matters, points);
    }

  private:
    std::vector<Box>& blocks() const { return levels_.front(); }
    void forgetFrom(std::size_t first);
    void lookUpTo(std::size_t last) const;
    const std::vector<std::vector<Box>>& levels() const;

    template <class Matters, class Points>
    void visitLevel(const std::vector<std::vector<Box>>& all, std::size_t level, std::size_t first,
                    std::size_t last, const Matters& matters, const Points& points) const {
        for (std::size_t block = first; block < last; ++block) {
            if (!matters(all[level][block])) continue;
            if (level == 0)
                points(block * kBlock, std::min(size(), (block + 1) * kBlock));
            else
                visitLevel(all, level - 1, block * kFan, std::min(all[level - 1].size(), (block + 1) * kFan),
                           matters, points);
        }
    }

    std::vector<double> x_{kHole};
    std::vector<double> y_{kHole};
    /// Blocks of points first, the largest blocks last; after a change those of the first points, as far as
    /// they are known, and no larger ones.
    mutable std::vector<std::vector<Box>> levels_ = std::vector<std::vector<Box>>(1);
    mutable bool isLookedAt_ = false;
};

}  // namespace tessel
