// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_system.h"

#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace tessel {

namespace {

constexpr int kTriedNames = 1000;

int openFile(const std::string& path, int flags, mode_t mode = 0) {
    return uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); });
}

void closeKeepingReason(int file) {
    const int reason = errno;
    ::close(file);
    errno = reason;
}

}  // namespace

std::string pathIn(const std::string& folder, std::string_view name) {
    std::string path = folder;
    if (!path.empty() && path.back() != '/') path += '/';
    return path.append(name);
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    const auto close = [](DIR* entries) { ::closedir(entries); };
    const std::unique_ptr<DIR, decltype(close)> entries(::opendir(folder.c_str()));
    if (!entries) return names;
    while (const dirent* const entry = ::readdir(entries.get()))
        names.emplace_back(entry->d_name);
    return names;
}

std::string freeNameBeside(const std::string& file, const std::string& suffix) {
    const std::filesystem::path of(file);
    const std::string folder = of.parent_path().string();
    if (!of.has_stem() || ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) return {};
    const std::string stem = pathIn(folder, of.stem().string());
    struct stat taken {};
    for (int number = 1; number <= kTriedNames; ++number) {
        std::string name = stem;
        if (number > 1) name.append("-").append(std::to_string(number));
        name.append(".").append(suffix);
        if (::lstat(name.c_str(), &taken) != 0) return errno == ENOENT ? name : std::string();
    }
    return {};
}

bool lockFile(int file) {
    return uninterrupted([&] { return ::flock(file, LOCK_EX | LOCK_NB); }) == 0;
}

bool isStillNamed(int file, const std::string& path) {
    struct stat open {};
    struct stat named {};
    return ::fstat(file, &open) == 0 && ::lstat(path.c_str(), &named) == 0 && S_ISREG(open.st_mode) &&
           open.st_nlink > 0 && open.st_ino == named.st_ino && open.st_dev == named.st_dev;
}

// Whoever is making it looks whether it still has its name when he has locked it (makeLockedFile).
int openLeftFile(const std::string& path) {
    const int file = openFile(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (file < 0 || (lockFile(file) && isStillNamed(file, path))) return file;
    closeKeepingReason(file);
    return -1;
}

int makeLockedFile(const std::function<std::string(int number)>& nameOf, mode_t mode, std::string& name) {
    constexpr int kMostTries = 10'000;
    for (int number = 0; number < kMostTries; ++number) {
        name = nameOf(number);
        const int file = openFile(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
        if (file < 0 && errno == EEXIST) continue;
        if (file < 0) return -1;
        // Between these two steps another program may have taken it for one left behind.
        const bool isTaken = !lockFile(file) && errno == EWOULDBLOCK;
        if (!isTaken && isStillNamed(file, name)) return file;
        ::close(file);
    }
    errno = EEXIST;
    return -1;
}

bool renameToNew(const std::string& path, const std::string& name) {
    if (::renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) return true;
    // Not every file system knows that.
    return errno == EINVAL && ::linkat(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), 0) == 0 &&
           ::unlink(path.c_str()) == 0;
}

bool hasRoomFor(int file, off_t bytes) {
    struct statvfs disk {};
    if (bytes <= 0 || ::fstatvfs(file, &disk) != 0 || disk.f_frsize == 0) return true;
    return static_cast<fsblkcnt_t>(bytes) / disk.f_frsize < disk.f_bavail;
}

bool syncNames(const std::string& folder, int file) {
    const int opened = openFile(folder, O_RDONLY | O_DIRECTORY);
    // A folder may be open to writing only; then the whole file system is asked.
    const int synced = opened >= 0 ? uninterrupted([&] { return ::fsync(opened); })
                                   : uninterrupted([&] { return ::syncfs(file); });
    if (opened >= 0) closeKeepingReason(opened);
    return synced == 0 || errno == EINVAL || errno == EOPNOTSUPP;
}

}  // namespace tessel
