// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_points.h"

#include <array>
#include <limits>

namespace tessel {

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();
constexpr ChartPoints::Box kNoBox{{{kFar, -kFar}, {kFar, -kFar}}, true};

/// The lowest and highest of a whole block's values, four at a time, which the processor compares at once.
class Extremes {
  public:
    explicit Extremes(const double* values) {
        for (std::size_t i = 0; i < ChartPoints::kBlock; i += kLanes)
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                const double value = values[i + lane];
                low_[lane] = value < low_[lane] ? value : low_[lane];
                high_[lane] = value > high_[lane] ? value : high_[lane];
                odd_[lane] += value - value;  // not-a-number for whatever is not finite, 0 otherwise
            }
    }

    double low() const { return *std::min_element(low_.begin(), low_.end()); }
    double high() const { return *std::max_element(high_.begin(), high_.end()); }
    bool hasHole() const {
        return odd_ != std::array<double, kLanes>{} || low() <= -kHole || high() >= kHole;
    }

  private:
    static constexpr std::size_t kLanes = 4;
    std::array<double, kLanes> low_{kFar, kFar, kFar, kFar};
    std::array<double, kLanes> high_{-kFar, -kFar, -kFar, -kFar};
    std::array<double, kLanes> odd_{};
};

ChartPoints::Box boxAmongHoles(const double* x, const double* y, std::size_t count) {
    ChartPoints::Box box = kNoBox;
    for (std::size_t i = 0; i < count; ++i) {
        if (isHole(x[i], y[i])) {
            box.isWhole = false;
            continue;
        }
        box = {{box.x.with({x[i], x[i]}), box.y.with({y[i], y[i]})}, box.isWhole};
    }
    return box;
}

ChartPoints::Box boxOf(const double* x, const double* y, std::size_t count) {
    if (count < ChartPoints::kBlock) return boxAmongHoles(x, y, count);
    const Extremes across(x);
    const Extremes along(y);
    if (across.hasHole() || along.hasHole()) return boxAmongHoles(x, y, count);
    return {{{across.low(), across.high()}, {along.low(), along.high()}}, true};
}

/// The boxes around kFan boxes each.
std::vector<ChartPoints::Box> larger(const std::vector<ChartPoints::Box>& boxes) {
    std::vector<ChartPoints::Box> result((boxes.size() + ChartPoints::kFan - 1) / ChartPoints::kFan, kNoBox);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        ChartPoints::Box& box = result[i / ChartPoints::kFan];
        box = {{box.x.with(boxes[i].x), box.y.with(boxes[i].y)}, box.isWhole && boxes[i].isWhole};
    }
    return result;
}

}  // namespace

void ChartPoints::resize(std::size_t size) {
    x_.resize(size, kHole);
    y_.resize(size, kHole);
    levels_.clear();
}

void ChartPoints::set(std::size_t first, std::span<const double> x, std::span<const double> y) {
    std::copy(x.begin(), x.end(), x_.data() + first);
    std::copy(y.begin(), y.end(), y_.data() + first);
    levels_.clear();
}

void ChartPoints::assign(std::span<const double> x, std::span<const double> y) {
    const auto replace = [](std::vector<double>& points, std::span<const double> by) {
        points.clear();
        points.reserve(by.size() + 1);
        points.push_back(kHole);
        points.insert(points.end(), by.begin(), by.end());
    };
    replace(x_, x);
    replace(y_, y);
    levels_.clear();
}

const std::vector<std::vector<ChartPoints::Box>>& ChartPoints::levels() const {
    if (!levels_.empty()) return levels_;
    std::vector<Box>& blocks = levels_.emplace_back();
    blocks.reserve((size() + kBlock - 1) / kBlock);
    for (std::size_t i = 0; i < size(); i += kBlock)
        blocks.push_back(boxOf(x_.data() + i, y_.data() + i, std::min(kBlock, size() - i)));
    while (levels_.back().size() > kFan)
        levels_.push_back(larger(levels_.back()));
    return levels_;
}

}  // namespace tessel
