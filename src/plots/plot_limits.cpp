// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/plot_limits.h"

#include "app/column_statistics.h"
#include "base/bounded.h"

#include <algorithm>

namespace tessel {

namespace {

constexpr double kOneSiteRoom = 200;  // metres
constexpr double kOneSiteEca = 0.5;   // mS/m

Interval extentOf(std::span<const double> values) {
    const ColumnMinMax range = minMaxOf(values);
    return {range.minimum, range.maximum};
}

// The margin is a share of the spread; without a spread, a share of the lowest value itself, whatever its
// sign.
Interval withMargin(const Interval& extent, double shareOfSpread, double shareOfLowest) {
    const double margin = bounded(extent.length()) * shareOfSpread;
    return extent.widened(margin == 0 ? extent.from * shareOfLowest : margin);
}

Interval readingsOf(const Survey& survey, IndexRange sites) {
    const Interval em1 = extentOf(columnOf(survey, kEM1, sites));
    if (!survey.TwoEMColumns) return em1;
    const Interval em2 = extentOf(columnOf(survey, kEM2, sites));
    return em1.with(em2);
}

PlotLimits limits(const Interval& x, const Interval& y) {
    return {x.from, x.to, y.from, y.to};
}

}  // namespace

PlotLimits& thePlotLimits() {
    static PlotLimits limits;
    return limits;
}

PlotLimits rowProfileLimits(const Survey& survey, IndexRange sites, bool plotByX) {
    const Interval along = extentOf(columnOf(survey, alongColumn(plotByX), sites));
    const Interval readings = readingsOf(survey, sites);
    if (sites.count() == 1) return limits(along.widened(kOneSiteRoom), readings.widened(kOneSiteEca));
    return limits(withMargin(along, 0.05, 0.05), withMargin(readings, 0.1, 0.1));
}

PlotLimits rowMapLimits(const Survey& survey, IndexRange sites, bool plotByX) {
    const Interval along = extentOf(columnOf(survey, alongColumn(plotByX), sites));
    const Interval across = extentOf(columnOf(survey, acrossColumn(plotByX), sites));
    if (sites.count() == 1) return limits(along.widened(kOneSiteRoom), across.widened(kOneSiteRoom));
    return limits(withMargin(along, 0.05, 0.05), withMargin(across, 0.05, 0.1));
}

PlotLimits emptiedRowLimits(const Survey& survey) {
    return limits(Interval{survey.MinX, survey.MaxX}.widened(kOneSiteRoom),
                  Interval{survey.MinY, survey.MaxY}.widened(kOneSiteRoom));
}

Rectangle siteExtent(const Survey& survey, const IndexRange& sites) {
    return {extentOf(columnOf(survey, kX, sites)), extentOf(columnOf(survey, kY, sites))};
}

Rectangle siteExtent(const Survey& survey) {
    return siteExtent(survey, {0, survey.NumSites});
}

PixelMap fittedMap(const Rectangle& area, const Rectangle& extent) {
    const auto fits = [](const Interval& pixels, const Interval& metres) {
        return metres.halfLength() > 0 ? pixels.halfLength() / metres.halfLength() : kLargestDouble;
    };
    const auto middle = [](const Interval& side) { return side.from / 2 + side.to / 2; };
    const double scale = std::min(fits(area.x, extent.x), fits(area.y, extent.y));
    // One place has no size.
    const double perMetre = scale < kLargestDouble ? scale : 1;
    PixelMap map{area, perMetre, 0, -perMetre, 0};
    map.xShift = middle(area.x) - middle(extent.x) * map.xScale;
    map.yShift = middle(area.y) - middle(extent.y) * map.yScale;
    return map;
}

PlotLimits surveyGridLimits(const Rectangle& extent) {
    const auto withRoom = [](const Interval& side) { return side.widened(bounded(side.length()) * 0.05); };
    return limits(withRoom(extent.x), withRoom(extent.y));
}

}  // namespace tessel
