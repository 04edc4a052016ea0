// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/chart_points.h"

#include <algorithm>
#include <array>
#include <cstddef>
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
    forgetFrom(0);
}

void ChartPoints::set(std::size_t first, std::span<const double> x, std::span<const double> y) {
    std::copy(x.begin(), x.end(), x_.data() + first);
    std::copy(y.begin(), y.end(), y_.data() + first);
    forgetFrom(first);
    if (blocks().size() == first / kBlock) lookUpTo(first + x.size());
}

// Part by part, so that the processor has each at hand when it is looked at.
void ChartPoints::assign(std::span<const double> x, std::span<const double> y) {
    constexpr std::size_t kPart = 16 * kBlock;
    for (std::vector<double>* const points : {&x_, &y_}) {
        points->reserve(x.size() + 1);
        points->clear();
        points->push_back(kHole);
    }
    forgetFrom(0);
    for (std::size_t first = 0; first < x.size(); first += kPart) {
        const auto last = static_cast<std::ptrdiff_t>(std::min(first + kPart, x.size()));
        x_.insert(x_.end(), x.begin() + static_cast<std::ptrdiff_t>(first), x.begin() + last);
        y_.insert(y_.end(), y.begin() + static_cast<std::ptrdiff_t>(first), y.begin() + last);
        lookUpTo(x_.size());
    }
}

void ChartPoints::forgetFrom(std::size_t first) {
    levels_.resize(1);
    if (blocks().size() > first / kBlock) blocks().resize(first / kBlock);
    isLookedAt_ = false;
}

// At whole blocks.
void ChartPoints::lookUpTo(std::size_t last) const {
    for (std::size_t i = blocks().size() * kBlock; i + kBlock <= last; i += kBlock)
        blocks().push_back(boxOf(x_.data() + i, y_.data() + i, kBlock));
}

const std::vector<std::vector<ChartPoints::Box>>& ChartPoints::levels() const {
    if (isLookedAt_) return levels_;
    lookUpTo(size());
    if (const std::size_t i = blocks().size() * kBlock; i < size())
        blocks().push_back(boxOf(x_.data() + i, y_.data() + i, size() - i));
    while (levels_.back().size() > kFan)
        levels_.push_back(larger(levels_.back()));
    isLookedAt_ = true;
    return levels_;
}

}  // namespace tessel
