// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/line_blocks.h"
#include "base/side_by_side.h"
#include "import/site_collector.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

namespace tessel {

/// How a file is read: in blocks of about so many bytes, by so many threads if it is larger than this.
struct ImportPlan {
    std::size_t blockSize = LineBlocks::kBlock;
    std::int64_t largestForOneThread = std::int64_t{16} << 20;  ///< bytes
    std::size_t threads = usefulThreads();

    std::size_t threadsFor(std::int64_t fileSize) const {
        return fileSize > largestForOneThread ? std::max<std::size_t>(threads, 1) : 1;
    }
};

/// What a block has to know of the lines before it, where a reader needs to know nothing.
struct NothingCarried {
    bool isNothing() const { return true; }
};

/// Reads a file block by block, a Reader to each thread, and puts together in the order of the file what they
/// find: whatever the blocks and the threads, the same as if all lines were one block.
///
/// A Reader is made of Options. `Carried read(std::string_view text, const Carried& carried)` reads a block
/// of whole lines into its found(); `carried` is what the block before has left to it, as read() gave it, and
/// what it gives goes to the next one. Carried{} is what the first block of a file is given, and nearly
/// every other: a block is read on that guess while those before it are still being read, and again where it
/// was wrong (!isNothing()).
template <class Reader>
class BlockImport {
  public:
    using Carried = typename Reader::Carried;

    /// `first` is what the first block is given if it is not Carried{}.
    BlockImport(LineBlocks& file, SiteCollector& sites, Carried first = {})
        : file_(file), sites_(sites), carried_(std::move(first)) {}

    /// Reads the file to its end; gives what the last block left. Throws what LineBlocks, a Reader or the
    /// collector throws.
    template <class Options>
    Carried run(const ImportPlan& plan, const Options& options) {
        const std::size_t threads = plan.threadsFor(file_.fileSize());
        while (parts_.size() < threads)
            parts_.emplace_back(options);
        doSideBySide(threads, {[this](std::size_t thread) { return take(parts_[thread]); },
                               [this](std::size_t thread) { read(parts_[thread]); },
                               [this](std::size_t thread) { put(parts_[thread]); }});
        return std::move(carried_);
    }

  private:
    // What a thread works on.
    struct Part {
        template <class Options>
        explicit Part(const Options& options) : reader(options) {}

        void readWith(const Carried& carried) {
            left = reader.read(block.text(), carried);
            isRead = true;
        }

        Reader reader;
        LineBlock block;
        std::int64_t number = 0;  // of the block
        Carried left;
        bool isRead = false, isGuess = false;
    };

    bool take(Part& part) {
        part.number = taken_++;
        return file_.next(part.block);
    }

    void read(Part& part) {
        part.isGuess = put_.load(std::memory_order_acquire) != part.number;
        part.isRead = false;
        if (!part.isGuess)
            part.readWith(carried_);
        else if (guessingPays())
            part.readWith({});
    }

    void put(Part& part) {
        const bool guessIsRight = carried_.isNothing();
        if (!guessIsRight) wrong_.fetch_add(1, std::memory_order_relaxed);
        if (!part.isRead || (part.isGuess && !guessIsRight)) part.readWith(carried_);
        sites_.add(part.reader.found());
        carried_ = std::move(part.left);
        put_.fetch_add(1, std::memory_order_release);
    }

    // Where records go on from line to line all through the file, reading twice would cost more than it
    // gains.
    bool guessingPays() const {
        return wrong_.load(std::memory_order_relaxed) * 8 <= put_.load(std::memory_order_relaxed) + 8;
    }

    LineBlocks& file_;
    SiteCollector& sites_;
    std::deque<Part> parts_;
    std::int64_t taken_ = 0;             // blocks
    std::atomic<std::int64_t> put_ = 0;  // blocks; who finds its own number here may look at carried_
    std::atomic<std::int64_t> wrong_ = 0;
    Carried carried_;
};

}  // namespace tessel
