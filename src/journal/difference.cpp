// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/difference.h"

#include "app/site_runs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

namespace tessel {

namespace {

std::vector<double>& ownColumn(Survey& survey, int column) {
    switch (column) {
        case kTrueDist:
            return survey.TrueDist;
        case kXDist:
            return survey.XDist;
        case kYDist:
            return survey.YDist;
        default:
            return survey.SiteID;
    }
}

double* entriesOf(Survey& survey, int column) {
    return column < kSiteColumns ? survey.SiteData.column(column) : ownColumn(survey, column).data();
}

const std::vector<double>& distancesOf(const Survey& survey, int column) {
    return column == kTrueDist ? survey.TrueDist : column == kXDist ? survey.XDist : survey.YDist;
}

std::vector<double> entriesOf(const Survey& survey, int column) {
    if (column >= kTrueDist) return distancesOf(survey, column);
    const double* const entries = survey.SiteData.column(column);
    return {entries, entries + survey.SiteData.capacity()};
}

bool isDistance(int column) {
    return column >= kTrueDist;
}

// Distances have an entry behind the last site.
SiteIndex entryCount(int column, SiteIndex sites) {
    return sites + (isDistance(column) ? 1 : 0);
}

bool isInStep(const std::vector<double>& distances, SiteIndex sites) {
    return static_cast<SiteIndex>(distances.size()) == sites + 1;
}

template <typename Value>
std::vector<Value> entriesIn(const std::vector<IndexRange>& runs, const Value* entries) {
    std::vector<Value> values;
    values.reserve(static_cast<std::size_t>(sitesIn(runs)));
    for (const IndexRange& run : runs)
        values.insert(values.end(), entries + run.first, entries + run.last);
    return values;
}

std::vector<double> entriesBehind(const std::vector<IndexRange>& runs, const double* entries) {
    std::vector<double> values;
    values.reserve(runs.size());
    for (const IndexRange& run : runs)
        values.push_back(entries[run.last]);
    return values;
}

// The same where the runs have been taken out.
std::vector<double> entriesBehindGaps(const std::vector<IndexRange>& runs, const double* entries) {
    std::vector<double> values;
    values.reserve(runs.size());
    SiteIndex gaps = 0;
    for (const IndexRange& run : runs) {
        gaps += run.count();
        values.push_back(entries[run.last - gaps]);
    }
    return values;
}

// What these sites have in the column where the runs have been taken out. Both are in order.
std::vector<double> entriesLeft(std::span<const SiteIndex> sites, const std::vector<IndexRange>& runs,
                                const double* entries) {
    std::vector<double> values;
    values.reserve(sites.size());
    SiteIndex gaps = 0;
    auto run = runs.begin();
    for (const SiteIndex site : sites) {
        for (; run != runs.end() && run->first < site; ++run)
            gaps += run->count();
        values.push_back(entries[site - gaps]);
    }
    return values;
}

template <typename Value>
void insertEntries(Value* entries, SiteIndex count, const std::vector<IndexRange>& runs,
                   const std::vector<Value>& values) {
    openGaps(entries, count, runs);
    const Value* from = values.data();
    for (const IndexRange& run : runs) {
        std::copy(from, from + run.count(), entries + run.first);
        from += run.count();
    }
}

template <typename Value>
void takeEntries(Value* entries, SiteIndex count, const std::vector<IndexRange>& runs) {
    closeGaps(entries, count, std::span(runs));
    std::fill(entries + count - sitesIn(runs), entries + count, Value{});
}

void exchange(Survey& survey, int column, std::vector<double>& values) noexcept {
    if (column < kSiteColumns)
        survey.SiteData.exchange(column, values);
    else
        ownColumn(survey, column).swap(values);
}

// All of those columns that lose entries with the sites.
std::vector<int> columnsOf(const Survey& survey) {
    std::vector<int> columns = {kX, kY, kEM1, kEM2, kRow};
    if (survey.SiteIDPresent) columns.push_back(kSiteIDs);
    return columns;
}

SiteIndex bytesOf(const std::vector<double>& values) {
    return static_cast<SiteIndex>(values.capacity() * sizeof(double));
}

}  // namespace

SiteIndex bytesOf(const Survey& survey) {
    return static_cast<SiteIndex>(sizeof survey) +
           survey.SiteData.capacity() * kSiteColumns * static_cast<SiteIndex>(sizeof(double)) +
           static_cast<SiteIndex>(survey.SourceLine.capacity() * sizeof(std::uint32_t)) +
           bytesOf(survey.SiteID) + bytesOf(survey.TrueDist) + bytesOf(survey.XDist) + bytesOf(survey.YDist);
}

// Distances that there are not may be measured for a plot before the act is taken back.
Difference::Difference(const Survey& survey) : figures_(survey), capacity_(survey.SiteData.capacity()) {
    whole_.reserve(kSurveyColumns);
    for (const int column : {kTrueDist, kXDist, kYDist})
        if (distancesOf(survey, column).empty()) whole_.push_back({column, {}});
}

void Difference::keepParameters(const SurveyParameters& parameters) {
    SurveyFigures& figures = survey_ ? *survey_ : figures_;
    static_cast<SurveyParameters&>(figures) = parameters;
}

void Difference::keepSites(Survey& survey, std::vector<IndexRange> runs) {
    runs_ = std::move(runs);
    for (const int column : columnsOf(survey))
        taken_.push_back({column, entriesIn<double>(runs_, entriesOf(survey, column)), {}});
    if (!survey.SourceLine.empty()) lines_ = entriesIn(runs_, survey.SourceLine.data());
    for (const int column : {kTrueDist, kXDist, kYDist}) {
        const std::vector<double>& distances = distancesOf(survey, column);
        if (isInStep(distances, survey.NumSites))
            taken_.push_back(
                {column, entriesIn(runs_, distances.data()), entriesBehind(runs_, distances.data())});
        else if (!distances.empty())
            whole_.push_back({column, distances});
    }
}

void Difference::keepRowNumbers(const Survey& survey) {
    rows_.emplace(survey);
}

void Difference::keepDistances(const Survey& survey, int measure) {
    const int column = kTrueDist + measure - 1;
    const std::vector<double>& distances = distancesOf(survey, column);
    if (!distances.empty() && !isInStep(distances, survey.NumSites)) whole_.push_back({column, distances});
}

// With room for both columns of the positions, so that nothing fails between the two.
void Difference::keepAllDistances(const Survey& survey) {
    whole_.reserve(whole_.size() + 5);
    for (const int column : {kTrueDist, kXDist, kYDist})
        if (const std::vector<double>& distances = distancesOf(survey, column); !distances.empty())
            whole_.push_back({column, distances});
}

void Difference::exchangeColumn(Survey& survey, SiteColumn column, std::vector<double> values) {
    whole_.push_back({column, std::move(values)});
    exchange(survey, column, whole_.back().values);
}

void Difference::keepEntries(SiteColumn column, std::vector<SiteIndex> sites, std::vector<double> values) {
    entries_.push_back({column, std::move(sites), std::move(values)});
}

void Difference::exchangeEntries(Survey& survey) noexcept {
    for (Entries& entries : entries_)
        for (std::size_t i = 0; i < entries.sites.size(); ++i)
            std::swap(survey.SiteData(entries.column, entries.sites[i]), entries.values[i]);
}

void Difference::exchangeSurvey(Survey& survey, Survey next) {
    survey_ = std::make_unique<Survey>(std::move(next));
    std::swap(*survey_, survey);
}

// Room for the sites that come back, before any of them does.
void Difference::reserve(Survey& survey) const {
    for (const Taken& taken : taken_)
        if (taken.column > kRow)
            ownColumn(survey, taken.column)
                .reserve(static_cast<std::size_t>(entryCount(taken.column, figures_.NumSites)));
    if (capacity_ > survey.SiteData.capacity()) {
        if (survey.SiteIDPresent) survey.SiteID.reserve(static_cast<std::size_t>(capacity_));
        if (!lines_.empty()) survey.SourceLine.reserve(static_cast<std::size_t>(capacity_));
        survey.SiteData.resize(capacity_);
    }
}

// Requires all entries in their places.
void Difference::exchangeBehind(double* entries, Taken& taken) const {
    for (std::size_t i = 0; i < taken.behind.size(); ++i)
        std::swap(entries[runs_[i].last], taken.behind[i]);
}

void Difference::insertSites(Survey& survey) {
    for (Taken& taken : taken_) {
        const SiteIndex count = entryCount(taken.column, figures_.NumSites);
        if (isDistance(taken.column))
            ownColumn(survey, taken.column).resize(static_cast<std::size_t>(count));
        else if (taken.column == kSiteIDs)
            survey.SiteID.resize(static_cast<std::size_t>(capacity_));
        double* const entries = entriesOf(survey, taken.column);
        insertEntries(entries, count, runs_, taken.values);
        exchangeBehind(entries, taken);
    }
    if (lines_.empty()) return;
    survey.SourceLine.resize(static_cast<std::size_t>(capacity_));
    insertEntries(survey.SourceLine.data(), figures_.NumSites, runs_, lines_);
}

void Difference::takeSites(Survey& survey) {
    for (Taken& taken : taken_) {
        const SiteIndex count = entryCount(taken.column, survey.NumSites);
        double* const entries = entriesOf(survey, taken.column);
        exchangeBehind(entries, taken);
        takeEntries(entries, count, runs_);
        if (isDistance(taken.column))
            ownColumn(survey, taken.column)
                .resize(static_cast<std::size_t>(entryCount(taken.column, figures_.NumSites)));
        else if (taken.column == kSiteIDs)
            survey.SiteID.resize(static_cast<std::size_t>(capacity_));
    }
    if (lines_.empty()) return;
    takeEntries(survey.SourceLine.data(), survey.NumSites, runs_);
    survey.SourceLine.resize(static_cast<std::size_t>(capacity_));
}

void Difference::turn(Survey& survey, bool back) {
    if (survey_) return std::swap(*survey_, survey);
    std::optional<RowNumbers> rows;
    if (rows_) rows.emplace(survey);
    const SiteIndex capacity = survey.SiteData.capacity();
    if (back) reserve(survey);

    if (!back) exchangeEntries(survey);
    if (!runs_.empty()) back ? insertSites(survey) : takeSites(survey);
    if (back) exchangeEntries(survey);
    if (!back) survey.SiteData.resize(capacity_);
    for (Whole& whole : whole_)
        exchange(survey, whole.column, whole.values);
    std::swap(static_cast<SurveyFigures&>(survey), figures_);
    if (rows_) rows_->putInto(survey);
    std::swap(rows_, rows);
    capacity_ = capacity;
}

// The sites that were taken out stay as they are; what is on the survey's side takes the place of the rest.
Difference Difference::waiting(const Survey& after) const {
    Difference waiting;
    if (survey_) return waiting;
    waiting.figures_ = after;
    waiting.capacity_ = after.SiteData.capacity();
    waiting.runs_ = runs_;
    waiting.lines_ = lines_;
    for (const Taken& taken : taken_) {
        waiting.taken_.push_back({taken.column, taken.values, {}});
        if (isDistance(taken.column))
            waiting.taken_.back().behind = entriesBehindGaps(runs_, distancesOf(after, taken.column).data());
    }
    for (const Whole& whole : whole_)
        waiting.whole_.push_back({whole.column, entriesOf(after, whole.column)});
    for (const Entries& entries : entries_)
        waiting.entries_.push_back(
            {entries.column, entries.sites,
             entriesLeft(entries.sites, runs_, after.SiteData.column(entries.column))});
    if (rows_) waiting.rows_.emplace(after);
    return waiting;
}

bool Difference::movesSites() const {
    return survey_ || std::ranges::any_of(whole_, [](const Whole& whole) {
               return whole.column == kX || whole.column == kY;
           });
}

bool Difference::changesContent(const Survey& after) const {
    if (survey_ || !runs_.empty() || !entries_.empty()) return true;
    for (const Whole& whole : whole_)
        if (whole.column < kSiteColumns &&
            std::memcmp(whole.values.data(), after.SiteData.column(whole.column),
                        static_cast<std::size_t>(after.NumSites) * sizeof(double)) != 0)
            return true;
    return rows_ && !rows_->areThoseOf(after);
}

std::span<const double> Difference::removedEntries(int column) const {
    const auto taken = std::ranges::find(taken_, column, &Taken::column);
    return taken == taken_.end() ? std::span<const double>() : taken->values;
}

std::size_t Difference::bytes() const {
    SiteIndex bytes = static_cast<SiteIndex>(sizeof *this + runs_.capacity() * sizeof(IndexRange));
    for (const Taken& taken : taken_)
        bytes += bytesOf(taken.values) + bytesOf(taken.behind);
    bytes += static_cast<SiteIndex>(lines_.capacity() * sizeof(std::uint32_t));
    for (const Whole& whole : whole_)
        bytes += bytesOf(whole.values);
    for (const Entries& entries : entries_)
        bytes +=
            static_cast<SiteIndex>(entries.sites.capacity() * sizeof(SiteIndex)) + bytesOf(entries.values);
    if (rows_) bytes += static_cast<SiteIndex>(rows_->bytes());
    if (survey_) bytes += bytesOf(*survey_);
    return static_cast<std::size_t>(bytes);
}

}  // namespace tessel
