#include "analysis/correlation_axes.h"

#include "app/bounded.h"
#include "app/column_statistics.h"

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
