// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/row_statistics.h"

#include "base/bounded.h"
#include "base/compensated_sum.h"

#include <algorithm>
#include <cmath>

namespace tessel {

namespace {

// The mean of values whose sum is too large for a Double: a mean always is one.
double meanOfHuge(const double* values, SiteIndex count) {
    constexpr double kNearer = 0x1p-64;  // there are fewer sites than 2^63
    CompensatedSum sum;
    for (SiteIndex i = 0; i < count; ++i)
        sum.add(values[i] * kNearer);
    return bounded(sum.meanOver(count) / kNearer);
}

// The mean of the values first, first + 1, ..., given their sum.
double meanOf(const CompensatedSum& sum, const double* values, SiteIndex first, SiteIndex count) {
    const double mean = sum.meanOver(count);
    return std::isfinite(mean) ? mean : meanOfHuge(values + first, count);
}

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
    CompensatedSum em1;
    CompensatedSum em2;
    SiteIndex end = first;
    for (; end < sites && columns.row[end] == columns.row[first]; ++end) {
        em1.add(columns.em1[end]);
        if (twoEMColumns) em2.add(columns.em2[end]);
    }
    RowSummary run;
    run.sites = end - first;
    run.length = lengthBetween(columns.x[first], columns.y[first], columns.x[end - 1], columns.y[end - 1]);
    run.em1Mean = meanOf(em1, columns.em1, first, run.sites);
    run.em2Mean = twoEMColumns ? meanOf(em2, columns.em2, first, run.sites) : 0;
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

}  // namespace tessel
