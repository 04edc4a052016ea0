// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tessel {

// What adjustments have made of the readings that an import brought.

/// reading = factor * imported reading + shift (mS/m)
struct AppliedAdjustment {
    double factor = 1;
    double shift = 0;
    bool operator==(const AppliedAdjustment&) const = default;

    /// The same with `next` done afterwards.
    AppliedAdjustment then(const AppliedAdjustment& next) const {
        return {factor * next.factor, shift * next.factor + next.shift};
    }
};

/// The same of both readings.
struct AppliedAdjustments {
    AppliedAdjustment em1, em2;
    bool operator==(const AppliedAdjustments&) const = default;

    AppliedAdjustments then(const AppliedAdjustments& next) const {
        return {em1.then(next.em1), em2.then(next.em2)};
    }
};

/// What the user is told of one step: "Done: 2.5 has been added to every EM1 reading." Empty for a step that
/// is none.
std::string stepText(const AppliedAdjustments& step);

/// What the user is told of all of them together, EM2 only with two readings:
/// "Since the import: EM1 x 1.5 + 4, EM2 unchanged".
std::string totalsText(const AppliedAdjustments& applied, bool two);

}  // namespace tessel
