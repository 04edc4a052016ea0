// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// The most characters that printNumber writes.
inline constexpr int kLongestNumber = 24;

/// Writes a number as the suite's programs read it: a blank (or "-"), the shortest form of the value rounded
/// to 15 significant digits, and a blank. No zero stands before the point (" .5 "); rounded magnitudes of
/// 1E+15 and above and below 1E-4 have an exponent of at least two digits (" 1E+15 ", "-2.5E-05 "); negative
/// zero is " 0 ". Requires a finite value and room for kLongestNumber characters; gives the end of what was
/// written.
char* printNumber(char* out, double value);

}  // namespace tessel
