// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/session.h"

#include <string>

namespace tessel {

/// The folder of the program that runs; empty when the system does not tell.
std::string executableFolder();

/// The folder in which this user's programs keep their data ($XDG_DATA_HOME or ~/.local/share); empty when
/// the user has none.
std::string userDataFolder();

/// The folder in which this user's programs keep what outlives them ($XDG_STATE_HOME or ~/.local/state);
/// empty when the user has none.
std::string userStateFolder();

/// Sets AppDir and DataDir of the session for a program that stands in the folder `executableDir`.
///
/// A program that has its help documents beside it reads and writes there. An installed one (its files in
/// ../share/varn-tessel, which only the system may write) reads there and writes in `userDataDir`, which is
/// made when it is missing; if that cannot be, DataDir is AppDir and whoever writes reports why it fails.
/// All paths are bytes, UTF-8 or not.
void findProgramDirectories(Session& session, const std::string& executableDir,
                            const std::string& userDataDir);

}  // namespace tessel
