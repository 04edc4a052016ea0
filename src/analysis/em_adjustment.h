// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/applied_adjustments.h"
#include "app/survey.h"
#include "journal/journal.h"

#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// Correction of the readings: a constant (mS/m) added to a column, or the columns scaled.

/// The smallest factor by which readings may be scaled.
inline constexpr double kSmallestScale = 0.01;

/// A constant added to the one or the other column of readings, or both columns scaled.
enum class AdjustmentKind { kAddToEM1, kAddToEM2, kScale };

/// An adjustment as it was typed; only the texts that belong to `kind` are looked at, and the factor of EM2
/// only on a survey with two readings.
struct AdjustmentRequest {
    AdjustmentKind kind = AdjustmentKind::kAddToEM1;
    std::string shift1, shift2;    ///< constants for EM1 and EM2 (mS/m)
    std::string factor1, factor2;  ///< scale factors for EM1 and EM2
};

/// An adjustment that has been checked and calculated, as far as it came: a factor of EM2 that is refused
/// leaves EM1 scaled.
struct Adjustment {
    AdjustmentKind kind = AdjustmentKind::kAddToEM1;
    struct Column {
        SiteColumn column;
        std::vector<double> values;
    };
    std::vector<Column> columns;    ///< those that change
    AppliedAdjustments applied;     ///< what is done to each reading
    double shift1 = 0, shift2 = 0;  ///< what goes to the running totals (mS/m)
    std::string_view refusal;       ///< why it ended early, in the words for the user; else empty
    std::exception_ptr
        failure;  ///< or because a reading or a total would not be finite, or for want of memory

    bool changesReadings() const { return !columns.empty(); }
};

/// Checks and calculates an adjustment step by step, and leaves the survey alone.
Adjustment adjustment(const Survey& survey, const AdjustmentRequest& request);

/// Puts the readings in place. Requires the survey for which they have been calculated.
Difference adjustReadings(Survey& survey, Adjustment adjustment);

/// The act, in words: "Added 2.5 to every EM1 reading". Requires one that changes readings.
ActDescription describe(const Adjustment& adjustment);

}  // namespace tessel
