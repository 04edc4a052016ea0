// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/recovery_file.h"

#include <functional>
#include <memory>
#include <string>

namespace tessel {

/// Keeps the work in a recovery file from its first change on. What fails never stops the work: it is told
/// once, and the whole is written anew, at once and with every act until that can be done.
class RecoveryKeeper {
  public:
    /// `tell` is called with what has failed, or with nothing when it works again.
    RecoveryKeeper(std::string folder, std::function<void(const std::string& problem)> tell);

    /// Something has happened to the journal, or to what is known beside it.
    void follow(JournalEvent event, const Journal& journal, const SavedRecords& records) noexcept;
    void follow(const Journal& journal, const SavedRecords& records) noexcept;
    /// From now on, whatever was in the file before.
    void begin(const Journal& journal, const SavedRecords& records) noexcept;
    /// The survey has been saved as it is: nothing needs to be kept until the next change. The file goes, but
    /// a large one is only set aside, and the next change goes on with it.
    void setAside() noexcept;
    /// Nothing needs to be kept until the next act.
    void discard() noexcept;

    bool isKeeping() const { return file_ != nullptr && !isBehind_; }

  private:
    template <typename Action>
    void attempt(Action action) noexcept;
    template <typename Append>
    void keep(bool isChange, const Journal& journal, const SavedRecords& records, Append append) noexcept;
    void renew(const Journal& journal, const SavedRecords& records) noexcept;
    void exchange(const Journal& journal, const SavedRecords& records);
    void tell(const char* problem) noexcept;

    std::string folder_;
    std::function<void(const std::string&)> tell_;
    std::unique_ptr<RecoveryFile> file_;
    bool isBehind_ = false;  // something is missing in the file
};

}  // namespace tessel
