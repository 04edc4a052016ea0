// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/fresh_memory.h"

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace tessel {

namespace {

// Of fewer pages the call costs more than it saves.
constexpr std::size_t kLeast = std::size_t{1} << 14;

// Known to the system since Linux 5.14, and to its headers later.
constexpr int kPopulateForWriting = 23;

}  // namespace

bool provideMemory(void* first, std::size_t bytes) noexcept {
    if (bytes < kLeast) return false;
    static const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t inPage = reinterpret_cast<std::uintptr_t>(first) % page;
    return ::madvise(static_cast<char*>(first) - inPage, bytes + inPage, kPopulateForWriting) == 0;
}

}  // namespace tessel
