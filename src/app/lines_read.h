// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tessel {

// What is told of the lines of a sensor file that has been read.

/// Where a value stands on a line.
struct FieldPlace {
    std::string name;
    int first = 0;  ///< column of characters, from 1; of a delimited file the value's place in the record
    int last = 0;   ///< column of characters; 0 for a delimited file
};

/// The lines or records of a file that were rejected for one reason.
struct RejectedLines {
    std::string reason;  ///< in the words of the error log
    std::int64_t lines = 0;
    std::int64_t firstLine = 0;  ///< number of the first one in the file, from 1
};

}  // namespace tessel
