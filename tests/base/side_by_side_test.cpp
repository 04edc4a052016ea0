// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/side_by_side.h"

#include "support/failing_allocations.h"

#include <atomic>
#include <latch>
#include <thread>

namespace tessel {

namespace {

// Pieces with the numbers from 0, and what is done to them.
class NumberedPieces {
  public:
    explicit NumberedPieces(int pieces) : pieces_(pieces) {}

    OrderedWork steps() {
        return {[this](std::size_t thread) { return take(thread); },
                [this](std::size_t thread) {
                    duringWork(held_[thread]);
                    ++worked;
                },
                [this](std::size_t thread) {
                    duringPut(held_[thread]);
                    put.push_back(held_[thread]);
                    --underWay_;
                }};
    }

    std::function<void(int piece)> duringTake = [](int) {};
    std::function<void(int piece)> duringWork = [](int) {};
    std::function<void(int piece)> duringPut = [](int) {};
    std::atomic<int> worked = 0;
    int mostUnderWay = 0;
    std::vector<int> put;

  private:
    bool take(std::size_t thread) {
        duringTake(taken_);
        if (taken_ == pieces_) return false;
        held_.at(thread) = taken_++;
        mostUnderWay = std::max(mostUnderWay, ++underWay_);
        return true;
    }

    const int pieces_;
    int taken_ = 0;
    std::array<int, 16> held_{};
    std::atomic<int> underWay_ = 0;
};

std::vector<int> numbersBelow(int end) {
    std::vector<int> numbers(static_cast<std::size_t>(end));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

// Counts the threads that have looked at it and live.
std::atomic<int> livingThreads = 0;
void beCounted(int) {
    struct Life {
        Life() { ++livingThreads; }
        ~Life() { --livingThreads; }
    };
    thread_local const Life life;
    static_cast<void>(&life);
}

std::string failureOf(std::size_t threads, NumberedPieces& pieces) {
    try {
        doSideBySide(threads, pieces.steps());
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

std::function<void(int)> throwingAt(int bad) {
    return [bad](int piece) {
        if (piece == bad) throw std::runtime_error(std::to_string(bad));
    };
}

}  // namespace

TEST(SideBySide, PutsPiecesAwayInTheOrderInWhichTheyWereTaken) {
    for (const std::size_t threads : {1U, 2U, 3U, 8U}) {
        NumberedPieces pieces(300);
        pieces.duringWork = [](int piece) {
            for (int i = 0; i < piece * 7919 % 13; ++i)
                std::this_thread::yield();
        };
        doSideBySide(threads, pieces.steps());
        EXPECT_EQ(pieces.put, numbersBelow(300)) << threads;
        EXPECT_EQ(pieces.worked, 300);
        EXPECT_LE(pieces.mostUnderWay, static_cast<int>(threads));
    }
}

TEST(SideBySide, WorksOnAPieceForEachThreadAtOnce) {
    constexpr int kThreads = 4;
    std::latch all(kThreads);
    NumberedPieces pieces(kThreads);
    pieces.duringWork = [&](int) { all.arrive_and_wait(); };
    doSideBySide(kThreads, pieces.steps());
    EXPECT_EQ(pieces.put, numbersBelow(kThreads));
}

TEST(SideBySide, StartsNoThreadForOne) {
    NumberedPieces pieces(5);
    const auto here = [self = std::this_thread::get_id()](int) {
        EXPECT_EQ(std::this_thread::get_id(), self);
    };
    pieces.duringTake = pieces.duringWork = pieces.duringPut = here;
    for (const std::size_t threads : {0U, 1U})
        doSideBySide(threads, pieces.steps());
    EXPECT_EQ(pieces.put, numbersBelow(5));
}

TEST(SideBySide, OfNothingDoesNothing) {
    NumberedPieces pieces(0);
    doSideBySide(4, pieces.steps());
    EXPECT_EQ(pieces.worked, 0);
}

TEST(SideBySide, HandsOnWhatAnyStepThrowsAfterThePiecesBefore) {
    for (const auto step :
         {&NumberedPieces::duringTake, &NumberedPieces::duringWork, &NumberedPieces::duringPut})
        for (const std::size_t threads : {1U, 2U, 5U})
            for (const int bad : {0, 1, 7, 19}) {
                NumberedPieces pieces(20);
                pieces.*step = throwingAt(bad);
                EXPECT_EQ(failureOf(threads, pieces), std::to_string(bad));
                EXPECT_EQ(pieces.put, numbersBelow(bad)) << threads;
            }
}

TEST(SideBySide, LeavesNoThreadBehind) {
    beCounted(0);
    const int before = livingThreads;
    for (const int bad : {-1, 3}) {
        std::latch all(3);
        NumberedPieces pieces(20);
        pieces.duringTake = [&](int piece) {
            beCounted(piece);
            if (piece < 3) all.count_down();
        };
        pieces.duringWork = [&](int piece) {
            all.wait();
            throwingAt(bad)(piece);
        };
        EXPECT_EQ(failureOf(3, pieces), bad < 0 ? "none" : "3");
        EXPECT_EQ(livingThreads, before);
    }
}

TEST(SideBySide, HandsOnTheFailureOfTheEarliestPiece) {
    std::latch both(2);
    NumberedPieces pieces(2);
    pieces.duringWork = [&](int piece) {
        both.arrive_and_wait();
        throw std::runtime_error(std::to_string(piece));
    };
    EXPECT_EQ(failureOf(2, pieces), "0");
    EXPECT_TRUE(pieces.put.empty());
}

TEST(SideBySide, DoesAllOfItWhereThereIsNoMemoryForAThread) {
    constexpr std::size_t kPieces = 20;
    std::size_t taken = 0, put = 0;
    const OrderedWork work{[&](std::size_t) { return taken < kPieces && ++taken > 0; }, [](std::size_t) {},
                           [&](std::size_t) { ++put; }};
    {
        const FailingAllocations none(0);
        doSideBySide(5, work);
    }
    EXPECT_EQ(put, kPieces);
}

TEST(SideBySide, TakesNoFurtherPieceAfterAFailure) {
    int taken = 0;
    NumberedPieces pieces(1000);
    pieces.duringTake = [&](int) { ++taken; };
    pieces.duringWork = throwingAt(0);
    EXPECT_EQ(failureOf(3, pieces), "0");
    EXPECT_LE(taken, 3);
}

TEST(SideBySide, IsWorthWhileForOneToEightThreads) {
    EXPECT_GE(usefulThreads(), 1U);
    EXPECT_LE(usefulThreads(), 8U);
    EXPECT_LE(usefulThreads(), std::max(1U, std::thread::hardware_concurrency()));
}

}  // namespace tessel
