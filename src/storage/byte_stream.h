// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tessel {

// Values as bytes in a file: numbers little-endian and by their bits, whatever the computer.

/// What is wrong with bytes that were to be values. Who knows the file tells it with its name.
class DamagedBytes : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Bytes come and go in pieces of this size, but for the last one.
inline constexpr std::size_t kPieceSize = std::size_t{1} << 20;

/// A number that tells bytes from others by chance only: of 64 bits, eight bytes at a time.
std::uint64_t checksumOf(std::string_view bytes);

template <typename T>
concept Number = std::is_arithmetic_v<T> && !std::same_as<T, bool>;

/// The bytes of a number in the order of a file, and back.
template <Number T>
T littleEndian(T value) {
    if constexpr (std::endian::native == std::endian::big && sizeof(T) > 1) {
        auto* const bytes = reinterpret_cast<unsigned char*>(&value);
        for (std::size_t i = 0; i < sizeof(T) / 2; ++i)
            std::swap(bytes[i], bytes[sizeof(T) - 1 - i]);
    }
    return value;
}

class ByteWriter {
  public:
    /// Hands the bytes to `take`, in pieces of kPieceSize and a last one that may be shorter.
    explicit ByteWriter(std::function<void(std::string_view piece)> take);

    void bytes(std::string_view bytes);
    template <Number T>
    void number(T value) {
        const T stored = littleEndian(value);
        bytes({reinterpret_cast<const char*>(&stored), sizeof stored});
    }
    template <Number T>
    void numbers(std::span<const T> values) {
        if constexpr (std::endian::native == std::endian::little)
            bytes({reinterpret_cast<const char*>(values.data()), values.size_bytes()});
        else
            for (const T value : values)
                number(value);
    }
    void count(std::size_t count) { number(static_cast<std::uint64_t>(count)); }

    /// Hands on what is left.
    void finish();

  private:
    std::function<void(std::string_view)> take_;
    std::string piece_;
};

/// Reads what a ByteWriter has written, and trusts nothing of it: before memory is taken for a list there are
/// bytes enough for it. Throws DamagedBytes.
class ByteReader {
  public:
    /// `next` gives the next piece, which stays until it is called again; in all there are `size` bytes.
    ByteReader(std::uint64_t size, std::function<std::string_view()> next);
    explicit ByteReader(std::string_view all);

    void bytes(char* to, std::size_t count);
    template <Number T>
    T number() {
        T value;
        bytes(reinterpret_cast<char*>(&value), sizeof value);
        return littleEndian(value);
    }
    template <Number T>
    void numbers(std::span<T> values) {
        bytes(reinterpret_cast<char*>(values.data()), values.size_bytes());
        if constexpr (std::endian::native == std::endian::big)
            for (T& value : values)
                value = littleEndian(value);
    }
    /// How many things follow, each of so many bytes at least.
    std::size_t count(std::size_t bytesEach);

    std::uint64_t remaining() const { return remaining_; }
    /// Requires that nothing is left.
    void finish() const;

  private:
    std::uint64_t remaining_;
    std::function<std::string_view()> next_;
    std::string_view piece_;
};

}  // namespace tessel
