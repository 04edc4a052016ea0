// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/side_by_side.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <limits>
#include <mutex>
#include <thread>
#include <vector>

namespace tessel {

namespace {

constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();

// What the threads share.
class Pieces {
  public:
    explicit Pieces(const OrderedWork& work) : work_(work) {}

    // What each thread does.
    void run(std::size_t thread) noexcept {
        std::int64_t piece = kNone;
        try {
            while (take(thread, piece)) {
                work_.work(thread);
                if (!waitForTurn(piece)) return;
                work_.put(thread);
                endTurn();
            }
        } catch (...) {
            fail(piece, std::current_exception());
        }
    }

    // When all threads have ended.
    void rethrow() const {
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    bool take(std::size_t thread, std::int64_t& piece) {
        const std::scoped_lock lock(taking_);
        if (ended_ || hasFailed()) return false;
        piece = taken_++;
        ended_ = true;  // unless there is one, and so when the step throws
        ended_ = !work_.take(thread);
        return !ended_;
    }

    bool hasFailed() {
        const std::scoped_lock lock(order_);
        return failed_ != kNone;
    }

    // False when an earlier piece will never be put away.
    bool waitForTurn(std::int64_t piece) {
        std::unique_lock lock(order_);
        changed_.wait(lock, [&] { return turn_ == piece || failed_ < piece; });
        return failed_ > piece;
    }

    void endTurn() {
        {
            const std::scoped_lock lock(order_);
            ++turn_;
        }
        changed_.notify_all();
    }

    void fail(std::int64_t piece, const std::exception_ptr& failure) {
        {
            const std::scoped_lock lock(order_);
            if (piece > failed_) return;
            failed_ = piece;
            failure_ = failure;
        }
        changed_.notify_all();
    }

    const OrderedWork& work_;

    std::mutex taking_;  // held while a piece is taken
    std::int64_t taken_ = 0;
    bool ended_ = false;

    std::mutex order_;  // guards what follows
    std::condition_variable changed_;
    std::int64_t turn_ = 0;  // the piece that is put away next
    std::int64_t failed_ = kNone;
    std::exception_ptr failure_;
};

// Threads that cannot be had are no failure: fewer do the same.
void start(std::vector<std::jthread>& threads, std::size_t count, Pieces& pieces) {
    try {
        for (std::size_t thread = 1; thread < count; ++thread)
            threads.emplace_back([&pieces, thread] { pieces.run(thread); });
    } catch (const std::exception&) {
        return;
    }
}

}  // namespace

void doSideBySide(std::size_t threads, const OrderedWork& work) {
    Pieces pieces(work);
    {
        std::vector<std::jthread> others;
        start(others, threads, pieces);
        pieces.run(0);
    }
    pieces.rethrow();
}

std::size_t usefulThreads() {
    constexpr std::size_t kMost = 8;
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMost);
}

}  // namespace tessel
