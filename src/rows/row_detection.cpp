// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_detection.h"

#include "base/bounded.h"
#include "base/run_time_error.h"
#include "rows/site_removal.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tessel {

namespace {

constexpr const char* kFewerRows =
    "No more than 250 rows can be shown or edited. Choose Delete / Join / Re-calculate Rows in the Edit "
    "menu and recalculate the row numbering with a larger distance.";

// Sites that are worked on at a time, so that what one loop has written the next finds in the nearest cache.
constexpr SiteIndex kBlock = 1024;

// The largest of term(first)..term(last - 1), or 0. Several running maxima, because each waits for its own
// last comparison only, and the compiler can keep them in one vector.
template <typename Term>
double largestOf(SiteIndex first, SiteIndex last, Term term) {
    constexpr int kLanes = 8;
    double largest[kLanes] = {};
    SiteIndex i = first;
    for (; i + kLanes <= last; i += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane) {
            const double value = term(i + lane);
            largest[lane] = value > largest[lane] ? value : largest[lane];
        }
    }
    for (; i < last; ++i)
        largest[0] = std::max(largest[0], term(i));
    return *std::max_element(largest, largest + kLanes);
}

// How two neighbours' distance is measured: as fast as can be, which squares of coordinates that are no place
// on earth may leave infinite, and in a way that never is.
template <typename Fast, typename Bounded>
struct Measure {
    Fast fast;
    Bounded bounded;

    double operator()(SiteIndex i) const {
        const double length = fast(i);
        return std::isfinite(length) ? length : bounded(i);
    }
};
template <typename Fast, typename Bounded>
Measure(Fast, Bounded) -> Measure<Fast, Bounded>;

// Calculates those of the distances begin..end - 1 that are infinite once more; gives the largest.
template <typename Distance>
double boundDistances(double* out, SiteIndex begin, SiteIndex end, const Distance& distance) {
    double largest = 0;
    for (SiteIndex i = begin; i < end; ++i) {
        if (!std::isfinite(out[i])) out[i] = distance.bounded(i);
        largest = std::max(largest, out[i]);
    }
    return largest;
}

// Fills `distances` with distance(i) for i = 1..NumSites-1, and `maximum` with the largest.
template <typename Distance>
void fillDistances(const Survey& survey, std::vector<double>& distances, double& maximum, Distance distance) {
    const auto size = static_cast<std::size_t>(survey.NumSites) + 1;
    distances.resize(size);
    double* const out = distances.data();
    out[0] = out[size - 1] = 0;
    double largest = 0;
    for (SiteIndex begin = 1; begin < survey.NumSites; begin += kBlock) {
        const SiteIndex end = std::min(begin + kBlock, survey.NumSites);
        for (SiteIndex i = begin; i < end; ++i)
            out[i] = distance.fast(i);
        double most = largestOf(begin, end, [=](SiteIndex i) { return out[i]; });
        // Coordinates are finite, so a distance is infinite or it is right.
        if (!std::isfinite(most)) most = boundDistances(out, begin, end, distance);
        largest = std::max(largest, most);
    }
    maximum = largest;
}

auto trueDistance(const Survey& survey) {
    const double* const x = survey.SiteData.column(kX);
    const double* const y = survey.SiteData.column(kY);
    return Measure{[=](SiteIndex i) {
                       const double dx = x[i] - x[i - 1];
                       const double dy = y[i] - y[i - 1];
                       return std::sqrt(dx * dx + dy * dy);
                   },
                   [=](SiteIndex i) { return boundedLength(x[i], y[i], x[i - 1], y[i - 1]); }};
}

auto distanceAlong(const Survey& survey, int column) {
    const double* const c = survey.SiteData.column(column);
    return Measure{[=](SiteIndex i) { return std::abs(c[i] - c[i - 1]); },
                   [](SiteIndex) { return kLargestDouble; }};
}

// Takes the distances of removed sites out and calculates those across the gaps. The largest is looked for
// anew only if it may be among those that are gone.
template <typename Distance>
void closeDistanceGaps(const Survey& survey, std::span<const SiteIndex> removed,
                       std::vector<double>& distances, double& maximum, Distance distance) {
    const auto before = survey.NumSites + static_cast<SiteIndex>(removed.size());
    if (removed.empty() || distances.size() != static_cast<std::size_t>(before) + 1)
        return fillDistances(survey, distances, maximum, distance);
    double* const out = distances.data();
    double gone = 0;
    for (const SiteIndex site : removed)
        gone = std::max({gone, out[site], out[site + 1]});
    closeGaps(out, before, removed);
    distances.resize(static_cast<std::size_t>(survey.NumSites) + 1);
    double across = 0;
    for (std::size_t i = 0; i < removed.size(); ++i) {
        const SiteIndex behind = removed[i] - static_cast<SiteIndex>(i);
        const bool between = behind > 0 && behind < survey.NumSites;
        distances[static_cast<std::size_t>(behind)] = between ? distance(behind) : 0;
        across = std::max(across, distances[static_cast<std::size_t>(behind)]);
    }
    distances.front() = distances.back() = 0;
    if (gone >= maximum) return fillDistances(survey, distances, maximum, distance);
    maximum = std::max(maximum, across);
}

