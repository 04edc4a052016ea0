// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/memory_file.h"

#include <algorithm>
#include <ctime>
#include <sys/mman.h>
#include <unistd.h>

namespace tessel {

namespace {

constexpr std::size_t kMegabyte = 1 << 20;

double processorSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

std::string fuzzInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    const unsigned last = size > 1 ? data[size - 1] : 0U;
    if (last <= 0xE0 || last > 0xEF) return bytes;
    bytes.pop_back();
    const std::size_t whole = std::min(bytes.size() << (last - 0xE0), std::max(kMegabyte, bytes.size()));
    bytes.reserve(whole);
    while (bytes.size() < whole)
        bytes.append(bytes, 0, whole - bytes.size());
    return bytes;
}

TimeBudget::TimeBudget(std::size_t bytes)
    : allowed_(2 + 8 * static_cast<double>(bytes) / kMegabyte), begin_(processorSeconds()) {}

TimeBudget::~TimeBudget() {
    require(processorSeconds() - begin_ <= allowed_);
}

MemoryFile::MemoryFile(std::string_view bytes)
    : file_(::memfd_create("fuzz", MFD_CLOEXEC)), path_("/proc/self/fd/" + std::to_string(file_)) {
    require(::write(file_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
}

MemoryFile::~MemoryFile() {
    ::close(file_);
}

}  // namespace tessel
