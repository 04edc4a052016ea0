// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/work_check.h"

#include "storage/byte_stream.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tessel {

namespace {

constexpr int kMostRows = 1 << 24;
constexpr int kMostImports = 1 << 16;
constexpr SiteIndex kMostSites = SiteIndex{1} << 48;

void require(bool holds, const char* otherwise) {
    if (!holds) throw DamagedBytes(otherwise);
}

SiteIndex lengthOf(const auto& list) {
    return static_cast<SiteIndex>(list.size());
}

// No reader takes other numbers, and whoever sorts or measures sites counts on that.
void requireFinite(const double* values, SiteIndex count) {
    require(std::all_of(values, values + count, [](double value) { return std::isfinite(value); }),
            "a site has a value that is no number");
}

// How long everything is in a survey: what has to fit when an act is taken back or done again.
struct Shape {
    explicit Shape(const Survey& survey)
        : sites(survey.NumSites),
          capacity(survey.SiteData.capacity()),
          hasIDs(survey.SiteIDPresent),
          hasLines(!survey.SourceLine.empty()),
          distances{lengthOf(survey.TrueDist), lengthOf(survey.XDist), lengthOf(survey.YDist)} {}

    void requireSteps() const {
        require(sites <= capacity, "there are more sites than there is room for");
        for (const SiteIndex length : distances)
            require(length == 0 || length == sites + 1, "distances are out of step with the sites");
    }

    SiteIndex sites, capacity;
    bool hasIDs, hasLines;
    std::array<SiteIndex, 3> distances;
};

Shape shapeOf(const Survey& survey) {
    requireFigures(survey);
    const Shape shape(survey);
    shape.requireSteps();
    require(lengthOf(survey.SiteID) == (shape.hasIDs ? shape.capacity : 0),
            "site numbers are out of step with the sites");
    require(!shape.hasLines || lengthOf(survey.SourceLine) == shape.capacity,
            "line numbers are out of step with the sites");
    for (int column = 0; column < kSiteColumns; ++column)
        requireFinite(survey.SiteData.column(column), survey.NumSites);
    if (shape.hasIDs) requireFinite(survey.SiteID.data(), survey.NumSites);
    return shape;
}

// One act, taken back or done again on a survey of this shape, which it changes.
class Turn {
  public:
    Turn(Shape& shape, bool back, SiteIndex mostSites) : shape_(shape), back_(back), mostSites_(mostSites) {}

    void operator()(const SurveyFigures& figures, SiteIndex capacity, const std::vector<IndexRange>& runs,
                    const std::vector<Difference::Taken>& taken, const std::vector<std::uint32_t>& lines,
                    const std::vector<Difference::Whole>& whole,
                    const std::vector<Difference::Entries>& entries, const std::optional<RowNumbers>& rows,
                    const std::unique_ptr<Survey>& survey) {
        if (survey) {
            shape_ = shapeOf(*survey);
            return;
        }
        requireFigures(figures);
        require(figures.SiteIDPresent == shape_.hasIDs, "site numbers come or go with an act");
        requireRuns(runs, back_ ? figures.NumSites : shape_.sites);
        require(figures.NumSites == shape_.sites + (back_ ? removed_ : -removed_),
                "an act does not take out as many sites as are missing");
        require(runs.empty() ? capacity == shape_.capacity
                             : (capacity >= shape_.capacity) == back_ || capacity == shape_.capacity,
                "an act leaves another room than there is");
        require(capacity <= std::max(mostSites_, shape_.capacity), "an act leaves too much room");
        requireTaken(taken, runs, figures.NumSites);
        for (const Difference::Entries& each : entries)
            requireEntries(each, runs, back_ ? figures.NumSites : shape_.sites);
        // A survey that has lost its last site and all its room shows no longer whether it had lines.
        const bool hasLines = shape_.hasLines || (shape_.capacity == 0 && !lines.empty());
        require(lengthOf(lines) == (hasLines ? removed_ : 0), "an act has other lines than sites");
        shape_.hasLines = hasLines && capacity > 0;
        shape_.sites = figures.NumSites;
        shape_.capacity = capacity;
        requireColumns(whole);
        shape_.requireSteps();
        if (rows) RowNumbers::forEachField(*rows, [this](auto&... parts) { requireRows(parts...); });
    }

  private:
    void requireRuns(const std::vector<IndexRange>& runs, SiteIndex sites) {
        SiteIndex end = -1;
        for (const IndexRange& run : runs) {
            require(run.first > end && run.last > run.first && run.last <= sites,
                    "an act takes out sites that there are not");
            end = run.last;
            removed_ += run.count();
        }
    }

