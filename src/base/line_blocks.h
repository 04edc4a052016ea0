// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/input_file.h"
#include "base/text_encoding.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// Lines that follow each other in a text file, each of them whole and with its end.
class LineBlock {
  public:
    std::string_view text() const { return {bytes_.data(), length_}; }

  private:
    friend class LineBlocks;
    std::vector<char> bytes_;  // room, kept for the next block
    std::size_t length_ = 0;
};

/// Reads a text file in blocks of whole lines (base/text_lines.h). A UTF-8 byte-order mark at the start is
/// passed over. Every other byte, NUL and control bytes too, is part of its line. A file in UTF-16, with or
/// without mark, is given in UTF-8. The file is read, not mapped, so that one that shrinks under our hands is
/// an error and never a signal; of one that grows, what was there when it was opened is read, and a last line
/// that is cut off there is a line.
class LineBlocks {
  public:
    /// Large enough that system calls cost nothing, small enough to stay in the second-level cache.
    static constexpr std::size_t kBlock = std::size_t{1} << 18;

    /// Opens `path`, to be read in blocks of about this many bytes. Throws RunTimeError (with path and the
    /// system's reason) when it cannot be opened or is not a regular file: a device or a pipe might never
    /// end.
    explicit LineBlocks(const std::string& path, std::size_t blockSize = kBlock);
    ~LineBlocks();
    LineBlocks(const LineBlocks&) = delete;
    LineBlocks& operator=(const LineBlocks&) = delete;

    /// Gives the next lines, one at least; false at the end of the file. A block is larger by half only where
    /// a line is. Throws RunTimeError when reading fails or the file has become shorter since it was opened.
    bool next(LineBlock& block);

    /// The bytes with which the file begins, as they stand in it: 64 KiB, or all. To be asked for before
    /// next().
    std::string_view firstBytes() const { return {raw_.data(), firstBytes_}; }

    /// What the file was like when it was opened.
    const FileState& fileState() const { return state_; }
    std::int64_t fileSize() const { return state_.size; }

  private:
    void readFirstBytes();
    void beginWithRest(LineBlock& block);
    bool fill(LineBlock& block);
    bool cutBehindLastLine(LineBlock& block, std::size_t before);
    std::size_t readSome(char* first, std::size_t most);
    bool decodeMore();
    std::size_t readFile(char* first, std::size_t most);

    std::string path_;
    std::size_t blockSize_;
    int file_ = -1;
    FileState state_;
    std::int64_t bytesRead_ = 0;
    std::vector<char> raw_;  // the first bytes, later a block of UTF-16
    std::size_t firstBytes_ = 0;
    std::optional<Utf16Decoder> decoder_;
    std::vector<char> decoded_;
    std::string_view ready_;  // bytes that have been read, or decoded, and not been given yet
    std::string rest_;        // behind the last line of the block before
};

}  // namespace tessel
