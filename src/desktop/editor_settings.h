// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/session.h"

#include <string>
#include <vector>

namespace tessel {

/// The editor that is in force when the settings file names none.
inline constexpr const char* kFallbackEditor = "c:\\Windows\\write.exe ";

/// The printer resolution factors that are taken: 0.1 is 30 dpi, 100 is 30,000 dpi.
inline constexpr double kSmallestPrintScale = 0.1;
inline constexpr double kLargestPrintScale = 100;

/// Reads the suite's editor settings, VARN_te_fio_info.dat, into TextEditor (the path and one blank) and
/// PrintScale: the file in the session's DataDir if there is one, or else the one in AppDir. Six items stand
/// in it, separated by commas or line ends, quotes around an item taken off: item 2 is the editor's path,
/// item 6 the printer resolution factor, the others are ignored. Each of the two is taken by itself: an item
/// that is missing or refused leaves the fallback editor, or 1.0, in force, and so does a file that cannot be
/// read. Gives what was refused and why, a sentence each; a file that is not there is no fault.
std::vector<std::string> ReadTEinfo(Session& session);

}  // namespace tessel
