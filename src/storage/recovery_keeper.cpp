// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/recovery_keeper.h"

#include <exception>
#include <utility>

namespace tessel {

RecoveryKeeper::RecoveryKeeper(std::string folder, std::function<void(const std::string& problem)> tell)
    : folder_(std::move(folder)), tell_(std::move(tell)) {}

template <typename Action>
void RecoveryKeeper::attempt(Action action) noexcept {
    try {
        action();
        if (std::exchange(isBehind_, false)) tell("");
    } catch (const std::exception& error) {
        if (!std::exchange(isBehind_, true)) tell(error.what());
    }
}

// There may be no memory to tell it.
void RecoveryKeeper::tell(const char* problem) noexcept {
    try {
        tell_(problem);
    } catch (const std::exception&) {
        return;
    }
}

void RecoveryKeeper::follow(JournalEvent event, const Journal& journal,
                            const SavedRecords& records) noexcept {
    const bool isChange = event == JournalEvent::kActed || event == JournalEvent::kMoved;
    keep(isChange, journal, records, [&] { file_->append(event, journal, records); });
}

void RecoveryKeeper::follow(const Journal& journal, const SavedRecords& records) noexcept {
    keep(true, journal, records, [&] { file_->append(records); });
}

// What cannot be appended is in a file that is begun with it, if that can be; of a survey that has been saved
// and not changed nothing needs to be kept.
template <typename Append>
void RecoveryKeeper::keep(bool isChange, const Journal& journal, const SavedRecords& records,
                          Append append) noexcept {
    if (!isKeeping() && isChange) return begin(journal, records);
    if (!isKeeping()) return;
    try {
        append();
        if (file_->hasOutgrown(journal)) renew(journal, records);
    } catch (const std::exception&) {
        isChange || !file_->isAside() ? begin(journal, records) : discard();
    }
}

void RecoveryKeeper::begin(const Journal& journal, const SavedRecords& records) noexcept {
    if (folder_.empty()) return;
    attempt([&] { exchange(journal, records); });
}

// Where there is no room the old one serves.
void RecoveryKeeper::renew(const Journal& journal, const SavedRecords& records) noexcept {
    try {
        exchange(journal, records);
    } catch (const std::exception&) {
        return;
    }
}

// The old one goes when the new one is whole, or before that where nobody needs it.
void RecoveryKeeper::exchange(const Journal& journal, const SavedRecords& records) {
    if (file_ && file_->isAside()) file_.reset();
    file_ = std::make_unique<RecoveryFile>(folder_, journal, records, file_.get());
}

void RecoveryKeeper::setAside() noexcept {
    try {
        if (isKeeping() && file_->isCostly()) return file_->setAside();
    } catch (const std::exception&) {
        // The next change begins another one.
    }
    discard();
}

void RecoveryKeeper::discard() noexcept {
    attempt([] {});
    if (!file_) return;
    file_->remove();
    file_.reset();
}

}  // namespace tessel
