// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_masking.h"

#include "app/column_statistics.h"
#include "base/bounded.h"
#include "base/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tessel {

namespace {

constexpr SiteIndex kDrawingBlock = 6400;  // a tenth of a millisecond or so

Interval widenedToHalf(const Interval& extent, double wanted) {
    const double centre = extent.from + extent.halfLength();
    return Interval{centre, centre}.widened(wanted);
}

Interval extentOf(const Survey& survey, int column) {
    const auto found = Column_MinMax(survey, column);
    return {found.minimum, found.maximum};
}

// One unit, or where Doubles are coarser than that, a few of their steps.
Interval withoutZero(const Interval& extent) {
    if (extent.halfLength() > 0) return extent;
    const double steps = 4 * std::numeric_limits<double>::epsilon() * std::abs(extent.from);
    return widenedToHalf(extent, std::max(0.5, steps));
}

}  // namespace

MapExtent SetMapScale(const Survey& survey, bool TrueScale) {
    Interval x = extentOf(survey, kX);
    Interval y = extentOf(survey, kY);
    if (TrueScale && x.halfLength() <= y.halfLength())
        x = widenedToHalf(x, y.halfLength());
    else if (TrueScale)
        y = widenedToHalf(y, x.halfLength());
    x = withoutZero(x);
    y = withoutZero(y);
    return {x.from, x.to, y.from, y.to};
}

SiteIndex MaskSites(const Survey& survey, const MapExtent& extent, SiteMaskArray& SiteMask, double x1,
                    double& y1, double x2, double& y2) {
    double xa = extent.surveyX(x1);
    double xb = extent.surveyX(x2);
    y1 = extent.surveyY(y1);
    y2 = extent.surveyY(y2);
    if (xa > xb) std::swap(xa, xb);
    if (y1 < y2) std::swap(y1, y2);

    // Without a branch and with the edges in registers, so that the pass runs as fast as memory delivers.
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    std::uint8_t* const mask = SiteMask.data();
    const double north = y1;
    const double south = y2;
    SiteIndex count = 0;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const bool inside = (xa < x[i]) & (x[i] < xb) & (south < y[i]) & (y[i] < north);
        const auto masked = static_cast<std::uint8_t>(mask[i] | static_cast<std::uint8_t>(inside));
        mask[i] = masked;
        count += masked;
    }
    return count;
}

void recoverSites(SiteMaskArray& SiteMask) {
    std::fill(SiteMask.begin(), SiteMask.end(), std::uint8_t{0});
}

RemovedSites deleteMaskedSites(Survey& survey, SiteMaskArray& SiteMask) {
    RemovedSites removed = removeSites(survey, markedRuns(SiteMask), EmptiedRows::kLeaveGaps);
    survey.SiteData.resize(survey.NumSites);
    const auto kept = static_cast<std::size_t>(survey.NumSites);
    if (survey.SiteIDPresent) survey.SiteID.resize(kept);
    if (!survey.SourceLine.empty()) survey.SourceLine.resize(kept);
    SiteMask.assign(kept, 0);
    return removed;
}

std::vector<IndexRange> drawingBlocks(const Survey& survey) {
    std::vector<IndexRange> blocks;
    for (SiteIndex first = 0; first < survey.NumSites; first += kDrawingBlock)
        blocks.push_back({first, std::min(first + kDrawingBlock, survey.NumSites)});
    return blocks;
}

std::vector<IndexRange> sitesOfRow(const Survey& survey, int row) {
    std::vector<IndexRange> runs;
    const double* const numbers = survey.SiteData.column(kRow);
    const double low = row - 0.5;
    const double high = row + 0.5;
    bool within = false;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        // Nearly all sites are told apart without rounding.
        const bool is = (numbers[i] >= low) & (numbers[i] <= high) && roundToInt(numbers[i]) == row;
        if (is && !within) runs.push_back({i, i});
        if (is) runs.back().last = i + 1;
        within = is;
    }
    return runs;
}

}  // namespace tessel
