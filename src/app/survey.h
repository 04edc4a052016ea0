// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/applied_adjustments.h"

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

namespace tessel {

/// Index of a site (0-based, file order) and number of sites. A survey may hold millions.
using SiteIndex = std::int64_t;

/// The columns of SiteData.
enum SiteColumn : int { kX = 0, kY = 1, kEM1 = 2, kEM2 = 3, kRow = 4, kSiteColumns = 5 };

/// The largest number of rows (transects) the system holds.
inline constexpr int kMaxRows = 250;

/// The table of sites: five columns (X, Y in metres; EM1, EM2 in mS/m; row number, a whole number held as a
/// Double), each contiguous in memory so that a statistic, a plot or a mask streams through it.
/// Every column has the same length, the capacity; how many entries are sites is the survey's NumSites.
class SiteTable {
  public:
    /// Requires 0 <= site < capacity().
    double& operator()(int column, SiteIndex site) { return columns_[index(column)][index(site)]; }
    double operator()(int column, SiteIndex site) const { return columns_[index(column)][index(site)]; }

    /// The column's first entry; valid until the next resize().
    double* column(int c) { return columns_[index(c)].data(); }
    const double* column(int c) const { return columns_[index(c)].data(); }

    /// Puts another column of the same capacity in its place, and gives back that which was there.
    void exchange(int c, std::vector<double>& values) noexcept { columns_[index(c)].swap(values); }

    SiteIndex capacity() const { return static_cast<SiteIndex>(columns_[0].size()); }

    /// Sets the capacity, keeping contents; new entries are 0. Growing by small steps costs linear time in
    /// all, because the storage behind a column grows geometrically. Where memory runs out nothing changes.
    void resize(SiteIndex capacity);

    /// Makes room for growing to this capacity without copying. Costs address space, and memory only as far
    /// as the room is used later. Room that cannot be had is no error.
    void reserve(SiteIndex capacity);

  private:
    static std::size_t index(std::int64_t i) { return static_cast<std::size_t>(i); }
    std::array<std::vector<double>, kSiteColumns> columns_;
};

/// First and last character column of a field in a sensor-file line (1-based, in bytes) and its width,
/// last - first + 1; all 0 for a field that is not in use.
struct FieldColumns {
    int Start = 0;
    int End = 0;
    int Len = 0;

    bool operator==(const FieldColumns&) const = default;
};

/// The parameters of import and row detection. An import leaves those that it does not ask for as they were.
struct SurveyParameters {
    double EMCutoff = 0;     ///< smallest accepted reading (mS/m), after the two conversions
    double MinDistance = 0;  ///< a gap greater than this (metres) starts a new row
    int MinLineLength = 1;   ///< a sensor-file line is read only if it is longer than this (bytes)
    int DistanceMode = 0;    ///< 1 true distance, 2 along X, 3 along Y, 0 none chosen yet
    bool UseTrueDist = false, UseXDist = false, UseYDist = false;  ///< the same choice as flags
    bool NegateEM = false;
    bool DivideEMBy10 = false;

    // Field layout of the Trimble/EM-38 sensor file.
    FieldColumns SiteIDField, XField, YField, EM1Field, EM2Field;

    /// Sets DistanceMode and the three flags alike; requires 1 <= mode <= 3.
    void chooseDistance(int mode);

    bool operator==(const SurveyParameters&) const = default;
};

/// A line of a sensor file (from 1) in four bytes: of one that is longer than they can count, 0 behind that.
inline std::uint32_t sourceLine(std::int64_t line) {
    return line <= std::numeric_limits<std::uint32_t>::max() ? static_cast<std::uint32_t>(line) : 0;
}

/// Metres from site i-1 to site i, i = 1..NumSites-1; entries 0 and NumSites are 0. Empty: not calculated.
struct DistanceArrays {
    std::vector<double> TrueDist, XDist, YDist;
};

/// What is counted and looked for anew in the sites before they are shown.
struct SurveyCounts {
    int NumRows = 0;   ///< 0 while no rows have been assigned
    int RowIndex = 0;  ///< the shared row counter: what the last row detection or row count arrived at
    std::array<std::int64_t, kMaxRows + 1> NumPoints{};  ///< sites in row r, r = 1..NumRows

    double MaxTrueDist = 0, MaxXDist = 0, MaxYDist = 0;  ///< metres

    // Extents (metres). The largest start from 0, the smallest from site 0.
    double MaxX = 0, MaxY = 0, MinX = 0, MinY = 0;

    bool operator==(const SurveyCounts&) const = default;
};

/// All of a survey that does not grow with it.
struct SurveyFigures : SurveyParameters, SurveyCounts {
    SiteIndex NumSites = 0;
    bool SiteIDPresent = false;
    bool TwoEMColumns = false;   ///< EM1 and EM2 are present; otherwise only EM1
    AppliedAdjustments applied;  ///< what adjustments have made of the readings since the import
    double EMAdjustTotalA = 0;   ///< sum of the amounts added to EM1 (mS/m) since the start of the program
    double EMAdjustTotalB = 0;   ///< sum of the amounts added to EM2 (mS/m), likewise
    /// What X and Y are: the EPSG number of a coordinate system in metres whose easting and northing they
    /// are, or 0 for metres in a grid without a name.
    int PositionsCRS = 0;
    int importNumber = 0;  ///< of the import that the survey comes from, counted from 1; 0 for none

    bool operator==(const SurveyFigures&) const = default;
};

/// A survey: plain data. The one that is being cleaned is the journal's (journal/journal.h), whose acts alone
/// change it; an import builds another and puts it in place whole once reading has succeeded.
///
/// Rows are stored contiguously in row order and numbered 1..NumRows without gaps; the sites of row r are the
/// NumPoints[r] sites that follow those of rows 1..r-1.
struct Survey : SurveyFigures, DistanceArrays {
    // Sites 0..NumSites-1, in file order.
    SiteTable SiteData;
    std::vector<double> SiteID;  ///< site ID numbers, as long as SiteData when SiteIDPresent, else empty
    /// Where each site stands in the sensor file (sourceLine()), as long as SiteData; empty for a survey that
    /// comes from no file.
    std::vector<std::uint32_t> SourceLine;
};

}  // namespace tessel
