// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

inline constexpr const char* kProgramName = "VARN-Tessel";
inline constexpr const char* kProgramVersion = "2.35R";

}  // namespace tessel
