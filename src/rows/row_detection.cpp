// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_detection.h"

#include "base/bounded.h"
#include "base/fresh_memory.h"
#include "base/run_time_error.h"

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
    distances.reserve(size);
    provideMemoryFor(distances, size);
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

// Calls act(distance) with how two neighbours' distance is measured: 1 true distance, 2 along X, 3 along Y.
template <typename Act>
void withMeasure(const Survey& survey, int measure, Act act) {
    if (measure == 1) act(trueDistance(survey));
    if (measure == 2) act(distanceAlong(survey, kX));
    if (measure == 3) act(distanceAlong(survey, kY));
}

// 0 when there is none.
int measureInForce(const Survey& survey) {
    if (survey.UseTrueDist) return 1;
    return survey.UseXDist ? 2 : survey.UseYDist ? 3 : 0;
}

struct Distances {
    std::vector<double>& values;
    double& largest;
};

Distances distancesOf(DistanceArrays& arrays, SurveyCounts& counts, int measure) {
    if (measure == 1) return {arrays.TrueDist, counts.MaxTrueDist};
    if (measure == 2) return {arrays.XDist, counts.MaxXDist};
    return {arrays.YDist, counts.MaxYDist};
}

Distances distancesOf(Survey& survey, int measure) {
    return distancesOf(survey, survey, measure);
}

// Takes the distances of removed sites out and calculates those across the gaps. The largest is looked for
// anew only if it may be among those that are gone.
template <typename Distance>
void closeDistanceGaps(const Survey& survey, std::span<const IndexRange> removed, Distances distances,
                       Distance distance) {
    std::vector<double>& values = distances.values;
    const auto at = [&](SiteIndex i) { return values[static_cast<std::size_t>(i)]; };
    double gone = 0;
    for (const IndexRange& run : removed)
        gone = std::max(gone, largestOf(run.first, run.last + 1, at));
    closeGaps(values.data(), static_cast<SiteIndex>(values.size()), removed);
    values.resize(static_cast<std::size_t>(survey.NumSites) + 1);
    SiteIndex gap = 0;
    for (const IndexRange& run : removed) {
        const SiteIndex behind = run.first - gap;
        gap += run.count();
        const bool between = behind > 0 && behind < survey.NumSites;
        values[static_cast<std::size_t>(behind)] = between ? distance(behind) : 0;
        distances.largest = std::max(distances.largest, at(behind));
    }
    if (gone >= distances.largest) distances.largest = largestOf(1, survey.NumSites, at);
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

double largestIn(const Survey& survey, int column) {
    const double* const values = survey.SiteData.column(column);
    return largestOf(0, survey.NumSites, [=](SiteIndex i) { return values[i]; });
}

double smallestIn(const Survey& survey, int column) {
    if (survey.NumSites < 1) return 0;
    const double* const values = survey.SiteData.column(column);
    return *std::min_element(values, values + survey.NumSites);
}

}  // namespace

void measureDistances(const Survey& survey, int distanceMode, SurveyCounts& counts,
                      DistanceArrays& distances) {
    withMeasure(survey, distanceMode, [&](const auto& distance) {
        const Distances measured = distancesOf(distances, counts, distanceMode);
        fillDistances(survey, measured.values, measured.largest, distance);
    });
}

void Calculate_Distances(Survey& survey, int distanceMode) {
    measureDistances(survey, distanceMode, survey, survey);
}

void Calculate_Distance(Survey& survey) {
    Calculate_Distances(survey, 1);
}

void Calculate_X_Distance(Survey& survey) {
    Calculate_Distances(survey, 2);
}

void Calculate_Y_Distance(Survey& survey) {
    Calculate_Distances(survey, 3);
}

void Calculate_Chosen_Distance(Survey& survey) {
    Calculate_Distances(survey, measureInForce(survey));
}

std::vector<double> distancesBy(const Survey& survey, int distanceMode) {
    std::vector<double> distances;
    double largest = 0;
    withMeasure(survey, distanceMode,
                [&](const auto& distance) { fillDistances(survey, distances, largest, distance); });
    return distances;
}

void Reserve_Chosen_Distance(Survey& survey) {
    const int measure = measureInForce(survey);
    if (measure > 0)
        distancesOf(survey, measure).values.reserve(static_cast<std::size_t>(survey.NumSites) + 1);
}

void Distances_After_Removal(Survey& survey, std::span<const IndexRange> removed, SiteIndex before) {
    const int inForce = measureInForce(survey);
    for (const int measure : {1, 2, 3}) {
        const Distances distances = distancesOf(survey, measure);
        if (distances.values.size() == static_cast<std::size_t>(before) + 1) {
            withMeasure(survey, measure, [&](const auto& distance) {
                closeDistanceGaps(survey, removed, distances, distance);
            });
        } else if (measure == inForce) {
            Calculate_Distances(survey, measure);
        } else {
            distances.values.clear();
            distances.largest = 0;
        }
    }
}

RowDetection Assign_Row(Survey& survey) {
    const int measure = measureInForce(survey);
    survey.RowIndex = measure > 0 ? numberSites(survey, distancesOf(survey, measure).values.data()) : 1;
    if (survey.RowIndex > kMaxRows) return RowDetection::kTooManyRows;
    survey.NumRows = survey.RowIndex;
    return RowDetection::kAssigned;
}

bool rowsAreUsable(const Survey& survey) {
    if (survey.NumRows < 1 || survey.RowIndex <= kMaxRows) return survey.NumRows > 0;
    // A file may bring more rows than the limit; then both agree. So they do by chance where a search for
    // the rows of a file with 251 stopped at its limit, but that leaves them out of order.
    return survey.RowIndex == survey.NumRows && rowsRunInOrder(survey);
}

void countPoints(const Survey& survey, SurveyCounts& counts) {
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
    counts.RowIndex = run;
    counts.NumPoints = points;
}

void Calculate_NumPoints(Survey& survey) {
    countPoints(survey, survey);
}

void findExtents(const Survey& survey, SurveyCounts& counts) {
    counts.MaxX = largestIn(survey, kX);
    counts.MaxY = largestIn(survey, kY);
    counts.MinX = smallestIn(survey, kX);
    counts.MinY = smallestIn(survey, kY);
}

void Calculate_Max(Survey& survey) {
    survey.MaxX = largestIn(survey, kX);
    survey.MaxY = largestIn(survey, kY);
}

void Calculate_Min(Survey& survey) {
    survey.MinX = smallestIn(survey, kX);
    survey.MinY = smallestIn(survey, kY);
}

}  // namespace tessel
