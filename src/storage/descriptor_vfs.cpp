// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/descriptor_vfs.h"

#include "base/file_system.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <sqlite3.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tessel {

namespace {

constexpr const char* kName = "tessel-descriptor";
constexpr int kLongestName = 16;

thread_local int fileError = 0;

// SQLite's own struct in front, as it wants it.
struct OpenFile {
    sqlite3_file base;
    int descriptor;
};

int descriptorOf(sqlite3_file* file) {
    return reinterpret_cast<OpenFile*>(file)->descriptor;
}

int failed(int code) {
    fileError = errno;
    return errno == ENOSPC || errno == EDQUOT ? SQLITE_FULL : code;
}

// Bytes 18 and 19 tell how a database is to be written and read: 2 for write-ahead, 1 for plainly.
void readPlainly(char* bytes, int count, sqlite3_int64 at) {
    constexpr sqlite3_int64 kFirst = 18, kBehind = 20;
    for (sqlite3_int64 place = std::max(kFirst, at); place < std::min(kBehind, at + count); ++place)
        if (bytes[place - at] == 2) bytes[place - at] = 1;
}

int readFile(sqlite3_file* file, void* to, int count, sqlite3_int64 at) {
    auto* const bytes = static_cast<char*>(to);
    int got = 0;
    while (got < count) {
        const ssize_t part = uninterrupted([&] {
            return ::pread(descriptorOf(file), bytes + got, static_cast<std::size_t>(count - got), at + got);
        });
        if (part < 0) return failed(SQLITE_IOERR_READ);
        if (part == 0) break;
        got += static_cast<int>(part);
    }
    readPlainly(bytes, got, at);
    if (got == count) return SQLITE_OK;
    std::memset(bytes + got, 0, static_cast<std::size_t>(count - got));
    return SQLITE_IOERR_SHORT_READ;
}

int writeFile(sqlite3_file* file, const void* from, int count, sqlite3_int64 at) {
    std::string_view bytes(static_cast<const char*>(from), static_cast<std::size_t>(count));
    while (!bytes.empty()) {
        const ssize_t part =
            uninterrupted([&] { return ::pwrite(descriptorOf(file), bytes.data(), bytes.size(), at); });
        if (part == 0) errno = ENOSPC;
        if (part <= 0) return failed(SQLITE_IOERR_WRITE);
        bytes.remove_prefix(static_cast<std::size_t>(part));
        at += part;
    }
    return SQLITE_OK;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    const int cut = uninterrupted([&] { return ::ftruncate(descriptorOf(file), size); });
    return cut == 0 ? SQLITE_OK : failed(SQLITE_IOERR_TRUNCATE);
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size) {
    struct stat status {};
    if (::fstat(descriptorOf(file), &status) != 0) return failed(SQLITE_IOERR_FSTAT);
    *size = status.st_size;
    return SQLITE_OK;
}

int no(sqlite3_file* /*file*/, int* answer) {
    *answer = 0;
    return SQLITE_OK;
}

const sqlite3_io_methods kMethods = {
    1,
    [](sqlite3_file*) { return SQLITE_OK; },
    readFile,
    writeFile,
    truncateFile,
    [](sqlite3_file*, int) { return SQLITE_OK; },  // whoever opened it syncs it
    sizeOfFile,
    [](sqlite3_file*, int) { return SQLITE_OK; },
    [](sqlite3_file*, int) { return SQLITE_OK; },
    no,
    [](sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; },
    [](sqlite3_file*) { return 4096; },
    [](sqlite3_file*) { return 0; },
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

int openFile(sqlite3_vfs* /*vfs*/, const char* name, sqlite3_file* file, int flags, int* given) {
    file->pMethods = nullptr;
    if ((flags & SQLITE_OPEN_MAIN_DB) == 0 || name == nullptr) return SQLITE_CANTOPEN;
    const char* const end = name + std::strlen(name);
    auto* const opened = reinterpret_cast<OpenFile*>(file);
    if (std::from_chars(name, end, opened->descriptor).ptr != end) return SQLITE_CANTOPEN;
    file->pMethods = &kMethods;
    if (given != nullptr) *given = flags;
    return SQLITE_OK;
}

int fullName(sqlite3_vfs* /*vfs*/, const char* name, int size, char* full) {
    const std::size_t length = std::strlen(name) + 1;
    if (length > static_cast<std::size_t>(size)) return SQLITE_CANTOPEN;
    std::memcpy(full, name, length);
    return SQLITE_OK;
}

// What has nothing to do with files is the system's own way.
sqlite3_vfs makeVfs() {
    sqlite3_vfs vfs = *sqlite3_vfs_find(nullptr);
    vfs.iVersion = 2;
    vfs.szOsFile = sizeof(OpenFile);
    vfs.mxPathname = kLongestName;
    vfs.pNext = nullptr;
    vfs.zName = kName;
    vfs.xOpen = openFile;
    vfs.xDelete = [](sqlite3_vfs*, const char*, int) { return SQLITE_OK; };
    vfs.xAccess = [](sqlite3_vfs*, const char*, int, int* found) {
        *found = 0;
        return SQLITE_OK;
    };
    vfs.xFullPathname = fullName;
    return vfs;
}

}  // namespace

const char* descriptorVfs() {
    static sqlite3_vfs vfs = makeVfs();
    static const int registered = sqlite3_vfs_register(&vfs, 0);
    return registered == SQLITE_OK ? kName : nullptr;
}

int takeFileError() {
    return std::exchange(fileError, 0);
}

}  // namespace tessel
