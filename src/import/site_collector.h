// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/found_sites.h"

#include <cstdint>

namespace tessel {

class ErrorLog;

/// Puts what was found in the parts of a file into a survey and an error log, part by part.
class SiteCollector {
  public:
    /// The survey has no sites yet; from the file's size its storage is guessed.
    SiteCollector(Survey& survey, ErrorLog& log, std::int64_t fileSize);

    /// Adds the sites and rejected lines of the part that follows in the file.
    void add(const FoundSites& found);

    /// Sets the storage to this capacity, at least as large as there are sites. Behind the last site stands
    /// what rejected lines have left there, then zeros.
    void finish(SiteIndex capacity);

    std::int64_t linesRead() const { return linesRead_; }
    std::int64_t rejected() const { return rejected_; }
    const OddLines& odd() const { return odd_; }

  private:
    void reserveFor(const FoundSites& found);
    void addColumn(const FoundSites& found, SiteColumn column);
    void addLines(const FoundSites& found);
    void addSiteIDs(const FoundSites& found);
    void addRejections(const FoundSites& found);

    Survey& survey_;
    ErrorLog& log_;
    const std::int64_t fileSize_;
    std::int64_t linesRead_ = 0, rejected_ = 0;
    OddLines odd_;
    LeftValues left_;
};

}  // namespace tessel
