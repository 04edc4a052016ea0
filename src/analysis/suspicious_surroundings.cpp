// SPDX-License-Identifier: GPL-3.0-or-later
// The rule that looks at readings around a site.
#include "analysis/robust_measures.h"
#include "analysis/suspect_rules.h"
#include "base/whole_numbers.h"

#include <algorithm>

namespace tessel {

namespace {

// Of more sites around than this only every second, third, ... is looked at: where a logger rests, thousands
// lie on one spot.
constexpr SiteIndex kMostAround = 512;
constexpr SiteIndex kFewestAround = 4;

// The sites in the order of the squares of a grid in which they lie, so that those around a site are three
// stretches of memory. Only squares with sites exist: a lost fix may be thousands of kilometres away.
class SiteGrid {
  public:
    SiteGrid(const Survey& survey, double side) {
        const double* const x = survey.SiteData.column(kX);
        const double* const y = survey.SiteData.column(kY);
        std::vector<std::pair<std::uint64_t, SiteIndex>> order;
        order.reserve(static_cast<std::size_t>(survey.NumSites));
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            order.push_back({squareOf(intBelow((x[i] - x[0]) / side), intBelow((y[i] - y[0]) / side)), i});
        std::sort(order.begin(), order.end());
        for (const auto& [square, site] : order) {
            squares.push_back(square);
            sites.push_back(site);
        }
    }

    /// The entries of a square and of those to its left and right, in the line of squares that lies `line`
    /// above it.
    IndexRange entriesBeside(std::uint64_t square, int line) const {
        const std::uint64_t middle = square + (static_cast<std::uint64_t>(line) << 32);
        const auto first = std::lower_bound(squares.begin(), squares.end(), middle - 1);
        const auto last = std::upper_bound(first, squares.end(), middle + 1);
        return {first - squares.begin(), last - squares.begin()};
    }

    std::vector<std::uint64_t> squares;  ///< of each entry, rising
    std::vector<SiteIndex> sites;        ///< of each entry

  private:
    // Lines of squares lie one behind the other. Sites beyond all squares are in the outermost ones.
    static std::uint64_t squareOf(int column, int line) {
        static constexpr int kMost = (1 << 30) - 1;
        const auto clamped = [](int i) {
            return static_cast<std::uint64_t>(std::clamp(i, -kMost, kMost) + std::int64_t{1 << 30});
        };
        return clamped(line) << 32 | clamped(column);
    }
};

// The columns of the survey in the order of a grid.
class SurroundingsSearch {
  public:
    explicit SurroundingsSearch(const RuleRun& run)
        : run_(run), grid_(run.survey, run.parameters.radius), x_(ordered(kX)), y_(ordered(kY)) {
        for (const int column : run.readings()) {
            const double noise = readingNoise(run.survey, column);
            readings_.push_back({ordered(column), noise, noise * run.parameters.aroundThreshold});
        }
    }

    bool flag() {
        const auto entries = static_cast<SiteIndex>(x_.size());
        for (SiteIndex i = 0; i < entries; ++i) {
            if (i % kSitesBetweenQuestions == 0 &&
                !run_.goesOn(static_cast<double>(i) / static_cast<double>(entries)))
                return false;
            const auto square = grid_.squares[index(i)];
            if (i == 0 || square != grid_.squares[index(i - 1)]) lookAround(square);
            for (const Reading& reading : readings_)
                if (mayBeUnlike(i, reading) && isUnlikeOthers(i, reading))
                    run_.flag(grid_.sites[index(i)], kUnlikeAround);
        }
        return true;
    }

  private:
    struct Reading {
        std::vector<double> values;
        double noise, allowed;
    };

    static std::size_t index(SiteIndex i) { return static_cast<std::size_t>(i); }

    std::vector<double> ordered(int column) const {
        std::vector<double> values;
        values.reserve(grid_.sites.size());
        for (const SiteIndex site : grid_.sites)
            values.push_back(run_.survey.SiteData(column, site));
        return values;
    }

    void lookAround(std::uint64_t square) {
        SiteIndex all = 0;
        for (int line = -1; line <= 1; ++line) {
            const IndexRange entries = grid_.entriesBeside(square, line);
            around_[index(line + 1)] = entries;
            all += entries.count();
        }
        every_ = (all + kMostAround - 1) / kMostAround;
    }

    // Calls act(entry, whether it lies within the radius) for the sites around entry i but itself.
    template <typename Act>
    void forEachAround(SiteIndex i, Act act) const {
        const double x = x_[index(i)];
        const double y = y_[index(i)];
        for (const IndexRange& entries : around_)
            for (SiteIndex j = entries.first; j < entries.last; j += every_) {
                const double dx = x_[index(j)] - x;
                const double dy = y_[index(j)] - y;
                act(j, dx * dx + dy * dy <= square_ && j != i);
            }
    }

    // As for spikes along a row: only a value from which more than half of those around are further than
    // noise allows, all on one side, can be unlike them.
    bool mayBeUnlike(SiteIndex i, const Reading& reading) const {
        Counts counts;
        for (const IndexRange& entries : around_)
            count(i, reading, entries, counts);
        const double all = counts.total(counts.all) - 1;  // itself is neither below nor above
        return all >= kFewestAround &&
               2 * std::max(counts.total(counts.below), counts.total(counts.above)) >= all;
    }

    // Several counts side by side, which the compiler keeps in vectors.
    struct Counts {
        static constexpr int kLanes = 4;
        using Lanes = std::array<double, kLanes>;
        Lanes all{}, below{}, above{};
        static double total(const Lanes& lanes) { return lanes[0] + lanes[1] + lanes[2] + lanes[3]; }
    };

    void count(SiteIndex i, const Reading& reading, const IndexRange& entries, Counts& counts) const {
        const double* const values = reading.values.data();
        const double* const xs = x_.data();
        const double* const ys = y_.data();
        const double x = xs[i], y = ys[i], square = square_;
        const double low = values[i] - reading.allowed, high = values[i] + reading.allowed;
        const auto look = [&](SiteIndex j, std::size_t lane) {
            const double dx = xs[j] - x;
            const double dy = ys[j] - y;
            const double isNear = dx * dx + dy * dy <= square ? 1 : 0;
            counts.all[lane] += isNear;
            counts.below[lane] += values[j] < low ? isNear : 0;
            counts.above[lane] += values[j] > high ? isNear : 0;
        };
        SiteIndex j = entries.first;
        for (; every_ == 1 && j + Counts::kLanes <= entries.last; j += Counts::kLanes)
            for (std::size_t lane = 0; lane < Counts::kLanes; ++lane)
                look(j + static_cast<SiteIndex>(lane), lane);
        for (; j < entries.last; j += every_)
            look(j, 0);
    }

    bool isUnlikeOthers(SiteIndex i, const Reading& reading) {
        others_.clear();
        forEachAround(i, [&](SiteIndex j, bool isNear) {
            if (isNear) others_.push_back(reading.values[index(j)]);
        });
        return isUnlike(reading.values[index(i)], others_, run_.parameters.aroundThreshold, reading.noise);
    }

    const RuleRun& run_;
    double square_ = run_.parameters.radius * run_.parameters.radius;
    SiteGrid grid_;
    std::vector<double> x_, y_;
    std::vector<Reading> readings_;
    std::array<IndexRange, 3> around_{};  ///< the entries around the square under way
    SiteIndex every_ = 1;                 ///< of these each so manieth
    std::vector<double> others_;
};

}  // namespace

bool flagUnlikeAround(const RuleRun& run) {
    return run.survey.NumSites < 1 || SurroundingsSearch(run).flag();
}

}  // namespace tessel
