// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/found_sites.h"

namespace tessel {

namespace {

constexpr std::size_t kFirstRoom = 128;

}  // namespace

FoundSites::FoundSites(const FileColumns& columns) : columns_(columns) {
    enlarge(kFirstRoom);
}

void FoundSites::enlarge(std::size_t room) {
    for (const SiteColumn c : {kX, kY, kEM1, kEM2, kRow}) {
        if ((c == kEM2 && !columns_.em2) || (c == kRow && !columns_.row)) continue;
        storage_[c].resize(room);
        at_[c] = storage_[c].data();
    }
    lines_.resize(room);
    lineAt_ = lines_.data();
    if (columns_.siteID) siteIDs_.resize(room);
    siteIDAt_ = siteIDs_.data();
    room_ = room;
}

void FoundSites::clear() {
    sites_ = 0;
    linesRead = 0;
    firstSiteLength = 0;
    rejections.clear();
    texts = {};
    odd = {};
    left_ = {};
    leftAt_ = 0;
}

void FoundSites::leave(const LeftValues& values) {
    left_ = left();
    leftAt_ = sites_;
    left_.add(values);
}

void LeftValues::add(const LeftValues& later) {
    for (std::size_t c = 0; c < columns.size(); ++c)
        if (later.columns[c]) columns[c] = later.columns[c];
    if (later.siteID) siteID = later.siteID;
}

}  // namespace tessel
