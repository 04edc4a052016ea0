// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cerrno>
#include <functional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tessel {

// What all that write files ask of the system. What fails leaves the reason in errno.

/// Makes a system call again as long as a signal interrupts it (EINTR). Not for close(), which has closed the
/// file even then.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// The path of what has this name in a folder; an empty folder is the present one. May run out of memory,
/// which ends the program where the library joins paths.
std::string pathIn(const std::string& folder, std::string_view name);

/// The names of what lies in a folder, in no order; of what cannot be read, none. May run out of memory.
std::vector<std::string> namesIn(const std::string& folder);

/// A name for what is made of a file, in its folder: "field.gpkg" for "field.dat" and "gpkg", or with a
/// number ("field-2.gpkg") where that is taken. Empty where the program may not write there.
std::string freeNameBeside(const std::string& file, const std::string& suffix);

/// Locks an open file; false where another program has (EWOULDBLOCK), or where the file system knows no
/// locks.
bool lockFile(int file);

/// Whether the path leads to the open file, and that is an ordinary one. Leaves no reason.
bool isStillNamed(int file, const std::string& path);

/// Opens a file that may be one left behind, and locks it; -1 where a living program holds it, or locks are
/// not known.
int openLeftFile(const std::string& path);

/// Makes a new file under the first name that is free and locks it, before another program takes it for one
/// left behind; -1 where that cannot be, and `name` is the one that was tried.
int makeLockedFile(const std::function<std::string(int number)>& nameOf, mode_t mode, std::string& name);

/// Gives a file a name that no other has; false where one has it.
bool renameToNew(const std::string& path, const std::string& name);

/// Whether the disk of an open file has room for so many bytes more, as far as it says.
bool hasRoomFor(int file, off_t bytes);

/// Has what was named or renamed in a folder, a file that is open among it, survive a power cut. True as well
/// where the file system can do no more for it.
bool syncNames(const std::string& folder, int file);

}  // namespace tessel
