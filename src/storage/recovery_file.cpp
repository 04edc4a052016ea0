// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/recovery_file.h"

#include "base/file_system.h"
#include "base/run_time_error.h"
#include "storage/field_stream.h"
#include "storage/recovery_format.h"
#include "storage/work_stream.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>
#include <utility>

namespace tessel {

namespace {

namespace fs = std::filesystem;
using namespace recovery_format;

void makeFolder(const std::string& folder) {
    std::error_code error;
    fs::create_directories(fs::path(folder).parent_path(), error);
    if (fs::create_directory(folder, error)) fs::permissions(folder, fs::perms::owner_all, error);
}

// About how many bytes all of the work takes.
off_t sizeOf(const Journal& journal) {
    return bytesOf(journal.survey()) + static_cast<off_t>(journal.bytes());
}

}  // namespace

// Nobody finds half a file: it is set aside until it is whole.
RecoveryFile::RecoveryFile(std::string folder, const Journal& journal, const SavedRecords& records,
                           RecoveryFile* inPlaceOf)
    : folder_(std::move(folder)) {
    makeFolder(folder_);
    file_ = makeLockedFile([this](int number) { return nameOf(kAsideNameBegins, number); }, 0600, path_);
    if (file_ < 0) throw RunTimeError::file(path_, "cannot be written", errno);
    try {
        // Without a lock another program would take it for one left behind.
        if (!lockFile(file_)) fail(errno);
        if (!hasRoomFor(file_, sizeOf(journal))) fail(ENOSPC);
        writeAll(kSignature);
        appendRecord(kWork, [&](ByteWriter& out) { writeWork(out, journal, records); });
        sync();
        firstEnd_ = end_;
        takePlace(inPlaceOf);
    } catch (...) {
        remove();
        ::close(file_);
        throw;
    }
}

std::string RecoveryFile::nameOf(const char* begins, int number) const {
    return folder_ + "/" + begins + std::to_string(::getpid()) + "-" + std::to_string(number);
}

RecoveryFile::~RecoveryFile() {
    if (isAside_) remove();
    ::close(file_);
}

// When somebody has taken it away its name may be another's.
void RecoveryFile::remove() {
    if (isStillNamed(file_, path_)) ::unlink(path_.c_str());
}

bool RecoveryFile::isCostly() const {
    return firstEnd_ > kCostly && end_ <= 2 * firstEnd_;
}

bool RecoveryFile::hasOutgrown(const Journal& journal) const {
    return end_ > 4 * std::max<off_t>(firstEnd_, sizeOf(journal));
}

void RecoveryFile::setAside() {
    if (!isAside_) rename(kAsideNameBegins);
    isAside_ = true;
}

// Whoever is killed before that has not done anything yet.
void RecoveryFile::takePlace(RecoveryFile* of) {
    if (!isAside_) return;
    if (of != nullptr && isStillNamed(of->file_, of->path_)) {
        std::string name = of->path_;
        if (std::rename(path_.c_str(), name.c_str()) != 0) fail(errno);
        path_.swap(name);
    } else {
        rename(kNameBegins);
    }
    isAside_ = false;
    if (!syncNames(folder_, file_)) fail(errno);
}

// Never in the place of another program's.
void RecoveryFile::rename(const char* begins) {
    for (int number = 0;; ++number) {
        std::string name = nameOf(begins, number);
        if (renameToNew(path_, name)) return path_.swap(name);
        if (errno != EEXIST) throw RunTimeError::file(path_, "cannot be renamed", errno);
    }
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

// Whoever tidies the folder up may have taken it away.
void RecoveryFile::sync() {
    if (uninterrupted([&] { return ::fsync(file_); }) != 0) fail(errno);
    if (!isStillNamed(file_, path_)) fail(ENOENT);
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
            appendAct(journal, records);
            return takePlace(nullptr);
        case JournalEvent::kMoved:
            appendRecord(kMove, [&](ByteWriter& out) { out.count(journal.actsInForce()); });
            sync();
            return takePlace(nullptr);
        case JournalEvent::kCounted:
            return appendRecord(kCounts, [&](ByteWriter& out) { writeCounts(out, journal); });
        case JournalEvent::kNoted:
            return appendRecord(kNotes, [&](ByteWriter& out) { writeNotes(out, journal); });
    }
}

void RecoveryFile::append(const SavedRecords& records) {
    appendRecord(kRecords, [&](ByteWriter& out) { FieldWriter{out}(records); });
    takePlace(nullptr);
}

}  // namespace tessel
