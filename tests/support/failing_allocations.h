// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// While one of these lives, so many allocations of this thread succeed and every later one throws
/// std::bad_alloc, as on a computer without memory.
class FailingAllocations {
  public:
    explicit FailingAllocations(long successes);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// Whether an allocation has failed since.
    bool hasFailed() const;
};

}  // namespace tessel
