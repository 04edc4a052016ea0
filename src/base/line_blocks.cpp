// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/line_blocks.h"

#include "base/file_system.h"
#include "base/run_time_error.h"
#include "base/text_lines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tessel {

namespace {

constexpr std::size_t kFirstBytes = std::size_t{1} << 16;

}  // namespace

LineBlocks::LineBlocks(const std::string& path, std::size_t blockSize)
    : path_(path), blockSize_(std::max<std::size_t>(blockSize, 1)), raw_(kFirstBytes) {
    const InputFile file = openInputFile(path);
    file_ = file.descriptor;
    state_ = file;
    try {
        readFirstBytes();
    } catch (...) {
        ::close(file_);
        throw;
    }
}

LineBlocks::~LineBlocks() {
    ::close(file_);
}

void LineBlocks::readFirstBytes() {
    std::size_t got = 1;
    for (; firstBytes_ < raw_.size() && got > 0; firstBytes_ += got)
        got = readFile(raw_.data() + firstBytes_, raw_.size() - firstBytes_);
    const TextEncoding encoding = recogniseTextEncoding(firstBytes());
    const std::size_t mark = byteOrderMarkLength(firstBytes());
    ready_ = firstBytes().substr(mark);
    if (encoding == TextEncoding::kBytes) return;
    decoder_.emplace(encoding);
    decoded_.resize(Utf16Decoder::mostBytes(raw_.size()));
    ready_ = {decoded_.data(), decoder_->decode(ready_, decoded_.data())};
}

bool LineBlocks::next(LineBlock& block) {
    beginWithRest(block);
    for (std::size_t before = block.length_; fill(block); before = block.length_)
        if (cutBehindLastLine(block, before)) return true;
    return block.length_ > 0;
}

// The room that one long line has taken is not kept for others.
void LineBlocks::beginWithRest(LineBlock& block) {
    constexpr std::size_t kMuch = 8;
    if (block.bytes_.size() > kMuch * std::max(blockSize_, rest_.size()))
        std::vector<char>().swap(block.bytes_);
    if (block.bytes_.size() < rest_.size()) block.bytes_.resize(rest_.size());
    std::copy(rest_.begin(), rest_.end(), block.bytes_.begin());
    block.length_ = rest_.size();
    rest_.clear();
}

// Up to the block's size, or half of that at a time where a line is longer; false when nothing has come.
bool LineBlocks::fill(LineBlock& block) {
    const std::size_t before = block.length_, size = std::max(blockSize_, before + (blockSize_ + 1) / 2);
    if (block.bytes_.size() < size) block.bytes_.resize(size);
    std::size_t got = 1;
    for (; block.length_ < size && got > 0; block.length_ += got)
        got = readSome(block.bytes_.data() + block.length_, size - block.length_);
    return block.length_ > before;
}

// Keeps what follows the last line for the next block; false when no line ends here. None does in the first
// `before` bytes, but that a CR that is the last byte may be half of a CR LF.
bool LineBlocks::cutBehindLastLine(LineBlock& block, std::size_t before) {
    const char* const begin = block.bytes_.data();
    const char* const end = begin + block.length_;
    const char* const from = begin + (before > 0 ? before - 1 : 0);
    const char* cut = end;
    if (cut[-1] == '\r') --cut;
    while (cut != from && !isLineEnd(cut[-1]))
        --cut;
    if (cut == from) return false;
    rest_.assign(cut, end);
    block.length_ = static_cast<std::size_t>(cut - begin);
    return true;
}

// The next bytes, `most` at most, none at the end of the file.
std::size_t LineBlocks::readSome(char* first, std::size_t most) {
    if (ready_.empty() && !decoder_) return readFile(first, most);
    if (ready_.empty() && !decodeMore()) return 0;
    const std::size_t length = std::min(most, ready_.size());
    std::memcpy(first, ready_.data(), length);
    ready_.remove_prefix(length);
    return length;
}

// Makes the next characters ready in UTF-8; false at the end of the file.
bool LineBlocks::decodeMore() {
    for (std::size_t got = 1; ready_.empty() && got > 0;) {
        got = readFile(raw_.data(), raw_.size());
        const std::string_view bytes(raw_.data(), got);
        ready_ = {decoded_.data(),
                  got > 0 ? decoder_->decode(bytes, decoded_.data()) : decoder_->finish(decoded_.data())};
    }
    return !ready_.empty();
}

// The next bytes as they stand in the file, `most` at most, none at its end.
std::size_t LineBlocks::readFile(char* first, std::size_t most) {
    const auto left = static_cast<std::size_t>(fileSize() - bytesRead_);
    if (left == 0) return 0;
    const ssize_t got = uninterrupted([&] { return ::read(file_, first, std::min(most, left)); });
    if (got < 0) throw RunTimeError::file(path_, "cannot be read", errno);
    if (got == 0) throw RunTimeError::file(path_, "cannot be read", "it has become shorter meanwhile");
    bytesRead_ += got;
    return static_cast<std::size_t>(got);
}

}  // namespace tessel
