// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/em_adjustment.h"

#include "base/numbers.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessel {

namespace {

constexpr SiteIndex kBlock = 1024;

// The column as it will be: as long as the storage, and behind the last site as it is. In blocks that stay in
// the cache, so that the copy is passed over once.
template <typename Change>
std::vector<double> changed(const Survey& survey, SiteColumn column, Change change) {
    const double* const readings = survey.SiteData.column(column);
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(survey.SiteData.capacity()));
    bool finite = true;
    for (SiteIndex first = 0; first < survey.NumSites; first += kBlock) {
        const SiteIndex end = std::min(first + kBlock, survey.NumSites);
        double* value = &*values.insert(values.end(), readings + first, readings + end);
        for (const double* const last = value + (end - first); value != last; ++value) {
            *value = change(*value);
            finite &= std::isfinite(*value);
        }
    }
    if (!finite) throw RunTimeError::overflow();
    values.insert(values.end(), readings + survey.NumSites, readings + survey.SiteData.capacity());
    return values;
}

AppliedAdjustment& appliedTo(Adjustment& adjustment, SiteColumn column) {
    return column == kEM1 ? adjustment.applied.em1 : adjustment.applied.em2;
}

void shiftAsTyped(const Survey& survey, SiteColumn column, const std::string& text, Adjustment& adjustment) {
    const auto shift = numericValue(text);
    if (!shift) {
        adjustment.refusal = "Error! Non-numeric shift factor detected.";
        return;
    }
    const double total = column == kEM1 ? survey.EMAdjustTotalA : survey.EMAdjustTotalB;
    if (!std::isfinite(total + *shift)) throw RunTimeError::overflow();
    adjustment.columns.push_back(
        {column, changed(survey, column, [by = *shift](double reading) { return reading + by; })});
    appliedTo(adjustment, column).shift = *shift;
    (column == kEM1 ? adjustment.shift1 : adjustment.shift2) = *shift;
}

struct ScaleRefusals {
    std::string_view notNumeric, tooSmall;
};

void scaleAsTyped(const Survey& survey, SiteColumn column, const std::string& text,
                  const ScaleRefusals& refusals, Adjustment& adjustment) {
    const auto factor = numericValue(text);
    if (!factor) {
        adjustment.refusal = refusals.notNumeric;
        return;
    }
    if (*factor < kSmallestScale) {
        adjustment.refusal = refusals.tooSmall;
        return;
    }
    adjustment.columns.push_back(
        {column, changed(survey, column, [by = *factor](double reading) { return reading * by; })});
    appliedTo(adjustment, column).factor = *factor;
}

void scaleAllAsTyped(const Survey& survey, const AdjustmentRequest& request, Adjustment& adjustment) {
    scaleAsTyped(survey, kEM1, request.factor1,
                 {"Error! Non-numeric EM1 scale factor detected.", "Error! EM1 Scale factor must be >= 0.01"},
                 adjustment);
    if (!adjustment.refusal.empty() || !survey.TwoEMColumns) return;
    scaleAsTyped(survey, kEM2, request.factor2,
                 {"Error! Non-numeric EM2 scale factor detected.", "Error! EM2 Scale factor must be >= 0.01"},
                 adjustment);
}

void adjustAsTyped(const Survey& survey, const AdjustmentRequest& request, Adjustment& adjustment) {
    switch (request.kind) {
        case AdjustmentKind::kAddToEM1:
            return shiftAsTyped(survey, kEM1, request.shift1, adjustment);
        case AdjustmentKind::kAddToEM2:
            return shiftAsTyped(survey, kEM2, request.shift2, adjustment);
        case AdjustmentKind::kScale:
            return scaleAllAsTyped(survey, request, adjustment);
    }
}

}  // namespace

Adjustment adjustment(const Survey& survey, const AdjustmentRequest& request) {
    Adjustment adjustment{request.kind, {}, {}, 0, 0, {}, {}};
    try {
        adjustAsTyped(survey, request, adjustment);
    } catch (...) {
        adjustment.failure = std::current_exception();
    }
    return adjustment;
}

Difference adjustReadings(Survey& survey, Adjustment adjustment) {
    Difference difference(survey);
    for (Adjustment::Column& column : adjustment.columns)
        difference.exchangeColumn(survey, column.column, std::move(column.values));
    survey.applied = survey.applied.then(adjustment.applied);
    survey.EMAdjustTotalA += adjustment.shift1;
    survey.EMAdjustTotalB += adjustment.shift2;
    return difference;
}

ActDescription describe(const Adjustment& adjustment) {
    ActDescription act{ActKind::kAdjust, "adjust the readings", "", {}};
    for (const Adjustment::Column& column : adjustment.columns) {
        const bool first = column.column == kEM1;
        const AppliedAdjustment& applied = first ? adjustment.applied.em1 : adjustment.applied.em2;
        const std::string name = first ? "EM1" : "EM2";
        if (!act.words.empty()) act.words += ", ";
        if (adjustment.kind != AdjustmentKind::kScale) {
            act.words += "Added " + shortestText(applied.shift) + " to every " + name + " reading";
            act.parameters.emplace_back(name + " shift (mS/m)", shortestText(applied.shift));
        } else {
            act.words += "Multiplied every " + name + " reading by " + shortestText(applied.factor);
            act.parameters.emplace_back(name + " factor", shortestText(applied.factor));
        }
    }
    return act;
}

}  // namespace tessel
