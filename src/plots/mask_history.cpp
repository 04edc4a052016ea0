// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/mask_history.h"

#include "app/site_runs.h"

#include <algorithm>
#include <utility>

namespace tessel {

namespace {

void mark(SiteMaskArray& SiteMask, const std::vector<IndexRange>& runs, std::uint8_t mark) {
    for (const IndexRange& run : runs)
        std::fill(SiteMask.begin() + run.first, SiteMask.begin() + run.last, mark);
}

SiteIndex maskedIn(const SiteMaskArray& SiteMask) {
    return std::count(SiteMask.begin(), SiteMask.end(), std::uint8_t{1});
}

}  // namespace

void MaskHistory::add(MaskStep step) {
    if (step.runs.empty()) return;
    forgetNext();
    steps_.push_back(std::move(step));
    position_ = steps_.size();
}

SiteIndex MaskHistory::goBack(SiteMaskArray& SiteMask, SiteIndex sites) {
    const MaskStep& step = steps_[--position_];
    if (step.act == MaskAct::kDeletion) SiteMask.assign(static_cast<std::size_t>(sites), 0);
    mark(SiteMask, step.runs, step.act == MaskAct::kRectangle ? 0 : 1);
    return maskedIn(SiteMask);
}

SiteIndex MaskHistory::goForth(SiteMaskArray& SiteMask, SiteIndex sites) {
    const MaskStep& step = steps_[position_++];
    if (step.act == MaskAct::kDeletion)
        SiteMask.assign(static_cast<std::size_t>(sites), 0);
    else
        mark(SiteMask, step.runs, step.act == MaskAct::kRectangle ? 1 : 0);
    return maskedIn(SiteMask);
}

std::vector<IndexRange> newlyMasked(SiteMaskArray before, const SiteMaskArray& now) {
    for (std::size_t i = 0; i < now.size(); ++i)
        before[i] = static_cast<std::uint8_t>(before[i] ^ now[i]);
    return markedRuns(before);
}

}  // namespace tessel
