// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/in_place_writing.h"

#include "base/file_system.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tessel {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

class Target {
  public:
    explicit Target(const std::string& path);
    ~Target() { ::close(file_); }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    void lock();
    void reserve(off_t size);
    void take(int from);
    void finish();

  private:
    void write(std::string_view bytes);
    bool hasRoom(off_t size) const;
    int cut(off_t size) const {
        return uninterrupted([&] { return ::ftruncate(file_, size); });
    }
    [[noreturn]] void fail(int reason, const std::string& whatIsLeft) const;
    [[noreturn]] void failHalfway(int reason) const;

    const std::string& path_;
    int file_;
    struct stat old_ {};
    off_t written_ = 0;
};

Target::Target(const std::string& path)
    : path_(path), file_(uninterrupted([&] {
          return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
      })) {
    if (file_ < 0) throw RunTimeError::file(path_, "cannot be written", errno);
    if (::fstat(file_, &old_) == 0 && S_ISREG(old_.st_mode)) return;
    ::close(file_);
    throw RunTimeError::file(path_, "cannot be written", EINVAL);
}

void Target::fail(int reason, const std::string& whatIsLeft) const {
    const RunTimeError error = RunTimeError::file(path_, "cannot be written", reason);
    throw RunTimeError(RunTimeError::kFile, error.description() + "; " + whatIsLeft);
}

void Target::failHalfway(int reason) const {
    cut(std::max(old_.st_size, written_));
    if (written_ == 0) fail(reason, "the file is as it was");
    const std::string taken = std::to_string(written_) + " bytes of the new text are in the file";
    fail(reason, written_ < old_.st_size ? taken + ", what follows is the old one's" : taken);
}

// Two programs that write at once would leave a mixture. Where there are no locks we go without.
void Target::lock() {
    if (!lockFile(file_) && errno == EWOULDBLOCK)
        throw RunTimeError::file(path_, "cannot be written", "another program is writing it just now");
}

// What a file system says that cannot reserve room.
bool Target::hasRoom(off_t size) const {
    constexpr off_t kUnit = 512;  // of st_blocks
    return hasRoomFor(file_, size - static_cast<off_t>(old_.st_blocks) * kUnit);
}

void Target::reserve(off_t size) {
    if (size == 0 || uninterrupted([&] { return ::fallocate(file_, 0, 0, size); }) == 0) return;
    const bool isUnable = errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL;
    if (isUnable && hasRoom(size)) return;
    failHalfway(isUnable ? ENOSPC : errno);
}

void Target::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t taken =
            uninterrupted([&] { return ::pwrite(file_, bytes.data(), bytes.size(), written_); });
        if (taken <= 0) failHalfway(taken < 0 ? errno : ENOSPC);
        bytes.remove_prefix(static_cast<std::size_t>(taken));
        written_ += taken;
    }
}

void Target::take(int from) {
    std::vector<char> block(kBlock);
    for (;;) {
        const ssize_t got =
            uninterrupted([&] { return ::pread(from, block.data(), block.size(), written_); });
        if (got < 0) failHalfway(errno);
        if (got == 0) return;
        write({block.data(), static_cast<std::size_t>(got)});
    }
}

void Target::finish() {
    if (cut(written_) != 0) fail(errno, "it holds the new text, followed by the end of the old one");
    if (uninterrupted([&] { return ::fsync(file_); }) != 0)
        fail(errno, "it holds the new text, which a power cut may take away");
}

}  // namespace

void writeInPlace(int from, const std::string& path) {
    struct stat whole {};
    if (::fstat(from, &whole) != 0) throw RunTimeError::file(path, "cannot be written", errno);
    Target target(path);
    target.lock();
    target.reserve(whole.st_size);
    target.take(from);
    target.finish();
}

}  // namespace tessel
