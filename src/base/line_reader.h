// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/input_file.h"
#include "base/text_encoding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// Reads a text file line by line. Line ends are CR LF, LF or CR, mixed too, and the last line may lack one.
/// A UTF-8 byte-order mark at the start is passed over. Every other byte, NUL and control bytes too, is part
/// of its line. A file in UTF-16, with or without mark, is given in UTF-8. The file is read in blocks, not
/// mapped, so that one that shrinks under our hands is an error and never a signal; of one that grows, what
/// was there when it was opened is read, and a last line that is cut off there is a line.
class LineReader {
  public:
    /// Opens `path`. Throws RunTimeError (with path and the system's reason) when it cannot be opened or is
    /// not a regular file: a device or a pipe might never end.
    explicit LineReader(const std::string& path);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// Gives the next line without its end; false at the end of the file. The view holds until the next call.
    /// Throws RunTimeError when reading fails or the file has become shorter since it was opened.
    bool next(std::string_view& line);

    /// Number of the line that next() gave last, from 1.
    std::int64_t lineNumber() const { return lineNumber_; }

    /// The bytes with which the file begins, as they stand in it: 64 KiB at least, or all. To be asked for
    /// before next().
    std::string_view firstBytes() const { return {raw_.empty() ? buffer_.data() : raw_.data(), firstBytes_}; }

    /// What the file was like when it was opened.
    const FileState& fileState() const { return state_; }
    std::int64_t fileSize() const { return state_.size; }

  private:
    bool readOn(std::string_view& line);
    bool takeBufferedLine(std::string_view& line);
    bool takeRest(std::string_view& line);
    void give(std::string_view& line, const char* last, const char* next);
    bool fill();
    void readFirstBlock();
    void decodeFirstBlock(TextEncoding encoding);
    std::size_t readBlock(char* first, std::size_t most);
    std::size_t readDecoded(char* first);

    std::string path_;
    int file_ = -1;
    std::vector<char> buffer_;
    const char* position_ = nullptr;  // first byte not yet given
    const char* end_ = nullptr;       // one past the last byte read
    std::size_t firstBytes_ = 0;
    std::optional<Utf16Decoder> decoder_;
    std::vector<char> raw_;  // a block of UTF-16
    std::int64_t lineNumber_ = 0;
    FileState state_;
    std::int64_t bytesRead_ = 0;
};

}  // namespace tessel
