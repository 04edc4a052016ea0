// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/site_texts.h"

#include "base/bounded.h"
#include "base/numbers.h"

#include <array>
#include <charconv>

namespace tessel {

namespace {

std::string twoDecimals(double value) {
    return pictureFormat(bounded(value), 2);
}

/// As it was typed: in as few digits as it has.
std::string shortest(double value) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 15);
    return {text.data(), end.ptr};
}

}  // namespace

std::string siteNumber(const Survey& survey, SiteIndex site) {
    if (!survey.SiteIDPresent) return {};
    return ", Site # " + shortest(survey.SiteID[static_cast<std::size_t>(site)]);
}

std::string rowAndSite(const Survey& survey, SiteIndex site) {
    return "Row #" + std::to_string(roundToInt(survey.SiteData(kRow, site))) + siteNumber(survey, site);
}

std::string siteReadings(const Survey& survey, SiteIndex site, std::string_view between) {
    std::string first = "EM1 = " + twoDecimals(survey.SiteData(kEM1, site));
    if (!survey.TwoEMColumns) return first;
    return first + std::string(between) + "EM2 = " + twoDecimals(survey.SiteData(kEM2, site));
}

std::string sitePlace(const Survey& survey, SiteIndex site) {
    return "X = " + twoDecimals(survey.SiteData(kX, site)) +
           ", Y = " + twoDecimals(survey.SiteData(kY, site));
}

}  // namespace tessel
