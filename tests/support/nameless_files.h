// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// Whether a folder's file system has files without a name, which vanish with the process that writes them.
bool hasNamelessFiles(const std::string& folder);

/// From now on this process finds no such file system: all are like those of many memory cards and network
/// drives. There is no way back, so it is for forked processes only. False when the system refuses.
bool forbidNamelessFiles();

}  // namespace tessel
