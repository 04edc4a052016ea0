// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/unfinished_file.h"

#include "base/file_system.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <vector>

namespace tessel {

namespace {

constexpr std::string_view kPrefix = ".tessel-";
constexpr std::time_t kDay = std::time_t{24} * 60 * 60;

std::string pathOfOpenFile(int file) {
    return "/proc/self/fd/" + std::to_string(file);
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

void removeUnlessHeld(const std::string& path, bool onlyWhenOld) {
    const int file = openLeftFile(path);
    if (file < 0) return;
    if (!onlyWhenOld || isOlderThanADay(file)) ::unlink(path.c_str());
    ::close(file);
}

}  // namespace

std::string unfinishedName(const std::string& folder, int number) {
    return pathIn(folder, kPrefix) + std::to_string(::getpid()) + '-' + std::to_string(number);
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
    lockFile(file_);
    if (::access(pathOfOpenFile(file_).c_str(), F_OK) == 0) return true;
    discard();
    return false;
}

bool UnfinishedFile::openNamed(mode_t mode) {
    const auto nameOf = [this](int number) { return unfinishedName(folder_, number); };
    std::string name;
    file_ = makeLockedFile(nameOf, mode, name);
    if (file_ >= 0) name_ = name;
    return file_ >= 0;
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
    const std::string path = folder.empty() ? "." : folder;
    std::vector<std::string> names = namesIn(path);
    std::erase_if(names, [](const std::string& name) {
        const pid_t process = processIn(name);
        return process < 0 || isLiving(process);
    });
    if (names.empty()) return;
    const bool onlyWhenOld = mayBeOnAnotherMachine(path);
    for (const std::string& name : names)
        removeUnlessHeld(pathIn(path, name), onlyWhenOld);
}

}  // namespace tessel
