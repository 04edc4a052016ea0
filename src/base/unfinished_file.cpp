// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/unfinished_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <vector>

namespace tessel {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = ".tessel-";
constexpr std::time_t kDay = std::time_t{24} * 60 * 60;

std::string pathOfOpenFile(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

bool lock(int file) {
    return uninterrupted([&] { return ::flock(file, LOCK_EX | LOCK_NB); }) == 0;
}

// Whether the path still leads to the open file, and that is an ordinary one.
bool isStill(int file, const std::string& path) {
    struct stat open {};
    struct stat named {};
    return ::fstat(file, &open) == 0 && ::lstat(path.c_str(), &named) == 0 && S_ISREG(open.st_mode) &&
           open.st_nlink > 0 && open.st_ino == named.st_ino && open.st_dev == named.st_dev;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetterOrDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// The process in the name of an unfinished file: 0 when it names none, -1 for a name of another kind.
pid_t processIn(std::string_view name) {
    constexpr std::size_t kRandom = 6;
    if (!name.starts_with(kPrefix)) return -1;
    name.remove_prefix(kPrefix.size());
    if (name.size() == kRandom && std::all_of(name.begin(), name.end(), isLetterOrDigit)) return 0;
    pid_t process = 0;
    const char* const last = name.data() + name.size();
    const auto [end, error] = std::from_chars(name.data(), last, process);
    const bool isNumbered = error == std::errc() && process > 0 && last - end > 1 && *end == '-' &&
                            std::all_of(end + 1, last, isDigit);
    return isNumbered ? process : -1;
}

bool isLiving(pid_t process) {
    return process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
}

bool mayBeOnAnotherMachine(const std::string& folder) {
    constexpr std::array<std::uint32_t, 7> kNetworks = {
        0x6969,      // NFS
        0x517B,      // SMB
        0xFE534D42,  // SMB 2
        0xFF534D42,  // CIFS
        0x65735546,  // FUSE
        0x01021997,  // 9p
        0x00C36400,  // Ceph
    };
    struct statfs status {};
    if (::statfs(folder.c_str(), &status) != 0) return true;
    const auto type = static_cast<std::uint32_t>(status.f_type);
    return std::find(kNetworks.begin(), kNetworks.end(), type) != kNetworks.end();
}

bool isOlderThanADay(int file) {
    struct stat status {};
    return ::fstat(file, &status) == 0 && status.st_mtime < std::time(nullptr) - kDay;
}

// Whoever is making the file looks whether it still has its name when he has locked it (openNamed).
void removeUnlessHeld(const std::string& path, bool onlyWhenOld) {
    const int file =
        uninterrupted([&] { return ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); });
    if (file < 0) return;
    if (lock(file) && isStill(file, path) && (!onlyWhenOld || isOlderThanADay(file))) ::unlink(path.c_str());
    ::close(file);
}

}  // namespace

std::string unfinishedName(const std::string& folder, int number) {
    return (fs::path(folder) / kPrefix).string() + std::to_string(::getpid()) + '-' + std::to_string(number);
}

bool UnfinishedFile::open(const std::string& folder, mode_t mode) {
    folder_ = folder;
    return openNameless(mode) || openNamed(mode);
}

// Opens a file without a name if it can be given one later.
bool UnfinishedFile::openNameless(mode_t mode) {
    const char* const folder = folder_.empty() ? "." : folder_.c_str();
    file_ = uninterrupted([&] { return ::open(folder, O_TMPFILE | O_RDWR | O_CLOEXEC, mode); });
    if (file_ < 0) return false;
    lock(file_);
    if (::access(pathOfOpenFile(file_).c_str(), F_OK) == 0) return true;
    discard();
    return false;
}

bool UnfinishedFile::openNamed(mode_t mode) {
    for (int number = 0;; ++number) {
        const std::string name = unfinishedName(folder_, number);
        file_ = uninterrupted(
            [&] { return ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode); });
        if (file_ < 0 && errno == EEXIST) continue;
        if (file_ < 0) return false;
        // Between these two steps another program may have taken it for a leftover.
        const bool taken = !lock(file_) && errno == EWOULDBLOCK;
        if (!taken && isStill(file_, name)) {
            name_ = name;
            return true;
        }
        ::close(file_);
    }
}

bool UnfinishedFile::giveName() {
    const std::string nameless = pathOfOpenFile(file_);
    for (int number = 0; name_.empty(); ++number) {
        const std::string name = unfinishedName(folder_, number);
        const auto link = [&] {
            return ::linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW);
        };
        if (uninterrupted(link) == 0)
            name_ = name;
        else if (errno != EEXIST)
            return false;
    }
    return true;
}

void UnfinishedFile::removeName() {
    if (!name_.empty()) ::unlink(name_.c_str());
    name_.clear();
}

// The name goes first: without the lock the file would be a leftover.
void UnfinishedFile::discard() {
    const int reason = errno;
    removeName();
    if (file_ >= 0) ::close(file_);
    file_ = -1;
    errno = reason;
}

void removeLeftovers(const std::string& folder) {
    std::error_code error;
    const std::string path = folder.empty() ? "." : folder;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const pid_t process = processIn(name);
        if (process >= 0 && !isLiving(process) && fs::is_regular_file(entry->symlink_status(error)))
            names.push_back(entry->path().string());
    }
    if (names.empty()) return;
    const bool onlyWhenOld = mayBeOnAnotherMachine(path);
    for (const std::string& name : names)
        removeUnlessHeld(name, onlyWhenOld);
}

}  // namespace tessel
