// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_masking.h"

#include "app/column_statistics.h"
#include "base/bounded.h"
#include "base/numbers.h"
#include "rows/row_detection.h"
#include "rows/site_removal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tessel {

namespace {

constexpr SiteIndex kDrawingBlock = 6400;  // a tenth of a millisecond or so

struct Interval {
    double low, high;
    double halfLength() const { return high / 2 - low / 2; }

    Interval widenedToHalf(double wanted) const {
        const double centre = low + halfLength();
        return {bounded(centre - wanted), bounded(centre + wanted)};
    }
};

Interval extentOf(const Survey& survey, int column) {
    const auto found = Column_MinMax(survey, column);
    return {found.minimum, found.maximum};
}

// One unit, or where Doubles are coarser than that, a few of their steps.
Interval withoutZero(const Interval& extent) {
    if (extent.halfLength() > 0) return extent;
    const double steps = 4 * std::numeric_limits<double>::epsilon() * std::abs(extent.low);
    return extent.widenedToHalf(std::max(0.5, steps));
}

// NumPoints by row number. In a consistent numbering that is what counting runs gives; with rows gone, every
// other row still has its own count.
void countByRowNumber(Survey& survey) {
    survey.NumPoints.fill(0);
    const double* const row = survey.SiteData.column(kRow);
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        const int r = roundToInt(row[i]);
        if (r >= 1 && r <= kMaxRows) ++survey.NumPoints[static_cast<std::size_t>(r)];
    }
}

void forget(std::vector<double>& distances, double& largest) {
    distances.clear();
    largest = 0;
}

// Those of a measure that is not in force go: none may tell of sites that are gone, and who wants to see them
// calculates them anew.
void followDistances(Survey& survey) {
    if (!survey.UseTrueDist) forget(survey.TrueDist, survey.MaxTrueDist);
    if (!survey.UseXDist) forget(survey.XDist, survey.MaxXDist);
    if (!survey.UseYDist) forget(survey.YDist, survey.MaxYDist);
    Calculate_Chosen_Distance(survey);
}

bool rowsRunWithoutGap(const Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    const auto number = [row](SiteIndex i) { return roundToInt(row[i]); };
    if (number(0) != 1 || number(survey.NumSites - 1) != survey.NumRows) return false;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        if (row[i] == row[i - 1]) continue;
        const int step = number(i) - number(i - 1);
        if (step != 0 && step != 1) return false;
    }
    return true;
}

void makeOneRow(Survey& survey) {
    double* const row = survey.SiteData.column(kRow);
    std::fill(row, row + survey.NumSites, 1.0);
    survey.NumRows = 1;
    survey.RowIndex = 1;
    survey.NumPoints.fill(0);
    survey.NumPoints[1] = survey.NumSites;
}

}  // namespace

MapExtent SetMapScale(const Survey& survey, bool TrueScale) {
    Interval x = extentOf(survey, kX);
    Interval y = extentOf(survey, kY);
    if (TrueScale && x.halfLength() <= y.halfLength())
        x = x.widenedToHalf(y.halfLength());
    else if (TrueScale)
        y = y.widenedToHalf(x.halfLength());
    x = withoutZero(x);
    y = withoutZero(y);
    return {x.low, x.high, y.low, y.high};
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

SiteIndex deleteMaskedSites(Survey& survey, SiteMaskArray& SiteMask) {
    Reserve_Chosen_Distance(survey);
    const SiteIndex removed = removeSites(survey, SiteMask);
    survey.SiteData.resize(survey.NumSites);
    const auto kept = static_cast<std::size_t>(survey.NumSites);
    if (survey.SiteIDPresent) survey.SiteID.resize(kept);
    SiteMask.assign(kept, 0);
    countByRowNumber(survey);
    followDistances(survey);
    return removed;
}

bool ValidateRowInfo(Survey& survey) {
    if (rowsRunWithoutGap(survey)) return true;
    makeOneRow(survey);
    return false;
}

void forgetRows(Survey& survey) {
    survey.NumRows = 0;
    survey.RowIndex = 0;
    survey.NumPoints.fill(0);
}

std::vector<SiteRun> drawingBlocks(const Survey& survey) {
    std::vector<SiteRun> blocks;
    for (SiteIndex first = 0; first < survey.NumSites; first += kDrawingBlock)
        blocks.push_back({first, std::min(first + kDrawingBlock, survey.NumSites)});
    return blocks;
}

std::vector<SiteRun> sitesOfRow(const Survey& survey, int row) {
    std::vector<SiteRun> runs;
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
