// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/site_removal.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tessel {

namespace {

constexpr std::size_t kBlock = 64;

bool noneMarked(const std::uint8_t* marks) {
    std::array<std::uint64_t, kBlock / sizeof(std::uint64_t)> words;
    std::memcpy(words.data(), marks, kBlock);
    std::uint64_t any = 0;
    for (const std::uint64_t word : words)
        any |= word;
    return any == 0;
}

SiteIndex compact(double* values, std::span<const std::uint8_t> marks) {
    std::size_t kept = 0;
    std::size_t i = 0;
    // Without a branch: every value is written to the next free place, which advances only when it is kept.
    const auto compactUpTo = [&](std::size_t end) {
        for (; i < end; ++i) {
            values[kept] = values[i];
            kept += marks[i] == 0 ? 1u : 0u;
        }
    };
    // Few sites among many are the common case: what lies between them moves in blocks.
    while (marks.size() - i >= kBlock) {
        if (!noneMarked(marks.data() + i)) {
            compactUpTo(i + kBlock);
            continue;
        }
        if (kept != i) std::memmove(values + kept, values + i, kBlock * sizeof(double));
        kept += kBlock;
        i += kBlock;
    }
    compactUpTo(marks.size());
    std::fill(values + kept, values + marks.size(), 0.0);
    return static_cast<SiteIndex>(kept);
}

}  // namespace

SiteIndex removeSites(Survey& survey, std::span<const std::uint8_t> marks) {
    const SiteIndex before = survey.NumSites;
    if (before == 0) return 0;
    const auto used = marks.first(static_cast<std::size_t>(before));
    for (int column = 0; column < kSiteColumns; ++column)
        survey.NumSites = compact(survey.SiteData.column(column), used);
    if (survey.SiteIDPresent) compact(survey.SiteID.data(), used);
    return before - survey.NumSites;
}

void closeGaps(double* values, SiteIndex count, std::span<const SiteIndex> removed) {
    if (removed.empty()) return;
    double* free = values + removed.front();
    for (std::size_t i = 0; i < removed.size(); ++i) {
        const SiteIndex next = i + 1 < removed.size() ? removed[i + 1] : count;
        free = std::copy(values + removed[i] + 1, values + next, free);
    }
}

SiteIndex removeSitesAt(Survey& survey, std::span<const SiteIndex> removed) {
    const auto gone = static_cast<SiteIndex>(removed.size());
    const SiteIndex before = survey.NumSites;
    const auto take = [&](double* values) {
        closeGaps(values, before, removed);
        std::fill(values + (before - gone), values + before, 0.0);
    };
    for (int column = 0; column < kSiteColumns; ++column)
        take(survey.SiteData.column(column));
    if (survey.SiteIDPresent) take(survey.SiteID.data());
    survey.NumSites = before - gone;
    return gone;
}

}  // namespace tessel
