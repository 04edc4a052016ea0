#include "app/site_removal.h"

#include <algorithm>

namespace {

SiteIndex compact(double* values, std::span<const std::uint8_t> marks) {
    // Without a branch: every value is written to the next free place, which advances only when it is kept.
    SiteIndex kept = 0;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        values[kept] = values[i];
        kept += marks[i] == 0 ? 1 : 0;
    }
    std::fill(values + kept, values + marks.size(), 0.0);
    return kept;
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
