// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

inline constexpr const char* kProgramName = "VARN-Tessel";
/// As the package, processing records and survey files say it. The windows show the number of the
/// suite, 2.35R.
inline constexpr const char* kProgramVersion = "2.36";

}  // namespace tessel
