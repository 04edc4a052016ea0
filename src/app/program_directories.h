#pragma once

#include "app/survey.h"

#include <string>

/// Sets AppDir and DataDir of the session for a program that stands in the folder `executableDir`.
///
/// A program that has its help documents beside it reads and writes there. An installed one (its files in
/// ../share/varn-tessel, which only the system may write) reads there and writes in `userDataDir`, which is
/// made when it is missing; if that cannot be, DataDir is AppDir and whoever writes reports why it fails.
void findProgramDirectories(Session& session, const std::string& executableDir,
                            const std::string& userDataDir);
