// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/lines_read.h"
#include "base/input_file.h"
#include "import/file_kind.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessel {

/// What an import found in its file, beside the survey that it made of it.
struct ImportSummary {
    std::string path;  ///< the sensor file
    FileState file;    ///< what it was like when it was read
    FileKind kind;
    std::vector<FieldPlace> fields;  ///< what has been read of it
    double cutoff = 0;               ///< smallest accepted reading (mS/m)
    bool fixedColumns = false;       ///< read by columns of characters; else by separators
    bool isTable = false;            ///< its columns were chosen one by one
    std::string positionsKept;       ///< what could not be converted to metres, in words; or empty
    bool decimalCommasRead = false;  ///< semicolons were taken for separators, commas for decimal signs
    std::int64_t linesRead = 0;
    std::vector<RejectedLines> rejected;  ///< in the order in which the reasons first came up

    /// Lines of a delimited file that do not hold as many values as the layout takes, and the first of them.
    std::int64_t linesNotFitting = 0;
    std::int64_t firstLineNotFitting = 0;
    /// Lines of a fixed-column file in which an edge of a field in use cuts through digits (a digit on both
    /// sides of it), and the first of them. Only lines whose fields were read as numbers count, those below
    /// the cut-off too: what stands in a header line means nothing.
    std::int64_t linesCut = 0;
    std::int64_t firstLineCut = 0;

    std::string logPath;                     ///< where the error log lies
    std::string logProblem;                  ///< path and reason if it could not be written, else empty
    std::vector<std::string> firstLogLines;  ///< at most five, without line ends
};

}  // namespace tessel
