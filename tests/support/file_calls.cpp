// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/file_calls.h"

#include <sys/statvfs.h>
#include <sys/vfs.h>

namespace tessel {

namespace {

constexpr int kNameless = O_TMPFILE & ~O_DIRECTORY;

WatchedFileCalls* watcher = nullptr;

struct NothingToFillIn {};
void fillIn(NothingToFillIn* /*status*/, const FileAnswer& /*answer*/) {}
void fillIn(struct statfs* status, const FileAnswer& answer) {
    status->f_type = answer.value;
}
void fillIn(struct statvfs* status, const FileAnswer& answer) {
    status->f_frsize = 4096;
    status->f_bavail = static_cast<fsblkcnt_t>(answer.value);
}

template <typename Call, typename Status = NothingToFillIn>
auto watched(FileCall call, Call real, Status* status = nullptr) -> decltype(real()) {
    if (watcher == nullptr || watcher->isAnswering()) return real();
    const auto answer = watcher->answer(call);
    if (answer) fillIn(status, *answer);
    if (answer) errno = answer->error;
    const auto result = answer ? static_cast<decltype(real())>(answer->result) : real();
    const int reason = errno;
    call.result = static_cast<long>(result);
    if (call.name == "open") call.file = static_cast<int>(result);
    watcher->record(std::move(call));
    errno = reason;
    return result;
}

// Where nobody watches no memory is needed: the system's own calls need none either.
FileCall onPath(const char* name, const char* path, const char* to = "") {
    FileCall call;
    call.name = name;
    if (watcher == nullptr) return call;
    call.path = path;
    call.to = to;
    return call;
}

FileCall onFile(const char* name, int file) {
    FileCall call;
    call.name = name;
    call.file = file;
    return call;
}

FileCall writing(const char* name, int file, const void* bytes, std::size_t size) {
    FileCall call = onFile(name, file);
    if (watcher != nullptr) call.bytes.assign(static_cast<const char*>(bytes), size);
    return call;
}

}  // namespace

WatchedFileCalls::WatchedFileCalls(Answerer answerer) : answerer_(std::move(answerer)) {
    watcher = this;
}

WatchedFileCalls::~WatchedFileCalls() {
    watcher = nullptr;
}

long WatchedFileCalls::count(const std::string& name) const {
    return std::count_if(calls_.begin(), calls_.end(), [&](const FileCall& c) { return c.name == name; });
}

std::optional<FileAnswer> WatchedFileCalls::answer(const FileCall& call) {
    if (!answerer_) return std::nullopt;
    isAnswering_ = true;
    const auto answer = answerer_(call);
    isAnswering_ = false;
    return answer;
}

std::optional<FileAnswer> noNamelessFiles(const FileCall& call) {
    if (call.name != "open" || (call.flags & kNameless) == 0) return std::nullopt;
    return FileAnswer{-1, EOPNOTSUPP};
}

// The linker lets these calls of the test program's own code come here (--wrap).
// NOLINTBEGIN(cert-dcl50-cpp)
extern "C" {
int __real_open(const char* path, int flags, mode_t mode);
ssize_t __real_write(int file, const void* bytes, std::size_t size);
ssize_t __real_pwrite(int file, const void* bytes, std::size_t size, off_t at);
ssize_t __real_pread(int file, void* bytes, std::size_t size, off_t at);
int __real_close(int file);
int __real_fsync(int file);
int __real_syncfs(int file);
int __real_linkat(int from, const char* path, int to, const char* name, int flags);
int __real_rename(const char* from, const char* to);
int __real_ftruncate(int file, off_t size);
int __real_fallocate(int file, int mode, off_t first, off_t size);
int __real_flock(int file, int operation);
int __real_stat(const char* path, struct stat* status);
int __real_statfs(const char* path, struct statfs* status);
int __real_fstatvfs(int file, struct statvfs* status);

int __wrap_open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & (O_CREAT | kNameless)) != 0) {
        va_list more;
        va_start(more, flags);
        mode = va_arg(more, mode_t);
        va_end(more);
    }
    FileCall call = onPath("open", path);
    call.flags = flags;
    return watched(std::move(call), [&] { return __real_open(path, flags, mode); });
}
ssize_t __wrap_write(int file, const void* bytes, std::size_t size) {
    return watched(writing("write", file, bytes, size), [&] { return __real_write(file, bytes, size); });
}
ssize_t __wrap_pwrite(int file, const void* bytes, std::size_t size, off_t at) {
    FileCall call = writing("pwrite", file, bytes, size);
    call.at = at;
    return watched(std::move(call), [&] { return __real_pwrite(file, bytes, size, at); });
}
ssize_t __wrap_pread(int file, void* bytes, std::size_t size, off_t at) {
    return watched(onFile("pread", file), [&] { return __real_pread(file, bytes, size, at); });
}
// Whatever it tells, the file is closed; and it is not kept, for it changes nothing.
int __wrap_close(int file) {
    std::optional<FileAnswer> answer;
    if (watcher != nullptr && !watcher->isAnswering()) answer = watcher->answer(onFile("close", file));
    const int result = __real_close(file);
    if (!answer) return result;
    errno = answer->error;
    return static_cast<int>(answer->result);
}
int __wrap_fsync(int file) {
    return watched(onFile("fsync", file), [&] { return __real_fsync(file); });
}
int __wrap_syncfs(int file) {
    return watched(onFile("syncfs", file), [&] { return __real_syncfs(file); });
}
int __wrap_linkat(int from, const char* path, int to, const char* name, int flags) {
    return watched(onPath("linkat", path, name), [&] { return __real_linkat(from, path, to, name, flags); });
}
int __wrap_rename(const char* from, const char* to) {
    return watched(onPath("rename", from, to), [&] { return __real_rename(from, to); });
}
int __wrap_ftruncate(int file, off_t size) {
    return watched(onFile("ftruncate", file), [&] { return __real_ftruncate(file, size); });
}
int __wrap_fallocate(int file, int mode, off_t first, off_t size) {
    return watched(onFile("fallocate", file), [&] { return __real_fallocate(file, mode, first, size); });
}
int __wrap_flock(int file, int operation) {
    return watched(onFile("flock", file), [&] { return __real_flock(file, operation); });
}
int __wrap_stat(const char* path, struct stat* status) {
    return watched(onPath("stat", path), [&] { return __real_stat(path, status); });
}
int __wrap_statfs(const char* path, struct statfs* status) {
    return watched(
        onPath("statfs", path), [&] { return __real_statfs(path, status); }, status);
}
int __wrap_fstatvfs(int file, struct statvfs* status) {
    return watched(
        onFile("fstatvfs", file), [&] { return __real_fstatvfs(file, status); }, status);
}
}
// NOLINTEND(cert-dcl50-cpp)

}  // namespace tessel
