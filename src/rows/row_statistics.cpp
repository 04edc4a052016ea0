#include "rows/row_statistics.h"

#include "app/compensated_sum.h"

#include <algorithm>
#include <cmath>

namespace {

// A mean taken as a sum about the first value, so that a large offset costs no digits.
class RunningMean {
  public:
    explicit RunningMean(double first) : first_(first) {}

    void add(double value) { excess_.add(value - first_); }
    double over(SiteIndex count) const {
        return requireFinite(first_ + excess_.rounded() / static_cast<double>(count));
    }

  private:
    double first_;
    CompensatedSum excess_;
};

// The survey's columns as the pass reads them.
struct Columns {
    explicit Columns(const Survey& survey)
        : x(survey.SiteData.column(kX)),
          y(survey.SiteData.column(kY)),
          em1(survey.SiteData.column(kEM1)),
          em2(survey.SiteData.column(kEM2)),
          row(survey.SiteData.column(kRow)) {}
    const double *x, *y, *em1, *em2, *row;
};

// Sums up the run that begins at `first`.
RowSummary summarizeRun(const Columns& columns, SiteIndex first, SiteIndex sites, bool twoEMColumns) {
    RunningMean em1(columns.em1[first]);
    RunningMean em2(columns.em2[first]);
    SiteIndex end = first + 1;
    for (; end < sites && columns.row[end] == columns.row[first]; ++end) {
        em1.add(columns.em1[end]);
        if (twoEMColumns) em2.add(columns.em2[end]);
    }
    RowSummary run;
    run.sites = end - first;
    const double dx = columns.x[first] - columns.x[end - 1];
    const double dy = columns.y[first] - columns.y[end - 1];
    run.length = requireFinite(std::sqrt(dx * dx + dy * dy));
    run.em1Mean = em1.over(run.sites);
    run.em2Mean = twoEMColumns ? em2.over(run.sites) : 0;
    return run;
}

}  // namespace

double RowStatistics::relativeLength(const RowSummary& row) const {
    return row.length / (longest > 0 ? longest : 1) * 100;
}

RowStatistics rowStatistics(const Survey& survey) {
    RowStatistics statistics;
    statistics.twoEMColumns = survey.TwoEMColumns;
    const Columns columns(survey);
    for (SiteIndex site = 0; site < survey.NumSites; site += statistics.rows.back().sites)
        statistics.rows.push_back(summarizeRun(columns, site, survey.NumSites, survey.TwoEMColumns));
    for (const RowSummary& row : statistics.rows)
        statistics.longest = std::max(statistics.longest, row.length);
    return statistics;
}
