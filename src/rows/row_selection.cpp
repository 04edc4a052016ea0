// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_selection.h"

#include "base/run_time_error.h"
#include "rows/row_sites.h"

#include <algorithm>

namespace tessel {

namespace {

double valueOf(SiteIndex point, std::span<const double> along) {
    return along[static_cast<std::size_t>(point - 1)];
}

}  // namespace

int RowSelection::entryAt(double horizontal, std::span<const double> along) const {
    const auto end = SelPoints.begin() + SelCount;
    const auto found = std::find_if(
        SelPoints.begin(), end, [&](SiteIndex selected) { return valueOf(selected, along) == horizontal; });
    return found == end ? -1 : static_cast<int>(found - SelPoints.begin());
}

void RowSelection::append(SiteIndex point) {
    if (SelCount == kMost)
        throw RunTimeError::subscriptOutOfRange().withAdvice(
            "No more than 101 sites can be selected at a time. Delete these first, then select the others.");
    SelPoints[static_cast<std::size_t>(SelCount++)] = point;
}

void RowSelection::remove(int entry) {
    const auto place = SelPoints.begin() + entry;
    std::copy(place + 1, SelPoints.begin() + SelCount, place);
    --SelCount;
}

SiteIndex RowSelection::select(std::span<const SiteIndex> points) {
    auto before = SelPoints;
    const auto end = before.begin() + SelCount;
    std::sort(before.begin(), end);
    SiteIndex left = 0;
    for (const SiteIndex point : points) {
        if (std::binary_search(before.begin(), end, point)) continue;
        if (SelCount < kMost)
            append(point);
        else
            ++left;
    }
    return left;
}

void RowSelection::deselect(std::span<const SiteIndex> points) {
    const auto end = std::remove_if(SelPoints.begin(), SelPoints.begin() + SelCount, [&](SiteIndex selected) {
        return std::binary_search(points.begin(), points.end(), selected);
    });
    SelCount = static_cast<int>(end - SelPoints.begin());
}

int RowSelection::toggle(SiteIndex point, std::span<const double> along) {
    const int entry = entryAt(valueOf(point, along), along);
    if (entry < 0)
        append(point);
    else
        remove(entry);
    return entry;
}

RemovedSites deleteSelectedSites(Survey& survey, int row, RowSelection& selection) {
    const SiteIndex before = rowSites(survey, row).first;
    std::vector<IndexRange> runs;
    for (int i = 0; i < selection.SelCount; ++i) {
        const SiteIndex site = before + selection.SelPoints[static_cast<std::size_t>(i)] - 1;
        runs.push_back({site, site + 1});
    }
    std::sort(runs.begin(), runs.end(),
              [](const IndexRange& a, const IndexRange& b) { return a.first < b.first; });
    RemovedSites removed = removeSites(survey, std::move(runs), EmptiedRows::kCloseUp);
    selection.clear();
    return removed;
}

}  // namespace tessel
