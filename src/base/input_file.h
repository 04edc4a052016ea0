// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tessel {

/// What tells a file from what it was.
struct FileState {
    std::int64_t size = 0;  ///< bytes
    std::chrono::system_clock::time_point modified;

    bool operator==(const FileState&) const = default;
};

/// An input file that is open for reading, and what it was like then. The descriptor is the caller's.
struct InputFile : FileState {
    int descriptor = -1;
};

/// Opens a file that a user has chosen as input. Only a file that holds its bytes is opened at all: a device
/// or a pipe might never end, and opening alone can have an effect (a tape rewinds, a writer is woken). A
/// file of the kernel's (under /proc or /sys) is made while it is read and refused too, by its file system
/// and not by its path, which may be a link. Throws RunTimeError with path and reason.
InputFile openInputFile(const std::string& path);

/// What such a file is like; nothing is opened. Throws as openInputFile does.
FileState stateOfInputFile(const std::string& path);

/// Whether there is such a file; nothing is opened.
bool isInputFile(const std::string& path);

/// The first bytes of an input file, `most` of them or as many as it has. Throws as openInputFile does.
std::string readFirstBytes(const std::string& path, std::size_t most);

}  // namespace tessel
