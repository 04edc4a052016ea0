// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tessel {

/// A line or a record that is no site.
struct Rejection {
    std::int64_t line = 0;
    std::size_t begin = 0, length = 0;  ///< of its text in FoundSites::texts
    std::string_view reason;            ///< one of reject_reason
};

/// Lines with something odd: how many, and the first of them.
struct OddLines {
    std::int64_t lines = 0, first = 0;

    void add(std::int64_t line) {
        if (lines++ == 0) first = line;
    }
};

/// Values in the place of a site, as far as they are known.
struct LeftValues {
    std::array<std::optional<double>, kSiteColumns> columns;
    std::optional<double> siteID;

    /// Values that are known later take the place of earlier ones.
    void add(const LeftValues& later);
};

/// The columns that a file may lack.
struct FileColumns {
    bool siteID = false, em2 = false, row = false;
    double otherwiseRow = 0;  ///< the row of every site of a file without row numbers
};

/// What a reader has found in lines that follow each other. These are counted from 1, whatever stands before
/// them in the file; a record that begins above them has a line below 1.
class FoundSites {
  public:
    explicit FoundSites(const FileColumns& columns);
    FoundSites(FoundSites&&) = default;
    FoundSites& operator=(FoundSites&&) = default;

    /// Forgets all, but keeps the room.
    void clear();

    /// The place of the next site's values, to be filled before addSite(). Requires a column that the file
    /// has.
    double& next(SiteColumn column) { return at_[column][sites_]; }
    double& nextSiteID() { return siteIDAt_[sites_]; }
    /// Takes the values that stand there for those of a site.
    void addSite(std::int64_t line) {
        lineAt_[sites_] = sourceLine(line);
        if (++sites_ == room_) enlarge(2 * room_);
    }
    /// Of the values that stand there these stay for the next site's place, though the line is none.
    void leave(const LeftValues& values);

    /// `text` is part of texts, which must be set by then.
    void reject(std::int64_t line, std::string_view text, std::string_view reason) {
        rejections.push_back(
            {line, static_cast<std::size_t>(text.data() - texts.data()), text.size(), reason});
    }

    std::size_t sites() const { return sites_; }
    const FileColumns& fileColumns() const { return columns_; }
    bool has(SiteColumn column) const { return at_[column] != nullptr; }
    /// The values of the sites.
    const double* column(SiteColumn c) const { return at_[c]; }
    const double* siteIDs() const { return siteIDAt_; }
    const std::uint32_t* lines() const { return lineAt_; }
    /// What the lines behind the last site have left.
    LeftValues left() const { return leftAt_ == sites_ ? left_ : LeftValues{}; }

    std::int64_t linesRead = 0;
    std::size_t firstSiteLength = 0;  ///< of the line on which the first site was found (bytes)
    std::vector<Rejection> rejections;
    std::string_view texts;  ///< must live until what was found has been put into the survey
    OddLines odd;

  private:
    void enlarge(std::size_t room);

    FileColumns columns_;
    std::size_t sites_ = 0, room_ = 0;
    std::vector<double> storage_[kSiteColumns];
    std::vector<double> siteIDs_;
    std::vector<std::uint32_t> lines_;
    double* at_[kSiteColumns] = {};
    double* siteIDAt_ = nullptr;
    std::uint32_t* lineAt_ = nullptr;
    LeftValues left_;
    std::size_t leftAt_ = 0;
};

}  // namespace tessel
