#include "app/line_reader.h"

#include "app/run_time_error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Large enough that system calls cost nothing, small enough to stay in the second-level cache.
constexpr std::size_t kBlock = std::size_t{1} << 18;

const char* find(const char* first, const char* last, char wanted) {
    return static_cast<const char*>(std::memchr(first, wanted, static_cast<std::size_t>(last - first)));
}

}  // namespace

LineReader::LineReader(const std::string& path) : path_(path), buffer_(kBlock) {
    // Not blocking, or opening a pipe that nobody writes to would wait for ever.
    file_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file_ < 0) throw RunTimeError::file(path, "cannot be opened", errno);
    struct stat status {};
    const bool regular = ::fstat(file_, &status) == 0 && S_ISREG(status.st_mode);
    if (!regular) {
        ::close(file_);
        throw RunTimeError::file(path, "cannot be read",
                                 S_ISDIR(status.st_mode) ? "it is a folder" : "it is not a regular file");
    }
    position_ = end_ = buffer_.data();
    skipByteOrderMark();
}

LineReader::~LineReader() {
    ::close(file_);
}

void LineReader::skipByteOrderMark() {
    while (end_ - position_ < 3 && fill()) {
    }
    if (end_ - position_ >= 3 && std::memcmp(position_, "\xEF\xBB\xBF", 3) == 0) position_ += 3;
}

bool LineReader::takeBufferedLine(std::string_view& line) {
    const char* const lineFeed = find(position_, end_, '\n');
    const char* const stop = lineFeed != nullptr ? lineFeed : end_;
    const char* const carriageReturn = find(position_, stop, '\r');
    const char* last = nullptr;
    const char* next = nullptr;
    if (carriageReturn == nullptr || carriageReturn + 1 == lineFeed) {
        if (lineFeed == nullptr) return false;
        last = carriageReturn != nullptr ? carriageReturn : lineFeed;
        next = lineFeed + 1;
    } else {
        // A CR alone ends a line, but one at the very end of the buffer may be half of a CR LF.
        if (carriageReturn + 1 == end_ && !atEnd_) return false;
        last = carriageReturn;
        next = carriageReturn + 1;
    }
    line = {position_, static_cast<std::size_t>(last - position_)};
    position_ = next;
    ++lineNumber_;
    return true;
}

bool LineReader::readOn(std::string_view& line) {
    while (fill())
        if (takeBufferedLine(line)) return true;
    if (takeBufferedLine(line)) return true;
    if (position_ == end_) return false;
    line = {position_, static_cast<std::size_t>(end_ - position_)};
    position_ = end_;
    ++lineNumber_;
    return true;
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
    atEnd_ = got == 0;
    end_ += got;
    return !atEnd_;
}
