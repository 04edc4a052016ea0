// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/site_masking.h"

#include <cstddef>
#include <vector>

namespace tessel {

/// What was done on the map.
enum class MaskAct {
    kRectangle,  ///< sites were masked
    kRecovery,   ///< all that were masked are shown again
    kDeletion    ///< all that were masked were taken out of the survey
};

struct MaskStep {
    MaskAct act;
    std::vector<IndexRange> runs;  ///< the sites concerned, of the survey that was on the map
    std::size_t actsBefore = 0;    ///< of a deletion: how many acts there had been before it
};

/// The steps since the map was opened, in order, to be taken back and done again. It keeps the masks; the
/// survey is the journal's.
class MaskHistory {
  public:
    /// A step has been done; those that had been taken back are forgotten. Nothing where no site is
    /// concerned.
    void add(MaskStep step);
    /// What had been taken back can no longer be done again.
    void forgetNext() { steps_.resize(position_); }

    bool canGoBack() const { return position_ > 0; }
    bool canGoForth() const { return position_ < steps_.size(); }
    /// The step that goBack() takes back, and that goForth() does again. Require that there is one.
    const MaskStep& last() const { return steps_[position_ - 1]; }
    const MaskStep& next() const { return steps_[position_]; }

    /// Take the masks with the step; of a deletion the survey has been taken back or forth before, and has
    /// `sites` sites now. Give how many of them are masked.
    SiteIndex goBack(SiteMaskArray& SiteMask, SiteIndex sites);
    SiteIndex goForth(SiteMaskArray& SiteMask, SiteIndex sites);

  private:
    std::vector<MaskStep> steps_;
    std::size_t position_ = 0;
};

/// The runs of the sites that are masked now and were not before. Requires as many sites.
std::vector<IndexRange> newlyMasked(SiteMaskArray before, const SiteMaskArray& now);

}  // namespace tessel
