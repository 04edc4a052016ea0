// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/RowStatisticsModel.h"

#include "base/numbers.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const std::array kHeader = {u"Row"_s, u"# of Sites"_s, u"Row Length"_s, u"EC1 Mean"_s, u"EC2 Mean"_s};

QString twoDecimals(double value) {
    return QString::fromStdString(pictureFormat(value, 2));
}

}  // namespace

RowStatisticsModel::RowStatisticsModel(RowStatistics statistics, QObject* parent)
    : QAbstractTableModel(parent), statistics_(std::move(statistics)) {}

void RowStatisticsModel::replace(RowStatistics statistics) {
    beginResetModel();
    statistics_ = std::move(statistics);
    endResetModel();
}

void RowStatisticsModel::showRelativeLengths(bool relative) {
    relative_ = relative;
    if (rowCount() > 0) Q_EMIT dataChanged(index(0, kLength), index(rowCount() - 1, kLength));
}

int RowStatisticsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(statistics_.rows.size());
}

int RowStatisticsModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    return statistics_.twoEMColumns ? kEM2Mean + 1 : kEM2Mean;
}

QString RowStatisticsModel::cell(int line, int column) const {
    const RowSummary& row = statistics_.rows[static_cast<std::size_t>(line)];
    switch (column) {
        case kOrdinal:
            return QString::number(line + 1);
        case kSites:
            return QString::number(row.sites);
        case kLength:
            return twoDecimals(relative_ ? statistics_.relativeLength(row) : row.length);
        case kEM1Mean:
            return twoDecimals(row.em1Mean);
        default:
            return twoDecimals(row.em2Mean);
    }
}

QVariant RowStatisticsModel::data(const QModelIndex& index, int role) const {
    // A table without lines asks for none when its content is to be copied.
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return cell(index.row(), index.column());
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant RowStatisticsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::DisplayRole) return kHeader.at(static_cast<std::size_t>(section));
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QString RowStatisticsModel::tabSeparated(const QList<int>& lines) const {
    QString text;
    const auto add = [&text, columns = columnCount()](const auto& cellOf) {
        for (int column = 0; column < columns; ++column)
            text += cellOf(column) + (column + 1 < columns ? u'\t' : u'\n');
    };
    add([](int column) { return kHeader.at(static_cast<std::size_t>(column)); });
    for (const int line : lines)
        add([this, line](int column) { return cell(line, column); });
    return text;
}

}  // namespace tessel
