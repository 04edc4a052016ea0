#include "analysis/correlation_axes.h"

#include "app/column_statistics.h"
#include "app/run_time_error.h"

#include <cmath>

namespace {

AxisLimits paddedRange(const Survey& survey, SiteColumn column) {
    const ColumnMinMax range = Column_MinMax(survey, column);
    const double margin = (range.maximum - range.minimum) * 0.1;
    const AxisLimits limits{range.minimum - margin, range.maximum + margin};
    if (!std::isfinite(limits.minimum) || !std::isfinite(limits.maximum)) throw RunTimeError::overflow();
    return limits;
}

}  // namespace

CorrelationAxes correlationAxes(const Survey& survey) {
    return {paddedRange(survey, kEM1), paddedRange(survey, kEM2)};
}
