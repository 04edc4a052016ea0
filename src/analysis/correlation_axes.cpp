// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/correlation_axes.h"

#include "app/column_statistics.h"
#include "base/bounded.h"

namespace tessel {

namespace {

AxisLimits paddedRange(const Survey& survey, SiteColumn column) {
    const ColumnMinMax range = Column_MinMax(survey, column);
    const double margin = bounded(range.maximum - range.minimum) * 0.1;
    return {bounded(range.minimum - margin), bounded(range.maximum + margin)};
}

}  // namespace

CorrelationAxes correlationAxes(const Survey& survey) {
    return {paddedRange(survey, kEM1), paddedRange(survey, kEM2)};
}

}  // namespace tessel
