// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/line_reader.h"

#include "base/run_time_error.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tessel {

namespace {

// Large enough that system calls cost nothing, small enough to stay in the second-level cache.
constexpr std::size_t kBlock = std::size_t{1} << 18;
constexpr std::size_t kLeastFirstBytes = std::size_t{1} << 16;

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

// A word whose lowest set bit marks the first byte of `word` that is `wanted`; 0 if there is none.
constexpr std::uint64_t markBytes(std::uint64_t word, char wanted) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    const std::uint64_t zeroWhereWanted = word ^ (kOnes * static_cast<unsigned char>(wanted));
    return (zeroWhereWanted - kOnes) & ~zeroWhereWanted & (kOnes << 7);
}

// The first CR or LF, or `last`. Both are looked for in one pass, eight bytes at a time: two searches would
// read every line twice, and in a file of CRs alone the search for an LF would run on through the buffer.
const char* findLineEnd(const char* first, const char* last) {
    for (; last - first >= 8; first += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, first, sizeof word);
        const std::uint64_t marks = markBytes(word, '\n') | markBytes(word, '\r');
        if (marks == 0) continue;
        if constexpr (std::endian::native == std::endian::little) return first + std::countr_zero(marks) / 8;
        break;
    }
    while (first != last && !isLineEnd(*first))
        ++first;
    return first;
}

}  // namespace

LineReader::LineReader(const std::string& path) : path_(path), buffer_(kBlock) {
    const InputFile file = openInputFile(path);
    file_ = file.descriptor;
    state_ = file;
    position_ = end_ = buffer_.data();
    try {
        readFirstBlock();
    } catch (...) {
        ::close(file_);
        throw;
    }
}

LineReader::~LineReader() {
    ::close(file_);
}

void LineReader::readFirstBlock() {
    while (static_cast<std::size_t>(end_ - position_) < kLeastFirstBytes && fill()) {
    }
    firstBytes_ = static_cast<std::size_t>(end_ - position_);
    const TextEncoding encoding = recogniseTextEncoding(firstBytes().substr(0, kLeastFirstBytes));
    const std::size_t mark = byteOrderMarkLength(firstBytes());
    if (encoding == TextEncoding::kBytes)
        position_ += mark;
    else
        decodeFirstBlock(encoding);
}

void LineReader::decodeFirstBlock(TextEncoding encoding) {
    raw_.swap(buffer_);
    buffer_.resize(Utf16Decoder::mostBytes(kBlock) * 2);
    decoder_.emplace(encoding);
    const std::string_view text = firstBytes().substr(byteOrderMarkLength(firstBytes()));
    position_ = end_ = buffer_.data();
    end_ += decoder_->decode(text, buffer_.data());
}

void LineReader::give(std::string_view& line, const char* last, const char* next) {
    line = {position_, static_cast<std::size_t>(last - position_)};
    position_ = next;
    ++lineNumber_;
}

// Takes a line whose end, and the byte behind it, lie in the buffer: a CR there may be half of a CR LF.
bool LineReader::takeBufferedLine(std::string_view& line) {
    const char* const stop = findLineEnd(position_, end_);
    if (end_ - stop < 2) return false;
    give(line, stop, stop + (stop[0] == '\r' && stop[1] == '\n' ? 2 : 1));
    return true;
}

bool LineReader::takeRest(std::string_view& line) {
    if (position_ == end_) return false;
    give(line, isLineEnd(end_[-1]) ? end_ - 1 : end_, end_);
    return true;
}

bool LineReader::next(std::string_view& line) {
    return takeBufferedLine(line) || readOn(line);
}

bool LineReader::readOn(std::string_view& line) {
    while (fill())
        if (takeBufferedLine(line)) return true;
    return takeRest(line);
}

// Reads another block behind the bytes not yet given; false when there is none.
bool LineReader::fill() {
    const auto kept = static_cast<std::size_t>(end_ - position_);
    if (bytesRead_ == fileSize() && !decoder_) return false;
    if (kept != 0) std::memmove(buffer_.data(), position_, kept);
    // A line longer than the buffer doubles it, so that even a line of 100 MB is moved a few times only.
    if (kept > buffer_.size() / 2) buffer_.resize(buffer_.size() * 2);
    position_ = buffer_.data();
    end_ = buffer_.data() + kept;
    char* const free = buffer_.data() + kept;
    const std::size_t got = decoder_ ? readDecoded(free) : readBlock(free, buffer_.size() - kept);
    end_ += got;
    return got > 0;
}

// The next bytes as they stand in the file, `most` at most, none at its end.
std::size_t LineReader::readBlock(char* first, std::size_t most) {
    const auto left = static_cast<std::size_t>(fileSize() - bytesRead_);
    if (left == 0) return 0;
    ssize_t got = 0;
    do
        got = ::read(file_, first, std::min(most, left));
    while (got < 0 && errno == EINTR);
    if (got < 0) throw RunTimeError::file(path_, "cannot be read", errno);
    if (got == 0) throw RunTimeError::file(path_, "cannot be read", "it has become shorter meanwhile");
    bytesRead_ += got;
    return static_cast<std::size_t>(got);
}

// The next characters in UTF-8, none at the end of the file. Half of the buffer is free, room for a block.
std::size_t LineReader::readDecoded(char* first) {
    std::size_t length = 0;
    while (length == 0) {
        const std::size_t got = readBlock(raw_.data(), raw_.size());
        if (got == 0) return decoder_->finish(first);
        length = decoder_->decode({raw_.data(), got}, first);
    }
    return length;
}

}  // namespace tessel
