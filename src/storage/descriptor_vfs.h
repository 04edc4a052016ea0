// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tessel {

/// The name under which SQLite finds a way to files that are open already: the "path" of such a file is its
/// descriptor, which stays the caller's. There is neither a journal beside it nor a lock: whoever opens a
/// database so is its only reader or writer, and a database that is not whole is thrown away by him.
///
/// A database that its last writer has left in write-ahead mode is read as one without.
const char* descriptorVfs();

/// The reason (a value of errno) of the last call about such a file that has failed, and 0 from then on.
int takeFileError();

}  // namespace tessel
