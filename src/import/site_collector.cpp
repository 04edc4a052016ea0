// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/site_collector.h"

#include "base/fresh_memory.h"
#include "import/error_log.h"

#include <algorithm>
#include <limits>
#include <new>

namespace tessel {

namespace {

// More than the lines of a file that are somewhat shorter than the first one.
constexpr std::int64_t kSpareSites = 200;

}  // namespace

SiteCollector::SiteCollector(Survey& survey, ErrorLog& log, std::int64_t fileSize)
    : survey_(survey), log_(log), fileSize_(fileSize) {}

void SiteCollector::add(const FoundSites& found) {
    if (found.sites() > 0) {
        if (survey_.NumSites == 0) reserveFor(found);
        const auto sites = static_cast<SiteIndex>(found.sites());
        survey_.SiteData.resize(survey_.NumSites + sites);
        for (const SiteColumn column : {kX, kY, kEM1, kEM2, kRow})
            addColumn(found, column);
        addLines(found);
        if (survey_.SiteIDPresent) addSiteIDs(found);
        survey_.NumSites += sites;
        left_ = {};
    }
    left_.add(found.left());
    addRejections(found);
    if (odd_.lines == 0 && found.odd.lines > 0) odd_.first = linesRead_ + found.odd.first;
    odd_.lines += found.odd.lines;
    linesRead_ += found.linesRead;
}

// Room for a file of lines as long as the first one that is a site; where it cannot be had, growing step by
// step may still succeed.
void SiteCollector::reserveFor(const FoundSites& found) {
    const SiteIndex most = fileSize_ / static_cast<SiteIndex>(found.firstSiteLength + 1) + kSpareSites;
    survey_.SiteData.reserve(most);
    try {
        survey_.SourceLine.reserve(static_cast<std::size_t>(most));
        if (survey_.SiteIDPresent) survey_.SiteID.reserve(static_cast<std::size_t>(most));
    } catch (const std::bad_alloc&) {
    }
}

void SiteCollector::addColumn(const FoundSites& found, SiteColumn column) {
    double* const place = survey_.SiteData.column(column) + survey_.NumSites;
    if (found.has(column))
        std::copy_n(found.column(column), found.sites(), place);
    else if (column == kRow)
        std::fill_n(place, found.sites(), found.fileColumns().otherwiseRow);
}

void SiteCollector::addLines(const FoundSites& found) {
    std::vector<std::uint32_t>& lines = survey_.SourceLine;
    const std::size_t first = lines.size();
    provideMemoryFor(lines, first + found.sites());
    lines.insert(lines.end(), found.lines(), found.lines() + found.sites());
    if (linesRead_ + found.linesRead <= std::numeric_limits<std::uint32_t>::max()) {
        // A line above the part, which is below 1 there, is right again after this.
        for (std::size_t i = first; i < lines.size(); ++i)
            lines[i] += static_cast<std::uint32_t>(linesRead_);
        return;
    }
    for (std::size_t i = first; i < lines.size(); ++i)
        lines[i] = sourceLine(linesRead_ + static_cast<std::int32_t>(lines[i]));
}

void SiteCollector::addSiteIDs(const FoundSites& found) {
    std::vector<double>& siteIDs = survey_.SiteID;
    provideMemoryFor(siteIDs, siteIDs.size() + found.sites());
    siteIDs.insert(siteIDs.end(), found.siteIDs(), found.siteIDs() + found.sites());
}

void SiteCollector::addRejections(const FoundSites& found) {
    for (const Rejection& rejection : found.rejections)
        log_.reject(linesRead_ + rejection.line, found.texts.substr(rejection.begin, rejection.length),
                    rejection.reason);
    rejected_ += static_cast<std::int64_t>(found.rejections.size());
}

void SiteCollector::finish(SiteIndex capacity) {
    survey_.SiteData.resize(capacity);
    survey_.SourceLine.resize(static_cast<std::size_t>(capacity));
    if (survey_.SiteIDPresent) survey_.SiteID.resize(static_cast<std::size_t>(capacity));
    if (capacity == survey_.NumSites) return;
    for (int c = 0; c < kSiteColumns; ++c)
        if (const auto& value = left_.columns[static_cast<std::size_t>(c)])
            survey_.SiteData(c, survey_.NumSites) = *value;
    if (left_.siteID) survey_.SiteID[static_cast<std::size_t>(survey_.NumSites)] = *left_.siteID;
}

}  // namespace tessel
