// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tessel {

/// Writes the bytes of the open file `from` (its first to its last, whatever its position) over those of the
/// file `path`, which exists and stays what it is: owner, rights and names. First looks whether the disk has
/// room; when it has not, or another program of ours is writing the file just then, nothing is changed. The
/// bytes are on the disk when this returns.
///
/// Every failure throws RunTimeError with path, the system's reason and what is left of the file. Whoever is
/// killed on the way leaves a file that is half new and half old: use it only where a file cannot be
/// replaced.
void writeInPlace(int from, const std::string& path);

}  // namespace tessel
