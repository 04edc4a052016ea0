// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/correlation_axes.h"

#include "app/column_statistics.h"
#include "base/bounded.h"

namespace tessel {

namespace {

Interval paddedRange(const Survey& survey, SiteColumn column) {
    const ColumnMinMax range = Column_MinMax(survey, column);
    const Interval readings{range.minimum, range.maximum};
    return readings.widened(bounded(readings.length()) * 0.1);
}

}  // namespace

Rectangle correlationAxes(const Survey& survey) {
    return {paddedRange(survey, kEM1), paddedRange(survey, kEM2)};
}

}  // namespace tessel
