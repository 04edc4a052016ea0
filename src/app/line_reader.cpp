#include "app/line_reader.h"

#include "app/input_file.h"
#include "app/run_time_error.h"

#include <bit>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace {

// Large enough that system calls cost nothing, small enough to stay in the second-level cache.
constexpr std::size_t kBlock = std::size_t{1} << 18;

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
    fileSize_ = file.size;
    position_ = end_ = buffer_.data();
    try {
        skipByteOrderMark();
    } catch (...) {
        ::close(file_);
        throw;
    }
}

LineReader::~LineReader() {
    ::close(file_);
}

void LineReader::skipByteOrderMark() {
    while (end_ - position_ < 3 && fill()) {
    }
    if (end_ - position_ >= 3 && std::memcmp(position_, "\xEF\xBB\xBF", 3) == 0) position_ += 3;
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

// Reads another block behind the bytes not yet given; false at the end of the file.
bool LineReader::fill() {
    if (atEnd_) return false;
    const auto kept = static_cast<std::size_t>(end_ - position_);
    if (kept != 0) std::memmove(buffer_.data(), position_, kept);
    // A line longer than the buffer doubles it, so that even a line of 100 MB is moved a few times only.
    if (kept > buffer_.size() / 2) buffer_.resize(buffer_.size() * 2);
    position_ = buffer_.data();
    end_ = buffer_.data() + kept;
    ssize_t got = 0;
    do
        got = ::read(file_, buffer_.data() + kept, buffer_.size() - kept);
    while (got < 0 && errno == EINTR);
    if (got < 0) throw RunTimeError::file(path_, "cannot be read", errno);
    end_ += got;
    bytesRead_ += got;
    atEnd_ = got == 0;
    if (atEnd_ && bytesRead_ < fileSize_)
        throw RunTimeError::file(path_, "cannot be read", "it has become shorter meanwhile");
    return !atEnd_;
}
