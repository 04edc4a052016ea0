// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fuzz/memory_file.h"
#include "import/import_result.h"

#include <algorithm>
#include <cmath>

namespace tessel {

/// Of a file of so many bytes every site and every rejected line is made of one at least, and each site has
/// its values, and is in the order of the file.
inline void requireSites(const ImportResult& result, double cutoff, std::size_t bytes) {
    const Survey& survey = result.survey;
    require(survey.NumSites >= 0 && result.rejected >= 0);
    require(static_cast<std::size_t>(survey.NumSites + result.rejected) <= bytes);
    require(survey.SiteData.capacity() == survey.NumSites);
    require(survey.SourceLine.size() == static_cast<std::size_t>(survey.NumSites));
    require(std::is_sorted(survey.SourceLine.begin(), survey.SourceLine.end()));
    for (SiteIndex site = 0; site < survey.NumSites; ++site) {
        require(std::isfinite(survey.SiteData(kX, site)) && std::isfinite(survey.SiteData(kY, site)));
        require(survey.SiteData(kEM1, site) >= cutoff);
        require(!survey.TwoEMColumns || survey.SiteData(kEM2, site) >= cutoff);
    }
}

}  // namespace tessel
