// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"

namespace tessel {

/// How many odd surveys there are.
inline constexpr int kOddSurveys = 11;

/// A survey such as few users have: one site, one row, one reading throughout, more rows than the system
/// holds, degrees, huge coordinates, with and without the second reading. Rows have been looked for. Requires
/// 0 <= number < kOddSurveys.
Survey oddSurvey(int number);

/// The same sites as a delimited file: X, Y, one or two readings.
std::string delimitedFile(const Survey& survey);

}  // namespace tessel
