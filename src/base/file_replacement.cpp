// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_replacement.h"

#include "base/file_system.h"
#include "base/in_place_writing.h"
#include "base/kept_attributes.h"
#include "base/run_time_error.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace tessel {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18;

// The file that a path stands for, so that replacing a symbolic link's target leaves the link a link. Where
// links lead round in a circle, the path of one of them.
std::string followLinks(const std::string& path) {
    constexpr int kMostLinks = 40;  // as many as the system follows
    std::error_code error;
    const auto real = fs::canonical(path, error);
    if (!error) return real.string();
    fs::path target = path;
    for (int links = 0; links < kMostLinks; ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error) break;
        target = target.parent_path() / next;
    }
    return target.string();
}

std::string folderOf(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

std::string temporaryFolder() {
    std::error_code error;
    const auto folder = fs::temp_directory_path(error);
    return error ? "/tmp" : folder.string();
}

// What the system says when a folder may not be changed, or an entry of it not replaced by this user.
bool isRefusalOfTheFolder(int reason) {
    return reason == EACCES || reason == EPERM || reason == EROFS || reason == EBUSY;
}

}  // namespace

FileReplacement::FileReplacement(const std::string& path) : target_(followLinks(path)) {
    lookAtTarget();
    open();
    buffer_.reserve(kBufferSize);
}

void FileReplacement::lookAtTarget() {
    exists_ = uninterrupted([&] { return ::stat(target_.c_str(), &old_); }) == 0;
    if (!exists_ && errno != ENOENT) fail(errno);
    if (!exists_) return;
    if (S_ISDIR(old_.st_mode)) fail(EISDIR);
    if (!S_ISREG(old_.st_mode)) fail(EINVAL);
    if ((old_.st_mode & 0222) == 0) fail(EACCES);
    if (uninterrupted([&] { return ::access(target_.c_str(), W_OK); }) != 0) fail(errno);
    inPlace_ = old_.st_nlink > 1;
}

// Open to nobody else as long as it is not known what the old file's rights are.
void FileReplacement::open() {
    const std::string folder = folderOf(target_);
    if (file_.open(folder, exists_ ? 0600 : 0666)) return removeLeftovers(folder);
    if (!exists_ || !isRefusalOfTheFolder(errno)) fail(errno);
    inPlace_ = true;
    elsewhere_ = temporaryFolder();
    if (!file_.open(elsewhere_, 0600)) fail(errno);
    file_.removeName();
}

void FileReplacement::commit() {
    flush();
    if (!inPlace_) makeReady();
    if (inPlace_ || !takePlace())
        writeInPlace(file_.descriptor(), target_);
    else
        syncFolder();
    file_.discard();
}

// All that can be done before the old file goes.
void FileReplacement::makeReady() {
    if (exists_) keepAttributes(target_, old_, file_.descriptor());
    if (uninterrupted([&] { return ::fsync(file_.descriptor()); }) != 0) fail(errno);
    if (!file_.giveName()) fail(errno);
    reportDelayedErrors();
}

// False when the old file may be written but not replaced.
bool FileReplacement::takePlace() {
    if (uninterrupted([&] { return std::rename(file_.name().c_str(), target_.c_str()); }) != 0) {
        if (exists_ && isRefusalOfTheFolder(errno)) return false;
        fail(errno);
    }
    file_.nameIsTaken();
    return true;
}

// Some file systems tell what went wrong only when a file is closed. It stays open itself, because closing it
// would end its lock.
void FileReplacement::reportDelayedErrors() {
    const int second = uninterrupted([&] { return ::fcntl(file_.descriptor(), F_DUPFD_CLOEXEC, 0); });
    if (second >= 0 && ::close(second) != 0 && errno != EINTR) fail(errno);
}

void FileReplacement::syncFolder() {
    if (!syncNames(folderOf(target_), file_.descriptor()))
        throw RunTimeError::file(target_, "has been written, but a power cut may bring the old file back",
                                 errno);
}

void FileReplacement::flush() {
    for (std::string_view rest = buffer_; !rest.empty();) {
        const ssize_t written =
            uninterrupted([&] { return ::write(file_.descriptor(), rest.data(), rest.size()); });
        if (written <= 0) fail(written < 0 ? errno : ENOSPC);
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    buffer_.clear();
}

void FileReplacement::fail(int errnoValue) {
    file_.discard();
    const RunTimeError error = RunTimeError::file(target_, "cannot be written", errnoValue);
    if (elsewhere_.empty()) throw error;
    throw RunTimeError(RunTimeError::kFile,
                       error.description() + " in " + elsewhere_ + ", where it is made ready");
}

}  // namespace tessel
