// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <string>
#include <string_view>

namespace tessel {

// What read-outs say of a site, so that it is found again in the data. Require a site of the survey.

/// "Row #2, Site # 1005"; the site number only where the survey has them.
std::string rowAndSite(const Survey& survey, SiteIndex site);

/// "EM1 = 30.00, EM2 = 60.00", in mS/m; the second only where the survey has it.
std::string siteReadings(const Survey& survey, SiteIndex site, std::string_view between = ", ");

/// "X = 436000.00, Y = 3760000.00"
std::string sitePlace(const Survey& survey, SiteIndex site);

/// ", Site # 1005" where the survey has site numbers, else nothing.
std::string siteNumber(const Survey& survey, SiteIndex site);

}  // namespace tessel
