// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

#include <functional>
#include <vector>

namespace tessel {

/// A survey with one reading a site, in one row, at X = 0, 1, 2, ... and Y = 0.
Survey surveyOfReadings(const std::vector<double>& em1);
/// The same with two readings; requires vectors of equal length.
Survey surveyOfReadings(const std::vector<double>& em1, const std::vector<double>& em2);
/// The same with readings that are functions of the site's index.
Survey surveyOfReadings(SiteIndex sites, const std::function<double(SiteIndex)>& em1,
                        const std::function<double(SiteIndex)>& em2);

/// The readings of sites 0..NumSites-1.
std::vector<double> readingsOf(const Survey& survey, SiteColumn column);

// Surveys whose statistics are known exactly: readings that repeat; readings around zero; readings whose
// variation is a hundred-millionth of their size.
Survey surveyWithTies();
Survey surveyAroundZero();
Survey surveyWithLargeOffset();

}  // namespace tessel
