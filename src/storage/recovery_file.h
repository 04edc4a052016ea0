// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/saved_work.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace tessel {

// The recovery file: all of the work as it was once, and behind it one record for everything that has
// happened since. docs/survey-file.md describes it. It is locked as long as the program lives that writes it.

/// One such file that is being written. Every failure throws RunTimeError with path and reason; the file then
/// ends with the last record that is whole.
class RecoveryFile {
  public:
    /// Makes one of a name of its own in the folder, with the work as it is now, on the disk; or in the place
    /// of another one, in one step.
    RecoveryFile(std::string folder, const Journal& journal, const SavedRecords& records,
                 RecoveryFile* inPlaceOf = nullptr);
    /// Closes it; it stays, unless it is set aside.
    ~RecoveryFile();
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    /// What has just happened to the journal. An act and a move are on the disk when this returns.
    void append(JournalEvent event, const Journal& journal, const SavedRecords& records);
    void append(const SavedRecords& records);

    /// Has it offered to nobody unless something that changes the work is appended: all of it has been saved.
    /// It goes with this object then.
    void setAside();
    bool isAside() const { return isAside_; }
    /// Whether it would take long to write all of the work anew, but no longer than to go on with this file.
    bool isCostly() const;
    static constexpr long kCostly = 1L << 24;  ///< bytes
    /// Whether the file is much larger than all of the work.
    bool hasOutgrown(const Journal& journal) const;

    void remove();

  private:
    std::string nameOf(const char* begins, int number) const;
    void takePlace(RecoveryFile* of);
    void rename(const char* begins);
    void appendAct(const Journal& journal, const SavedRecords& records);
    template <typename Write>
    void appendRecord(std::uint8_t kind, Write write);
    void writeFrame(std::uint8_t kind, std::string_view piece, bool isLast);
    void writeAll(std::string_view bytes);
    void sync();
    [[noreturn]] void fail(int reason);

    std::string folder_;
    std::string path_;
    int file_ = -1;
    long firstEnd_ = 0;  // of the first record
    long end_ = 0;       // of the last whole one
    bool isAside_ = true;
};

/// A recovery file that a program has left behind. Held, no other program takes it.
class LeftWork {
  public:
    LeftWork(LeftWork&& other) noexcept;
    ~LeftWork();
    LeftWork& operator=(LeftWork&&) = delete;

    /// The survey and its history after the last thing that was recorded whole; of its acts the oldest are
    /// forgotten above so many bytes, unless a way back leads to one of them. `isAll` is false where there is
    /// more that is whole and cannot be done. Throws RunTimeError when the file cannot be read or nothing in
    /// it is whole.
    SavedWork read(std::size_t mostBytes = SIZE_MAX, bool* isAll = nullptr) const;
    void remove();

  private:
    friend std::deque<LeftWork> findLeftWork(const std::string& folder);
    LeftWork(std::string path, int file) : path_(std::move(path)), file_(file) {}
    bool replay(SavedWork& work) const;

    std::string path_;
    int file_;
};

/// The recovery files in a folder that no living program holds and that hold any work, the last one first;
/// others are removed, and those that were set aside. Looks at how they begin only, however large they are.
/// Fails silently.
std::deque<LeftWork> findLeftWork(const std::string& folder);

}  // namespace tessel