    void requireTaken(const std::vector<Difference::Taken>& taken, const std::vector<IndexRange>& runs,
                      SiteIndex sites) {
        std::array<int, kSurveyColumns> found{};
        for (const Difference::Taken& each : taken) {
            require(each.column >= 0 && each.column < kSurveyColumns, "there is no such column");
            const bool isDistance = each.column >= kTrueDist;
            ++found[static_cast<std::size_t>(each.column)];
            require(lengthOf(each.values) == removed_ &&
                        lengthOf(each.behind) == (isDistance ? lengthOf(runs) : 0),
                    "a column of an act is not as long as its sites");
            if (!isDistance) {
                requireFinite(each.values.data(), removed_);
                continue;
            }
            SiteIndex& length = shape_.distances[static_cast<std::size_t>(each.column - kTrueDist)];
            require(length == shape_.sites + 1, "distances are out of step with an act");
            length = sites + 1;
        }
        for (int column = 0; column <= kSiteIDs; ++column)
            require(found[static_cast<std::size_t>(column)] ==
                        (!runs.empty() && (column < kSiteIDs || shape_.hasIDs) ? 1 : 0),
                    "an act lacks a column");
        for (std::size_t column = kTrueDist; column < kSurveyColumns; ++column)
            require(found[column] <= 1 && !(found[column] == 1 && runs.empty()), "an act has a column twice");
    }

    static void requireEntries(const Difference::Entries& entries, const std::vector<IndexRange>& runs,
                               SiteIndex sites) {
        require(entries.column >= 0 && entries.column < kRow, "there is no such column");
        require(entries.sites.size() == entries.values.size(), "an act has other entries than sites");
        requireFinite(entries.values.data(), lengthOf(entries.values));
        SiteIndex end = 0;
        auto run = runs.begin();
        for (const SiteIndex site : entries.sites) {
            while (run != runs.end() && run->last <= site)
                ++run;
            require(site >= end && site < sites && (run == runs.end() || site < run->first),
                    "an act changes entries that there are not");
            end = site + 1;
        }
    }

    void requireColumns(const std::vector<Difference::Whole>& whole) {
        for (const Difference::Whole& each : whole) {
            require(each.column >= 0 && each.column < kSurveyColumns && each.column != kSiteIDs,
                    "there is no such column");
            if (each.column < kSiteColumns) {
                require(lengthOf(each.values) == shape_.capacity, "a column is not as long as the others");
                requireFinite(each.values.data(), shape_.sites);
            } else
                shape_.distances[static_cast<std::size_t>(each.column - kTrueDist)] = lengthOf(each.values);
        }
    }

    void requireRows(const std::vector<RowNumbers::Run>& runs, const std::vector<double>& column) const {
        SiteIndex end = 0;
        for (const RowNumbers::Run& run : runs) {
            require(run.end > end, "row numbers are out of order");
            end = run.end;
        }
        require((column.empty() ? end : lengthOf(column)) == shape_.sites && (column.empty() || runs.empty()),
                "there are other row numbers than sites");
    }

    Shape& shape_;
    bool back_;
    SiteIndex mostSites_;
    SiteIndex removed_ = 0;
};

}  // namespace

void requireRecords(const SavedWork& work) {
    Journal::forEachField(
        work.journal, [&](auto&, auto&, auto&, auto&, auto&, auto&, auto&, auto&, auto&, int imports, auto&) {
            require(lengthOf(work.records.imports) <= imports, "the number of imports is none");
        });
    for (const SavedImport& import : work.records.imports)
        require(import.what.linesRead >= 0 && import.what.sites >= 0, "a count of an import is none");
    for (const SavedExport& each : work.records.exports)
        require(each.importNumber >= 0, "an export is of no import");
}

void requireParameters(const SurveyParameters& parameters) {
    require(parameters.DistanceMode >= 0 && parameters.DistanceMode <= 3, "the measure of distance is none");
}

void requireFigures(const SurveyFigures& figures) {
    require(figures.NumSites >= 0, "the number of sites is none");
    require(figures.importNumber >= 0 && figures.importNumber <= kMostImports,
            "the number of an import is none");
    require(figures.PositionsCRS >= 0, "the coordinate system is none");
    for (const int count : {figures.NumRows, figures.RowIndex})
        require(count >= 0 && count <= kMostRows, "there are too many rows");
    requireParameters(figures);
    // Otherwise counts may be any: where a search has found too many rows they are those from before.
    for (const SiteIndex points : figures.NumPoints)
        require(points >= -kMostSites && points <= kMostSites, "a row has too many sites");
}

SiteIndex mostSitesIn(std::uint64_t bytes) {
    constexpr std::uint64_t kMost = std::uint64_t{1} << 48;
    return static_cast<SiteIndex>(4 * std::min(bytes, kMost));
}

void requireWhole(const SavedWork& work, SiteIndex mostSites) {
    Journal::forEachField(work.journal, [&](const Survey& survey, auto& own, const std::deque<Act>& acts,
                                            std::size_t position, auto&, auto&, auto&, auto&, auto&,
                                            int imports, auto&) {
        require(imports >= survey.importNumber && imports <= kMostImports, "the number of imports is none");
        if (own) requireParameters(*own);
        require(position <= acts.size(), "there are fewer acts than are in force");
        Shape before = shapeOf(survey), after = before;
        for (std::size_t i = position; i-- > 0;)
            Difference::forEachField(acts[i].difference, Turn(before, true, mostSites));
        for (std::size_t i = position; i < acts.size(); ++i)
            Difference::forEachField(acts[i].difference, Turn(after, false, mostSites));
    });
    requireRecords(work);
}

void requireFits(const Survey& survey, const Difference& waiting) {
    Shape shape(survey);
    Difference::forEachField(waiting, Turn(shape, false, shape.capacity));
}

}  // namespace tessel