const std::vector<double>* chosenDistances(const Survey& survey) {
    if (survey.UseTrueDist) return &survey.TrueDist;
    if (survey.UseXDist) return &survey.XDist;
    if (survey.UseYDist) return &survey.YDist;
    return nullptr;
}

// Numbers the sites up to the first one that would need row 251; gives the row counter's last value.
int numberSites(Survey& survey, const double* distances) {
    double* const row = survey.SiteData.column(kRow);
    int rowIndex = 1;
    for (SiteIndex i = 0; i < survey.NumSites; ++i) {
        row[i] = rowIndex;
        if (i > 0 && distances[i + 1] > survey.MinDistance && ++rowIndex > kMaxRows) break;
    }
    return rowIndex;
}

bool rowsRunInOrder(const Survey& survey) {
    const double* const row = survey.SiteData.column(kRow);
    const double* const end = row + survey.NumSites;
    const auto isOutOfOrder = [](double before, double after) {
        return after != before && after != before + 1;
    };
    return std::adjacent_find(row, end, isOutOfOrder) == end;
}

}  // namespace

void Calculate_Distance(Survey& survey) {
    fillDistances(survey, survey.TrueDist, survey.MaxTrueDist, trueDistance(survey));
}

void Calculate_X_Distance(Survey& survey) {
    fillDistances(survey, survey.XDist, survey.MaxXDist, distanceAlong(survey, kX));
}

void Calculate_Y_Distance(Survey& survey) {
    fillDistances(survey, survey.YDist, survey.MaxYDist, distanceAlong(survey, kY));
}

void Calculate_Chosen_Distance(Survey& survey) {
    if (survey.UseTrueDist)
        Calculate_Distance(survey);
    else if (survey.UseXDist)
        Calculate_X_Distance(survey);
    else if (survey.UseYDist)
        Calculate_Y_Distance(survey);
}

void Reserve_Chosen_Distance(Survey& survey) {
    const auto size = static_cast<std::size_t>(survey.NumSites) + 1;
    if (survey.UseTrueDist)
        survey.TrueDist.reserve(size);
    else if (survey.UseXDist)
        survey.XDist.reserve(size);
    else if (survey.UseYDist)
        survey.YDist.reserve(size);
}

std::vector<double> distancesBy(const Survey& survey, int distanceMode) {
    std::vector<double> distances;
    double largest = 0;
    if (distanceMode == 1) fillDistances(survey, distances, largest, trueDistance(survey));
    if (distanceMode == 2) fillDistances(survey, distances, largest, distanceAlong(survey, kX));
    if (distanceMode == 3) fillDistances(survey, distances, largest, distanceAlong(survey, kY));
    return distances;
}

void Distances_After_Removal(Survey& survey, std::span<const SiteIndex> removed) {
    if (survey.UseTrueDist)
        closeDistanceGaps(survey, removed, survey.TrueDist, survey.MaxTrueDist, trueDistance(survey));
    else if (survey.UseXDist)
        closeDistanceGaps(survey, removed, survey.XDist, survey.MaxXDist, distanceAlong(survey, kX));
    else if (survey.UseYDist)
        closeDistanceGaps(survey, removed, survey.YDist, survey.MaxYDist, distanceAlong(survey, kY));
}

RowDetection Assign_Row(Survey& survey) {
    const auto* const distances = chosenDistances(survey);
    survey.RowIndex = distances != nullptr ? numberSites(survey, distances->data()) : 1;
    if (survey.RowIndex > kMaxRows) return RowDetection::TooManyRows;
    survey.NumRows = survey.RowIndex;
    return RowDetection::Assigned;
}

bool rowsAreUsable(const Survey& survey) {
    if (survey.NumRows < 1 || survey.RowIndex <= kMaxRows) return survey.NumRows > 0;
    // A file may bring more rows than the limit; then both agree. So they do by chance where a search for
    // the rows of a file with 251 stopped at its limit, but that leaves them out of order.
    return survey.RowIndex == survey.NumRows && rowsRunInOrder(survey);
}

void Calculate_NumPoints(Survey& survey) {
    std::array<std::int64_t, kMaxRows + 1> points{};
    const double* const row = survey.SiteData.column(kRow);
    int run = 1;
    SiteIndex runStart = 0;
    for (SiteIndex i = 1; i < survey.NumSites; ++i) {
        if (row[i] == row[i - 1]) continue;
        points[static_cast<std::size_t>(run)] = i - runStart;
        if (++run > kMaxRows) throw RunTimeError::subscriptOutOfRange().withAdvice(kFewerRows);
        runStart = i;
    }
    points[static_cast<std::size_t>(run)] = survey.NumSites - runStart;
    survey.RowIndex = run;
    survey.NumPoints = points;
}

void Calculate_Max(Survey& survey) {
    const auto largest = [&](int column) {
        const double* const values = survey.SiteData.column(column);
        return largestOf(0, survey.NumSites, [=](SiteIndex i) { return values[i]; });
    };
    survey.MaxX = largest(kX);
    survey.MaxY = largest(kY);
}

void Calculate_Min(Survey& survey) {
    const auto smallest = [&](int column) {
        if (survey.NumSites < 1) return 0.0;
        const double* const values = survey.SiteData.column(column);
        return *std::min_element(values, values + survey.NumSites);
    };
    survey.MinX = smallest(kX);
    survey.MinY = smallest(kY);
}

}  // namespace tessel
