// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/line_blocks.h"
#include "base/text_lines.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessel {

/// Reads a text file line by line, as LineBlocks reads it.
class LineReader {
  public:
    /// Opens `path`. Throws as LineBlocks does.
    explicit LineReader(const std::string& path) : blocks_(path) {}

    /// Gives the next line without its end; false at the end of the file. The view holds until the next call.
    /// Throws as LineBlocks does.
    bool next(std::string_view& line);

    /// Number of the line that next() gave last, from 1.
    std::int64_t lineNumber() const { return lineNumber_; }

    /// As those of LineBlocks; the bytes are to be asked for before next().
    std::string_view firstBytes() const { return blocks_.firstBytes(); }
    const FileState& fileState() const { return blocks_.fileState(); }
    std::int64_t fileSize() const { return blocks_.fileSize(); }

  private:
    LineBlocks blocks_;
    LineBlock block_;
    TextLines lines_{block_.text()};
    std::int64_t lineNumber_ = 0;
};

}  // namespace tessel
