// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

struct stat;

namespace tessel {

/// Gives the new open file `to` what the file at `path` has, whose status is `old`: owner, group, extended
/// attributes (access lists too) and mode, each where the system allows it. The bits that let a program run
/// in its owner's or group's name are given only when owner and group are kept both.
void keepAttributes(const std::string& path, const struct stat& old, int to);

}  // namespace tessel
