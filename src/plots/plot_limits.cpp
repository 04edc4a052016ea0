// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/plot_limits.h"

#include "app/column_statistics.h"
#include "base/bounded.h"

#include <algorithm>

namespace tessel {

namespace {

constexpr double kOneSiteRoom = 200;  // metres
constexpr double kOneSiteEca = 0.5;   // mS/m

struct Extent {
    double lowest = 0;
    double highest = 0;
};

Extent extentOf(std::span<const double> values) {
    Extent extent{values.front(), values.front()};
    for (const double value : values) {
        extent.lowest = value < extent.lowest ? value : extent.lowest;
        extent.highest = value > extent.highest ? value : extent.highest;
    }
    return extent;
}

Extent widened(Extent extent, double margin) {
    return {bounded(extent.lowest - margin), bounded(extent.highest + margin)};
}

double spreadOf(Extent extent) {
    return bounded(extent.highest - extent.lowest);
}

// The margin is a share of the spread; without a spread, a share of the lowest value itself, whatever its
// sign.
Extent withMargin(Extent extent, double shareOfSpread, double shareOfLowest) {
    const double margin = spreadOf(extent) * shareOfSpread;
    return widened(extent, margin == 0 ? extent.lowest * shareOfLowest : margin);
}

Extent readingsOf(const Survey& survey, RowSites sites) {
    const Extent em1 = extentOf(columnOf(survey, kEM1, sites));
    if (!survey.TwoEMColumns) return em1;
    const Extent em2 = extentOf(columnOf(survey, kEM2, sites));
    return {std::min(em1.lowest, em2.lowest), std::max(em1.highest, em2.highest)};
}

PlotLimits limits(Extent x, Extent y) {
    return {x.lowest, x.highest, y.lowest, y.highest};
}

}  // namespace

PlotLimits& thePlotLimits() {
    static PlotLimits limits;
    return limits;
}

PlotLimits rowProfileLimits(const Survey& survey, RowSites sites, bool plotByX) {
    const Extent along = extentOf(columnOf(survey, alongColumn(plotByX), sites));
    const Extent readings = readingsOf(survey, sites);
    if (sites.count == 1) return limits(widened(along, kOneSiteRoom), widened(readings, kOneSiteEca));
    return limits(withMargin(along, 0.05, 0.05), withMargin(readings, 0.1, 0.1));
}

PlotLimits rowMapLimits(const Survey& survey, RowSites sites, bool plotByX) {
    const Extent along = extentOf(columnOf(survey, alongColumn(plotByX), sites));
    const Extent across = extentOf(columnOf(survey, acrossColumn(plotByX), sites));
    if (sites.count == 1) return limits(widened(along, kOneSiteRoom), widened(across, kOneSiteRoom));
    return limits(withMargin(along, 0.05, 0.05), withMargin(across, 0.05, 0.1));
}

PlotLimits emptiedRowLimits(const Survey& survey) {
    return limits(widened({survey.MinX, survey.MaxX}, kOneSiteRoom),
                  widened({survey.MinY, survey.MaxY}, kOneSiteRoom));
}

PlotLimits surveyGridLimits(const Survey& survey) {
    const auto along = [&](int column) {
        const ColumnMinMax range = Column_MinMax(survey, column);
        const Extent extent{range.minimum, range.maximum};
        return widened(extent, spreadOf(extent) * 0.05);
    };
    return limits(along(kX), along(kY));
}

}  // namespace tessel
