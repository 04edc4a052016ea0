// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/failing_allocations.h"

namespace tessel {

namespace {

constexpr long kUnlimited = -1;
thread_local long successesLeft = kUnlimited;
thread_local bool failed = false;

void* allocate(std::size_t size) {
    if (successesLeft == 0) {
        failed = true;
        throw std::bad_alloc();
    }
    if (successesLeft > 0) --successesLeft;
    if (void* const memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

}  // namespace

FailingAllocations::FailingAllocations(long successes) {
    failed = false;
    successesLeft = successes;
}

FailingAllocations::~FailingAllocations() {
    successesLeft = kUnlimited;
}

bool FailingAllocations::hasFailed() const {
    return failed;
}

}  // namespace tessel

using namespace tessel;

void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
