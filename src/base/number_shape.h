// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __x86_64__
#include <emmintrin.h>
#endif

namespace tessel {

/// How a number is written: where its digits, its sign, its decimal sign and blanks stand. Neighbouring lines
/// of a sensor file differ in their digits and in little else, so that a number mostly has the shape of the
/// one above it. Then nothing has to be looked for: one comparison of all bytes tells whether that is so, and
/// all digits become the value at once.
///
/// Exact: of a number with a shape the digits are at most 15, those that trailing blanks would hold counted
/// (as zeros, and as many decimals more), so that both the digits as a whole number (below 2^53) and the
/// power of ten are exact as Doubles; their quotient is rounded once, to the nearest Double.
///
/// On processors other than x86-64 no number has a shape.
class NumberShape {
  public:
    /// Longer texts have no shape, and as many bytes in front of a text's end must be there to be read.
    static constexpr std::size_t kMost = 16;

    /// That of a single digit.
    NumberShape();

    /// Takes the shape of a text: blanks or tabs, a sign or none, at least one digit and at most one decimal
    /// sign, blanks or tabs. False, with the shape left alone, for all other texts and for more digits than
    /// are exact.
    bool learn(const char* first, const char* last, char decimalSign = '.');

    /// How many bytes a text of this shape has.
    std::size_t length() const { return length_; }

    /// Whether the text of length() bytes in front of `end` has this shape. The kMost bytes in front of
    /// `end` must be readable.
    bool fits(const char* end) const;

    /// The value of that text. Requires that it fits.
    double value(const char* end) const;

  private:
    using Bytes = std::array<unsigned char, kMost>;  // of a text that ends behind them

    struct Parts;
    void takeParts(const char* first, const Parts& parts);

    // A 0 for each digit, and whatever else stands there.
    alignas(kMost) Bytes text_{};
    // By how much a byte may differ from that: 9 for a digit, 255 in front of the text.
    alignas(kMost) Bytes most_{};
    // 255 where digits before the decimal sign stand once its gap is closed, and where those behind it do.
    alignas(kMost) Bytes wholeDigits_{};
    alignas(kMost) Bytes decimals_{};
    double divisor_ = 1;  // what the digits are to be divided by, less than 0 for a negative number
    std::size_t length_ = 1;
};

namespace number_shape_detail {
#ifdef __x86_64__
inline __m128i bytesAt(const char* first) {
    __m128i bytes;
    std::memcpy(&bytes, first, sizeof bytes);
    return bytes;
}
inline __m128i load(const std::array<unsigned char, NumberShape::kMost>& aligned) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(aligned.data()));
}

/// The whole number whose digits are the 16 bytes: neighbours are joined to numbers of 2, 4 and 8 digits.
inline std::int64_t joinDigits(__m128i digits) {
    const __m128i first = _mm_and_si128(digits, _mm_set1_epi16(0xff)), second = _mm_srli_epi16(digits, 8);
    const __m128i twos = _mm_add_epi16(_mm_mullo_epi16(first, _mm_set1_epi16(10)), second);
    const __m128i fours = _mm_madd_epi16(twos, _mm_set1_epi32((1 << 16) + 100));
    const __m128i packed = _mm_packs_epi32(fours, fours);
    const __m128i eights = _mm_madd_epi16(packed, _mm_set1_epi32((1 << 16) + 10'000));
    const std::int64_t both = _mm_cvtsi128_si64(eights);
    return (both & 0xffffffff) * 100'000'000 + (both >> 32);
}
#endif
}  // namespace number_shape_detail

inline bool NumberShape::fits([[maybe_unused]] const char* end) const {
#ifdef __x86_64__
    using namespace number_shape_detail;
    const __m128i above = _mm_subs_epu8(_mm_xor_si128(bytesAt(end - kMost), load(text_)), load(most_));
    return _mm_movemask_epi8(_mm_cmpeq_epi8(above, _mm_setzero_si128())) == 0xffff;
#else
    return false;
#endif
}

inline double NumberShape::value([[maybe_unused]] const char* end) const {
#ifdef __x86_64__
    using namespace number_shape_detail;
    // The values of digits are left, and nothing of other bytes.
    const __m128i bytes = _mm_xor_si128(bytesAt(end - kMost), load(text_));
    const __m128i whole = _mm_and_si128(_mm_slli_si128(bytes, 1), load(wholeDigits_));
    const __m128i decimals = _mm_and_si128(bytes, load(decimals_));
    return static_cast<double>(joinDigits(_mm_or_si128(whole, decimals))) / divisor_;
#else
    return 0;
#endif
}

}  // namespace tessel
