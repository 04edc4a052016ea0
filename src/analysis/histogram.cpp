// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/histogram.h"

#include "app/column_statistics.h"
#include "base/numbers.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>

namespace tessel {

namespace {

// Where readings lie between the smallest and the largest. A range that is too large for a Double is taken at
// half its size, which changes no digit.
struct Range {
    explicit Range(const HistogramStatistics& statistics)
        : scale(std::isfinite(statistics[kHistMaximum] - statistics[kHistMinimum]) ? 1 : 0.5),
          minimum(statistics[kHistMinimum] * scale),
          span(statistics[kHistMaximum] * scale - minimum) {
        if (span == 0) throw RunTimeError::divisionByZero();
    }

    double above(double value) const { return value * scale - minimum; }

    double scale, minimum, span;
};

// Index of the bin of a reading. Adding 1.5 * 2^52 leaves the nearest whole number, halves to even, in the
// low bits: the processor's own rounding, without a call for every site.
std::size_t binIndex(double reading, const Range& range) {
    const double t = range.above(reading) / range.span;
    const auto rounded =
        static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(t * kHistogramBins + 0x1.8p52));
    return std::min<std::uint32_t>(rounded, kHistogramBins - 1);
}

}  // namespace

HistogramStatistics histogramStatistics(const Survey& survey, int column) {
    const ColumnMeanSD about = Column_MeanSD(survey, column);
    const ColumnMinMax range = Column_MinMax(survey, column);
    return {about.mean, about.sd, range.minimum, range.maximum};
}

BinCounts countBins(const Survey& survey, int column, const HistogramStatistics& statistics) {
    const Range range(statistics);
    const double* const readings = survey.SiteData.column(std::clamp<int>(column, kX, kEM2));
    // Neighbouring sites mostly fall into the same bin; counting them in turn in four tables keeps one count
    // from waiting for the other.
    constexpr SiteIndex kTables = 4;
    std::array<BinCounts, kTables> tables{};
    const auto count = [&](BinCounts& table, SiteIndex i) { ++table[binIndex(readings[i], range)]; };
    SiteIndex i = 0;
    for (; i + kTables <= survey.NumSites; i += kTables) {
        count(tables[0], i);
        count(tables[1], i + 1);
        count(tables[2], i + 2);
        count(tables[3], i + 3);
    }
    for (; i < survey.NumSites; ++i)
        count(tables[0], i);
    BinCounts counts{};
    for (const BinCounts& table : tables)
        std::transform(counts.begin(), counts.end(), table.begin(), counts.begin(), std::plus<>());
    return counts;
}

Interval binInterval(int bin, const HistogramStatistics& statistics) {
    const auto edge = [&](double number) {
        const double part = std::clamp(number / kHistogramBins, 0.0, 1.0);
        const double half = statistics[kHistMaximum] / 2 - statistics[kHistMinimum] / 2;
        return (statistics[kHistMinimum] / 2 + part * half) * 2;
    };
    return {edge(bin - 1.5), bin == kHistogramBins ? statistics[kHistMaximum] : edge(bin - 0.5)};
}

BarTops barTops(const BinCounts& counts) {
    const auto largest = static_cast<double>(*std::max_element(counts.begin(), counts.end()));
    BarTops tops;
    std::transform(counts.begin(), counts.end(), tops.begin(),
                   [=](std::int64_t count) { return 1.0 - 0.9 * (static_cast<double>(count) / largest); });
    return tops;
}

int meanMark(const HistogramStatistics& statistics) {
    const Range range(statistics);
    const double above = range.above(statistics[kHistMean]);
    const double mark = above * kHistogramBins / range.span;
    return roundToInt(std::isfinite(mark) ? mark : above / range.span * kHistogramBins);
}

}  // namespace tessel
