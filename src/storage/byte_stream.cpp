// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/byte_stream.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tessel {

std::uint64_t checksumOf(std::string_view bytes) {
    constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15U;
    std::uint64_t sum = bytes.size() * kPrime;
    const auto add = [&](std::uint64_t word) {
        sum = (sum ^ littleEndian(word)) * kPrime;
        sum ^= sum >> 29;
    };
    for (; bytes.size() >= sizeof(std::uint64_t); bytes.remove_prefix(sizeof(std::uint64_t))) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data(), sizeof word);
        add(word);
    }
    std::uint64_t rest = 0;
    std::memcpy(&rest, bytes.data(), bytes.size());
    add(rest);
    return sum;
}

ByteWriter::ByteWriter(std::function<void(std::string_view piece)> take) : take_(std::move(take)) {}

void ByteWriter::bytes(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t part = std::min(bytes.size(), kPieceSize - piece_.size());
        piece_.append(bytes.substr(0, part));
        bytes.remove_prefix(part);
        if (piece_.size() == kPieceSize) finish();
    }
}

void ByteWriter::finish() {
    if (!piece_.empty()) take_(piece_);
    piece_.clear();
}

ByteReader::ByteReader(std::uint64_t size, std::function<std::string_view()> next)
    : remaining_(size), next_(std::move(next)) {}

ByteReader::ByteReader(std::string_view all) : remaining_(all.size()), piece_(all) {}

void ByteReader::bytes(char* to, std::size_t count) {
    if (count > remaining_) throw DamagedBytes("it ends too early");
    remaining_ -= count;
    while (count > 0) {
        if (piece_.empty() && next_) piece_ = next_();
        if (piece_.empty()) throw DamagedBytes("a part of it is missing");
        const std::size_t part = std::min(count, piece_.size());
        std::memcpy(to, piece_.data(), part);
        piece_.remove_prefix(part);
        to += part;
        count -= part;
    }
}

std::size_t ByteReader::count(std::size_t bytesEach) {
    const auto count = number<std::uint64_t>();
    if (count > remaining_ / bytesEach) throw DamagedBytes("a list in it is longer than the file");
    return static_cast<std::size_t>(count);
}

void ByteReader::finish() const {
    if (remaining_ > 0) throw DamagedBytes("something stands behind its end");
}

}  // namespace tessel
