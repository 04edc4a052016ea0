#include "plots/row_sites.h"

#include "app/run_time_error.h"

#include <numeric>

RowSites rowSites(const Survey& survey, int row) {
    if (row < 1 || row > kMaxRows) throw RunTimeError::subscriptOutOfRange();
    const auto firstRow = survey.NumPoints.begin() + 1;
    return {std::accumulate(firstRow, firstRow + (row - 1), SiteIndex{0}), firstRow[row - 1]};
}

std::span<const double> columnOf(const Survey& survey, int column, RowSites sites) {
    return {survey.SiteData.column(column) + sites.first, static_cast<std::size_t>(sites.count)};
}
