// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>

namespace tessel {

/// Work that comes in pieces. They are taken one after the other and put away one after the other, in the
/// order in which they were taken; in between several threads work on one each. Every step is told the number
/// of its thread, from 0, and what a thread has it has alone.
struct OrderedWork {
    std::function<bool(std::size_t thread)> take;  ///< the next piece; false when there is none
    std::function<void(std::size_t thread)> work;  ///< on the piece taken last; side by side
    std::function<void(std::size_t thread)> put;   ///< that piece away
};

/// Does all of it on so many threads, this one among them, or on fewer where the system has no more; with one
/// none is started. As many pieces as there are threads are under way at most. All threads have ended when it
/// returns. When a step throws, the pieces before are put away, those behind are not, no further one is
/// taken, and the exception goes on to the caller: that of the earliest piece, where there are several.
void doSideBySide(std::size_t threads, const OrderedWork& work);

/// So many threads are worth while on this computer: one for each processor, eight at most.
std::size_t usefulThreads();

}  // namespace tessel
