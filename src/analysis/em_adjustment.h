// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/applied_adjustments.h"
#include "app/survey.h"
#include "base/session.h"

#include <string>
#include <string_view>

namespace tessel {

// Correction of the readings in place: a constant added to a column, or the columns scaled.

/// Adds `shift` (mS/m) to every reading of the column kEM1 or kEM2 and to `total`, the session's running
/// total of that column. Throws overflow, with nothing changed, when a reading or the total would not be
/// finite.
void addConstant(Survey& survey, SiteColumn column, double shift, double& total);

/// Multiplies every reading of the column kEM1 or kEM2. Throws overflow, with nothing changed, when a reading
/// would not be finite.
void scaleColumn(Survey& survey, SiteColumn column, double factor);

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

/// How far an adjustment came.
struct AdjustmentOutcome {
    bool readingsChanged = false;
    AppliedAdjustments applied;  ///< what has been done to each reading
    std::string_view refusal;    ///< why it ended early, in the words for the user; empty when it was done
};

/// Checks and applies an adjustment step by step: a factor of EM2 that is refused leaves EM1 scaled.
/// `outcome` is kept up to date on the way, so that it holds when overflow is thrown.
void adjustReadings(Survey& survey, Session& session, const AdjustmentRequest& request,
                    AdjustmentOutcome& outcome);

}  // namespace tessel
