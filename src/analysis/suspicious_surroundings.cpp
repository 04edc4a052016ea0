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
constexpr SiteIndex kMostAround = 256;
constexpr SiteIndex kFewestAround = 4;

// The sites in the order of the squares of a grid in which they lie, so that those around a site are three
// stretches of memory. Only squares with sites exist: a lost fix may be thousands of kilometres away.
class SiteGrid {
  public:
    SiteGrid(const Survey& survey, double side) {
        const double* const x = survey.SiteData.column(kX);
        const double* const y = survey.SiteData.column(kY);
        const double middleX = medianOfColumn(survey, kX);
        const double middleY = medianOfColumn(survey, kY);
        std::vector<std::pair<std::uint64_t, SiteIndex>> order;
        order.reserve(static_cast<std::size_t>(survey.NumSites));
        for (SiteIndex i = 0; i < survey.NumSites; ++i)
            order.push_back(
                {squareOf(intBelow((x[i] - middleX) / side), intBelow((y[i] - middleY) / side)), i});
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
    // Lines of squares lie one behind the other, around the middle of the survey. Sites beyond all squares
    // are in the outermost ones.
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
            readings_.push_back({ordered(column), {}, noise, noise * run.parameters.aroundThreshold});
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
        std::vector<double> values, around;
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

    // Puts the sites around a square side by side.
    void lookAround(std::uint64_t square) {
        const std::array<IndexRange, 3> lines = {
            grid_.entriesBeside(square, -1), grid_.entriesBeside(square, 0), grid_.entriesBeside(square, 1)};
        const SiteIndex all = lines[0].count() + lines[1].count() + lines[2].count();
        const SiteIndex every = (all + kMostAround - 1) / kMostAround;
        around_.clear();
        for (const IndexRange& entries : lines)
            for (SiteIndex j = entries.first; j < entries.last; j += every)
                around_.push_back(j);
        gatherAround(x_, xAround_);
        gatherAround(y_, yAround_);
        for (Reading& reading : readings_)
            gatherAround(reading.values, reading.around);
    }

    void gatherAround(const std::vector<double>& values, std::vector<double>& around) const {
        around.clear();
        for (const SiteIndex entry : around_)
            around.push_back(values[index(entry)]);
    }

    // As for spikes along a row: only a value from which more than half of those around are further than
    // noise allows, all on one side, can be unlike them.
    bool mayBeUnlike(SiteIndex i, const Reading& reading) const {
        const Counts counts = countAround(i, reading);
        const double all = counts.total(counts.all) - 1;  // itself is neither below nor above
        return all >= kFewestAround &&
               2 * std::max(counts.total(counts.below), counts.total(counts.above)) >= all;
    }

    // Several counts side by side, which the compiler keeps in vectors.
    struct Counts {
        static constexpr std::size_t kLanes = 4;
        using Lanes = std::array<double, kLanes>;
        Lanes all{}, below{}, above{};
        static double total(const Lanes& lanes) { return lanes[0] + lanes[1] + lanes[2] + lanes[3]; }
    };

    Counts countAround(SiteIndex i, const Reading& reading) const {
        const double* const values = reading.around.data();
        const double* const xs = xAround_.data();
        const double* const ys = yAround_.data();
        const double x = x_[index(i)], y = y_[index(i)], square = square_;
        const double value = reading.values[index(i)];
        const double low = value - reading.allowed, high = value + reading.allowed;
        Counts counts;
        const auto look = [&](std::size_t j, std::size_t lane) {
            const double dx = xs[j] - x;
            const double dy = ys[j] - y;
            const double isNear = dx * dx + dy * dy <= square ? 1 : 0;
            counts.all[lane] += isNear;
            counts.below[lane] += values[j] < low ? isNear : 0;
            counts.above[lane] += values[j] > high ? isNear : 0;
        };
        std::size_t j = 0;
        for (; j + Counts::kLanes <= around_.size(); j += Counts::kLanes)
            for (std::size_t lane = 0; lane < Counts::kLanes; ++lane)
                look(j + lane, lane);
        for (; j < around_.size(); ++j)
            look(j, 0);
        return counts;
    }

    bool isUnlikeOthers(SiteIndex i, const Reading& reading) {
        others_.clear();
        for (std::size_t j = 0; j < around_.size(); ++j) {
            const double dx = xAround_[j] - x_[index(i)];
            const double dy = yAround_[j] - y_[index(i)];
            if (dx * dx + dy * dy <= square_ && around_[j] != i) others_.push_back(reading.around[j]);
        }
        return isUnlike(reading.values[index(i)], others_, run_.parameters.aroundThreshold, reading.noise);
    }

    const RuleRun& run_;
    double square_ = run_.parameters.radius * run_.parameters.radius;
    SiteGrid grid_;
    std::vector<double> x_, y_;
    std::vector<Reading> readings_;
    // Around the square under way: entries, and where they lie.
    std::vector<SiteIndex> around_;
    std::vector<double> xAround_, yAround_;
    std::vector<double> others_;
};

}  // namespace

bool flagUnlikeAround(const RuleRun& run) {
    return run.survey.NumSites < 1 || SurroundingsSearch(run).flag();
}

}  // namespace tessel
