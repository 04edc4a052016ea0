// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __x86_64__
#include <emmintrin.h>
#endif

namespace tessel {

// Line ends are CR LF, LF or CR, mixed too; the last line of a text may lack one.

inline bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

namespace text_lines_detail {
// A word whose lowest set bit marks the first byte of `word` that is `wanted`; 0 if there is none.
constexpr std::uint64_t markBytes(std::uint64_t word, char wanted) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    const std::uint64_t zeroWhereWanted = word ^ (kOnes * static_cast<unsigned char>(wanted));
    return (zeroWhereWanted - kOnes) & ~zeroWhereWanted & (kOnes << 7);
}

#ifdef __x86_64__
// A bit for each of 16 bytes, from the lowest on, that is a line end.
inline unsigned markLineEnds(const char* bytes) {
    __m128i all;
    std::memcpy(&all, bytes, sizeof all);
    const __m128i ends =
        _mm_or_si128(_mm_cmpeq_epi8(all, _mm_set1_epi8('\n')), _mm_cmpeq_epi8(all, _mm_set1_epi8('\r')));
    return static_cast<unsigned>(_mm_movemask_epi8(ends));
}
#endif
}  // namespace text_lines_detail

/// The first CR or LF, or `last`. Both are looked for in one pass, 16 or eight bytes at a time: two searches
/// would read every line twice, and in a file of CRs alone the search for an LF would run on through the
/// text.
inline const char* findLineEnd(const char* first, const char* last) {
    using namespace text_lines_detail;
#ifdef __x86_64__
    for (; last - first >= 16; first += 16)
        if (const unsigned marks = markLineEnds(first); marks != 0) return first + std::countr_zero(marks);
#endif
    for (; last - first >= 8; first += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, first, sizeof word);
        const std::uint64_t marks = markBytes(word, '\n') | markBytes(word, '\r');
        if (marks == 0) continue;
        if constexpr (std::endian::native == std::endian::little) return first + std::countr_zero(marks) / 8;
        break;
    }
    while (first != last && !isLineEnd(*first))
        ++first;
    return first;
}

/// The lines of a text in memory.
class TextLines {
  public:
    /// A last line without end is given unless the text is `cutOff` there.
    explicit TextLines(std::string_view text, bool cutOff = false)
        : position_(text.data()), end_(text.data() + text.size()), cutOff_(cutOff) {}

    /// Gives the next line, without its end; false when there is none.
    bool next(std::string_view& line) {
        const char* const stop = findLineEnd(position_, end_);
        if (stop == end_ && (cutOff_ || position_ == end_)) return false;
        line = {position_, static_cast<std::size_t>(stop - position_)};
        passOver(stop);
        return true;
    }

    /// What has not been given yet.
    std::string_view rest() const { return {position_, static_cast<std::size_t>(end_ - position_)}; }

    /// Goes on behind a line that ends at `stop`, in the rest, as if it had been given.
    void passOver(const char* stop) {
        position_ = stop == end_ ? end_ : stop + 1;
        if (position_ != end_ && stop[0] == '\r' && stop[1] == '\n') ++position_;
    }

  private:
    const char* position_;
    const char* end_;
    bool cutOff_;
};

}  // namespace tessel
