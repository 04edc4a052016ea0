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
        if (std::exchange(isBehind_, false)) tell_({});
    } catch (const std::exception& error) {
        if (!std::exchange(isBehind_, true)) tell_(error.what());
    }
}

void RecoveryKeeper::follow(JournalEvent event, const Journal& journal,
                            const SavedRecords& records) noexcept {
    if (folder_.empty()) return;
    const bool isChange = event == JournalEvent::kActed || event == JournalEvent::kMoved;
    if (isKeeping())
        attempt([&] { file_->append(event, journal, records); });
    else if (isChange)
        begin(journal, records);
}

void RecoveryKeeper::follow(const SavedRecords& records) noexcept {
    if (isKeeping()) attempt([&] { file_->append(records); });
}

// The old one goes when the new one is whole.
void RecoveryKeeper::begin(const Journal& journal, const SavedRecords& records) noexcept {
    if (folder_.empty()) return;
    attempt([&] {
        auto file = std::make_unique<RecoveryFile>(folder_, journal, records);
        file_.swap(file);
        if (file) file->remove();
    });
}

void RecoveryKeeper::setAside() noexcept {
    try {
        if (isKeeping() && !file_->hasGrown()) return file_->setAside();
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
