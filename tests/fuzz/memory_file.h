// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessel {

/// A regular file in memory, so that a reader can be fed at full speed.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    int file_ = -1;
    std::string path_;
};

/// A path at which no file can be created.
inline constexpr const char* kNoSuchFolder = "/proc/nowhere/error_log.dat";

/// Takes small numbers off the front of a fuzzer's bytes; 0 when there are none left.
class FuzzBytes {
  public:
    /// `bytes` must outlive it.
    explicit FuzzBytes(std::string_view bytes) : rest_(bytes) {}

    unsigned byte() {
        if (rest_.empty()) return 0;
        const auto value = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return value;
    }
    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

/// What a target works on: a fuzzer's bytes, but of 0xE1 to 0xEF as the last byte it takes the others 2, 4, 8
/// and so on times, up to 1 MB in all. So a fuzzer needs a few bytes only to find what costs by the square.
std::string fuzzInput(const std::uint8_t* data, std::size_t size);

/// Ends the process, as require does, when its life has taken more of the processor than two seconds and
/// eight for each megabyte: some ten times what a release needs, for the sanitizers' sake.
class TimeBudget {
  public:
    explicit TimeBudget(std::size_t bytes);
    ~TimeBudget();
    TimeBudget(const TimeBudget&) = delete;
    TimeBudget& operator=(const TimeBudget&) = delete;

  private:
    double allowed_, begin_;
};

/// Ends the process, so that the fuzzer keeps the bytes, when something that must hold does not.
inline void require(bool holds) {
    if (!holds) __builtin_trap();
}

}  // namespace tessel
