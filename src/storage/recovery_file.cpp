// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/recovery_file.h"

#include "base/run_time_error.h"
#include "base/unfinished_file.h"
#include "storage/field_stream.h"
#include "storage/recovery_format.h"
#include "storage/work_stream.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace tessel {

namespace {

namespace fs = std::filesystem;
using namespace recovery_format;

// Locked, where the file system knows locks, before a program that starts took it for one left behind.
bool isOurs(int file, const std::string& path) {
    const int locked = uninterrupted([&] { return ::flock(file, LOCK_EX | LOCK_NB); });
    return (locked == 0 || errno != EWOULDBLOCK) && isStillNamed(file, path);
}

// A new file of this process, locked; -1, and the reason in errno, where the folder cannot take it.
int makeFile(const std::string& folder, std::string& path) {
    for (int number = 0;; ++number) {
        path = folder + "/" + kNameBegins + std::to_string(::getpid()) + "-" + std::to_string(number);
        const int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        const int file = uninterrupted([&] { return ::open(path.c_str(), flags, 0600); });
        if (file < 0 && errno == EEXIST) continue;
        if (file < 0 || isOurs(file, path)) return file;
        ::close(file);
    }
}

void makeFolder(const std::string& folder) {
    std::error_code error;
    fs::create_directories(fs::path(folder).parent_path(), error);
    if (fs::create_directory(folder, error)) fs::permissions(folder, fs::perms::owner_all, error);
}

}  // namespace

RecoveryFile::RecoveryFile(const std::string& folder, const Journal& journal, const SavedRecords& records) {
    makeFolder(folder);
    file_ = makeFile(folder, path_);
    if (file_ < 0) throw RunTimeError::file(path_, "cannot be written", errno);
    try {
        writeAll(kSignature);
        appendRecord(kWork, [&](ByteWriter& out) { writeWork(out, journal, records); });
        sync();
    } catch (...) {
        remove();
        ::close(file_);
        throw;
    }
}

RecoveryFile::~RecoveryFile() {
    ::close(file_);
}

void RecoveryFile::remove() {
    ::unlink(path_.c_str());
}

template <typename Write>
void RecoveryFile::appendRecord(std::uint8_t kind, Write write) {
    std::string last;  // held back until it is known whether more follows
    ByteWriter out([&](std::string_view piece) {
        if (!last.empty()) writeFrame(kind, last, false);
        last = piece;
    });
    write(out);
    out.finish();
    writeFrame(kind, last, true);
    end_ = ::lseek(file_, 0, SEEK_CUR);
}

void RecoveryFile::writeFrame(std::uint8_t kind, std::string_view piece, bool isLast) {
    writeAll(frameHead(kind, piece, isLast));
    writeAll(piece);
}

void RecoveryFile::writeAll(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = uninterrupted([&] { return ::write(file_, bytes.data(), bytes.size()); });
        if (written <= 0) fail(written < 0 ? errno : ENOSPC);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void RecoveryFile::sync() {
    if (uninterrupted([&] { return ::fsync(file_); }) != 0) fail(errno);
}

void RecoveryFile::fail(int reason) {
    if (uninterrupted([&] { return ::ftruncate(file_, end_); }) == 0) ::lseek(file_, end_, SEEK_SET);
    throw RunTimeError::file(path_, "cannot be written", reason);
}

// An act that is too large for the journal is forgotten already: all is written then.
void RecoveryFile::appendAct(const Journal& journal, const SavedRecords& records) {
    if (journal.position() == 0)
        appendRecord(kWork, [&](ByteWriter& out) { writeWork(out, journal, records); });
    else
        appendRecord(kAct, [&](ByteWriter& out) {
            writeWaitingAct(out, journal.act(journal.position() - 1), journal.survey());
        });
    sync();
}

void RecoveryFile::append(JournalEvent event, const Journal& journal, const SavedRecords& records) {
    switch (event) {
        case JournalEvent::kActed:
            return appendAct(journal, records);
        case JournalEvent::kMoved:
            appendRecord(kMove, [&](ByteWriter& out) { out.count(journal.actsInForce()); });
            return sync();
        case JournalEvent::kCounted:
            return appendRecord(kCounts, [&](ByteWriter& out) { writeCounts(out, journal); });
        case JournalEvent::kNoted:
            return appendRecord(kNotes, [&](ByteWriter& out) { writeNotes(out, journal); });
    }
}

void RecoveryFile::append(const SavedRecords& records) {
    appendRecord(kRecords, [&](ByteWriter& out) { FieldWriter{out}(records); });
}

}  // namespace tessel
