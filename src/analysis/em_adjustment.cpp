// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/em_adjustment.h"

#include "base/numbers.h"
#include "base/run_time_error.h"
#include "base/session.h"

#include <cmath>

namespace tessel {

namespace {

// Looks at every result before any is stored, so that a refused adjustment leaves no half-changed column.
template <typename Change>
void changeColumn(Survey& survey, SiteColumn column, Change change) {
    double* const readings = survey.SiteData.column(column);
    bool finite = true;
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        finite &= std::isfinite(change(readings[i]));
    if (!finite) throw RunTimeError::overflow();
    for (SiteIndex i = 0; i < survey.NumSites; ++i)
        readings[i] = change(readings[i]);
}

AppliedAdjustment& appliedTo(AdjustmentOutcome& outcome, SiteColumn column) {
    return column == kEM1 ? outcome.applied.em1 : outcome.applied.em2;
}

void shiftAsTyped(Survey& survey, SiteColumn column, const std::string& text, double& total,
                  AdjustmentOutcome& outcome) {
    const auto shift = numericValue(text);
    if (!shift) {
        outcome.refusal = "Error! Non-numeric shift factor detected.";
        return;
    }
    addConstant(survey, column, *shift, total);
    outcome.readingsChanged = true;
    appliedTo(outcome, column).shift = *shift;
}

struct ScaleRefusals {
    std::string_view notNumeric, tooSmall;
};

void scaleAsTyped(Survey& survey, SiteColumn column, const std::string& text, const ScaleRefusals& refusals,
                  AdjustmentOutcome& outcome) {
    const auto factor = numericValue(text);
    if (!factor) {
        outcome.refusal = refusals.notNumeric;
        return;
    }
    if (*factor < kSmallestScale) {
        outcome.refusal = refusals.tooSmall;
        return;
    }
    scaleColumn(survey, column, *factor);
    outcome.readingsChanged = true;
    appliedTo(outcome, column).factor = *factor;
}

void scaleAllAsTyped(Survey& survey, const AdjustmentRequest& request, AdjustmentOutcome& outcome) {
    scaleAsTyped(survey, kEM1, request.factor1,
                 {"Error! Non-numeric EM1 scale factor detected.", "Error! EM1 Scale factor must be >= 0.01"},
                 outcome);
    if (!outcome.refusal.empty() || !survey.TwoEMColumns) return;
    scaleAsTyped(survey, kEM2, request.factor2,
                 {"Error! Non-numeric EM2 scale factor detected.", "Error! EM2 Scale factor must be >= 0.01"},
                 outcome);
}

}  // namespace

void addConstant(Survey& survey, SiteColumn column, double shift, double& total) {
    if (!std::isfinite(total + shift)) throw RunTimeError::overflow();
    changeColumn(survey, column, [=](double reading) { return reading + shift; });
    total += shift;
}

void scaleColumn(Survey& survey, SiteColumn column, double factor) {
    changeColumn(survey, column, [=](double reading) { return reading * factor; });
}

void adjustReadings(Survey& survey, Session& session, const AdjustmentRequest& request,
                    AdjustmentOutcome& outcome) {
    outcome = {};
    switch (request.kind) {
        case AdjustmentKind::kAddToEM1:
            return shiftAsTyped(survey, kEM1, request.shift1, session.EMAdjustTotalA, outcome);
        case AdjustmentKind::kAddToEM2:
            return shiftAsTyped(survey, kEM2, request.shift2, session.EMAdjustTotalB, outcome);
        case AdjustmentKind::kScale:
            return scaleAllAsTyped(survey, request, outcome);
    }
}

}  // namespace tessel
