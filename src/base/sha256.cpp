// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/sha256.h"

#include "base/file_system.h"
#include "base/input_file.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <functional>
#include <unistd.h>
#include <vector>

namespace tessel {

namespace {

constexpr std::size_t kReadAtOnce = std::size_t{1} << 18;

// The first 32 bits of the fractions of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> kRounds = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::uint32_t wordAt(const char* bytes) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i)
        word = word << 8 | static_cast<unsigned char>(bytes[i]);
    return word;
}

std::uint32_t sigma(std::uint32_t x, int first, int second, int third) {
    return std::rotr(x, first) ^ std::rotr(x, second) ^ std::rotr(x, third);
}

std::uint32_t shiftedSigma(std::uint32_t x, int first, int second, int shift) {
    return std::rotr(x, first) ^ std::rotr(x, second) ^ x >> shift;
}

std::array<std::uint32_t, 64> scheduleOf(const char* block) {
    std::array<std::uint32_t, 64> w{};
    for (std::size_t t = 0; t < 16; ++t)
        w[t] = wordAt(block + 4 * t);
    for (std::size_t t = 16; t < 64; ++t)
        w[t] = shiftedSigma(w[t - 2], 17, 19, 10) + w[t - 7] + shiftedSigma(w[t - 15], 7, 18, 3) + w[t - 16];
    return w;
}

}  // namespace

void Sha256::takeBlock(Words& state, const char* block) {
    const auto w = scheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t t = 0; t < 64; ++t) {
        const std::uint32_t first = h + sigma(e, 6, 11, 25) + ((e & f) ^ (~e & g)) + kRounds[t] + w[t];
        const std::uint32_t second = sigma(a, 2, 13, 22) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const Words added = {a, b, c, d, e, f, g, h};
    std::transform(state.begin(), state.end(), added.begin(), state.begin(), std::plus<>());
}

void Sha256::add(std::string_view bytes) {
    const std::size_t kept = length_ % kBlock;
    length_ += bytes.size();
    if (kept > 0) {
        const std::size_t taken = std::min(kBlock - kept, bytes.size());
        std::copy_n(bytes.data(), taken, rest_.data() + kept);
        bytes.remove_prefix(taken);
        if (kept + taken < kBlock) return;
        takeBlock(state_, rest_.data());
    }
    for (; bytes.size() >= kBlock; bytes.remove_prefix(kBlock))
        takeBlock(state_, bytes.data());
    std::copy(bytes.begin(), bytes.end(), rest_.begin());
}

// A bit of 1, zeros, and the number of bits in the last eight bytes of a block.
std::string Sha256::digest() const {
    const std::size_t kept = length_ % kBlock;
    std::array<char, 2 * kBlock> last{};
    std::copy_n(rest_.begin(), kept, last.begin());
    last[kept] = static_cast<char>(0x80);
    const std::size_t end = kept + 9 <= kBlock ? kBlock : 2 * kBlock;
    for (std::size_t i = 0; i < 8; ++i)
        last[end - 1 - i] = static_cast<char>(length_ * 8 >> (8 * i));
    Words state = state_;
    for (std::size_t at = 0; at < end; at += kBlock)
        takeBlock(state, last.data() + at);
    std::string digits;
    for (const std::uint32_t word : state)
        for (int shift = 28; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[word >> shift & 0xf];
    return digits;
}

namespace {

// Reads as much of the file as it had when it was opened.
std::string digestOfRest(const std::string& path, const InputFile& file) {
    Sha256 sha;
    std::vector<char> block(kReadAtOnce);
    for (std::int64_t left = file.size; left > 0;) {
        const auto most = std::min<std::size_t>(block.size(), static_cast<std::size_t>(left));
        const ssize_t got = uninterrupted([&] { return ::read(file.descriptor, block.data(), most); });
        if (got < 0) throw RunTimeError::file(path, "cannot be read", errno);
        if (got == 0) throw RunTimeError::file(path, "cannot be read", "it has become shorter meanwhile");
        sha.add({block.data(), static_cast<std::size_t>(got)});
        left -= got;
    }
    return sha.digest();
}

}  // namespace

std::string sha256OfFile(const std::string& path) {
    struct Closer {
        int file;
        ~Closer() { ::close(file); }
    };
    const InputFile file = openInputFile(path);
    const Closer closer{file.descriptor};
    return digestOfRest(path, file);
}

}  // namespace tessel
