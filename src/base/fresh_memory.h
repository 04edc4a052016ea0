// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

namespace tessel {

/// Has the system provide memory that is about to be written for the first time, all pages of it at once: one
/// by one, each as it is touched, they take half as long again. For little memory, or on a system that cannot
/// do so, nothing happens. True if all of it is there.
bool provideMemory(void* first, std::size_t bytes) noexcept;

/// The same for the entries by which `values` is about to grow without moving.
template <class T>
void provideMemoryFor(std::vector<T>& values, std::size_t size) noexcept {
    if (size > values.size() && size <= values.capacity())
        provideMemory(values.data() + values.size(), (size - values.size()) * sizeof(T));
}

}  // namespace tessel
