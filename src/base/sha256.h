// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessel {

/// The SHA-256 digest (FIPS 180-4) of bytes that come one part after the other.
class Sha256 {
  public:
    void add(std::string_view bytes);

    /// The digest of all bytes so far as 64 digits, 0 to f; more bytes may be added afterwards.
    std::string digest() const;

  private:
    using Words = std::array<std::uint32_t, 8>;
    static constexpr std::size_t kBlock = 64;

    static void takeBlock(Words& state, const char* block);

    Words state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                    0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<char, kBlock> rest_{};  // what does not fill a block yet, length_ % kBlock bytes of it
    std::uint64_t length_ = 0;
};

/// The digest of a file's bytes as they stand in it, read in blocks. Of a file that grows meanwhile, what was
/// there when it was opened. Throws RunTimeError with path and reason when it is no file that holds its bytes
/// (input_file.h), cannot be read, or becomes shorter.
std::string sha256OfFile(const std::string& path);

}  // namespace tessel
