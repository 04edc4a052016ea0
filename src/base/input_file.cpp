// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/input_file.h"

#include "base/file_system.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/magic.h>
#include <memory>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

namespace tessel {

namespace {

constexpr std::array<std::uint32_t, 9> kKernelFileSystems = {
    PROC_SUPER_MAGIC,   SYSFS_MAGIC,         DEBUGFS_MAGIC,  TRACEFS_MAGIC, SECURITYFS_MAGIC,
    CGROUP_SUPER_MAGIC, CGROUP2_SUPER_MAGIC, EFIVARFS_MAGIC, SELINUX_MAGIC};

bool isOfTheKernel(const struct statfs& fileSystem) {
    const auto type = static_cast<std::uint32_t>(fileSystem.f_type);
    return std::find(kKernelFileSystems.begin(), kKernelFileSystems.end(), type) != kKernelFileSystems.end();
}

// Why a file is none that holds its bytes, or null.
const char* whyNotRegular(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return "it is a folder";
    return S_ISREG(status.st_mode) ? nullptr : "it is not a regular file";
}

const char* whyNotInput(const std::string& path, const struct stat& status) {
    if (const char* const reason = whyNotRegular(status)) return reason;
    struct statfs fileSystem {};
    const bool known = ::statfs(path.c_str(), &fileSystem) == 0;
    return known && isOfTheKernel(fileSystem) ? "it is a file of the system's own" : nullptr;
}

// The clock reaches 292 years from 1970, a file's time further: then it is the clock's first or last second.
FileState stateIn(const struct stat& status) {
    using namespace std::chrono;
    constexpr auto kFurthest = duration_cast<seconds>(system_clock::duration::max()) - seconds(1);
    const auto whole = std::clamp<seconds>(seconds(status.st_mtim.tv_sec), -kFurthest, kFurthest);
    const auto modified = whole + nanoseconds(status.st_mtim.tv_nsec);
    return {status.st_size, system_clock::time_point(duration_cast<system_clock::duration>(modified))};
}

}  // namespace

FileState stateOfInputFile(const std::string& path) {
    struct stat status {};
    if (uninterrupted([&] { return ::stat(path.c_str(), &status); }) != 0)
        throw RunTimeError::file(path, "cannot be opened", errno);
    if (const char* const reason = whyNotInput(path, status))
        throw RunTimeError::file(path, "cannot be read", reason);
    return stateIn(status);
}

InputFile openInputFile(const std::string& path) {
    stateOfInputFile(path);
    // Not blocking, for it may have turned into a pipe meanwhile.
    constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int file = uninterrupted([&] { return ::open(path.c_str(), kFlags); });
    if (file < 0) throw RunTimeError::file(path, "cannot be opened", errno);
    struct stat status {};
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) return {stateIn(status), file};
    ::close(file);
    throw RunTimeError::file(path, "cannot be read", "it is not a regular file");
}

std::string readFirstBytes(const std::string& path, std::size_t most) {
    const InputFile file = openInputFile(path);
    // Of a size that the compiler knows, so that it can check the calls that write into it.
    const auto bytes = std::make_unique_for_overwrite<char[]>(most);
    std::size_t length = 0;
    ssize_t got = 1;
    while (length < most && got > 0) {
        got = ::read(file.descriptor, bytes.get() + length, most - length);
        if (got < 0 && errno == EINTR)
            got = 1;
        else if (got > 0)
            length += static_cast<std::size_t>(got);
    }
    const int failure = errno;
    ::close(file.descriptor);
    if (got < 0) throw RunTimeError::file(path, "cannot be read", failure);
    return {bytes.get(), length};
}

bool isInputFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && whyNotInput(path, status) == nullptr;
}

}  // namespace tessel
