// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/number_shape.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <string_view>

namespace tessel {

/// The shapes that numbers in a column of a file have had lately. Few are enough: readings differ in sign and
/// in digits before the point, and in a file of fixed columns in the blanks that make up for these.
class ColumnShapes {
  public:
    /// What follows are numbers in this text.
    void beginText(std::string_view text) {
        constexpr std::size_t kAround = 2 * NumberShape::kMost;
        from_ = text.data() + std::min(text.size(), NumberShape::kMost);
        places_ = text.size() > kAround ? text.size() - kAround : 0;
        learnt_ = 0;
    }

    /// Whether shapes are of use for a number that begins at `first`: not so near to an end of the text that
    /// the bytes around it cannot be read; and nowhere in the rest of a text in which so many numbers have a
    /// shape of their own that looking for it costs more than it gains.
    bool areOfUseAt(const char* first) const { return static_cast<std::size_t>(first - from_) < places_; }

    /// Fills `value` with the number that begins at `first` and has a shape that is known, and gives where it
    /// ends; null when there is none, or shapes are of no use there. `mayHave(length)` tells whether the
    /// number may be so long; no length is more than NumberShape::kMost.
    template <class MayHave>
    const char* take(const char* first, double& value, MayHave mayHave) {
        if (!areOfUseAt(first)) return nullptr;
        const char* const end = first + latest_.length();
        if (!mayHave(latest_.length()) || !latest_.fits(end)) return takeOther(first, value, mayHave);
        value = latest_.value(end);
        return end;
    }

    /// Takes the shape of a text that has none that is known, if it is a number with a shape, in the place of
    /// one that has been known for long. Requires that shapes are of use at `first`.
    bool learn(const char* first, const char* last, char decimalSign = '.') {
        if (++learnt_ >= kMostLearnt) places_ = 0;
        NumberShape& oldest = shapes_[learnt_ % shapes_.size()];
        if (!oldest.learn(first, last, decimalSign)) return false;
        latest_ = oldest;
        return true;
    }

    /// The value of the text of which the shape was learnt last; `end` is its end.
    double valueOfLearnt(const char* end) const { return latest_.value(end); }

  private:
    static constexpr std::size_t kMostLearnt = 100;

    // All of them are looked at, for which of them it is cannot be foreseen: a wrong guess costs more.
    template <class MayHave>
    [[gnu::noinline]] const char* takeOther(const char* first, double& value, MayHave mayHave) {
        unsigned fitting = 0, bit = 1;
        for (const NumberShape& shape : shapes_) {
            const bool fits = shape.fits(first + shape.length());
            fitting |= mayHave(shape.length()) && fits ? bit : 0;
            bit *= 2;
        }
        if (fitting == 0) return nullptr;
        latest_ = shapes_[static_cast<std::size_t>(std::countr_zero(fitting))];
        value = latest_.value(first + latest_.length());
        return first + latest_.length();
    }

    NumberShape latest_;
    std::array<NumberShape, 8> shapes_;
    std::size_t learnt_ = 0;  // in this text, or tried to
    const char* from_ = nullptr;
    std::size_t places_ = 0;  // behind from_ at which shapes are of use
};

}  // namespace tessel
