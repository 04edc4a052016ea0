// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/TablePreviewModel.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const std::string& textAt(const std::vector<std::string>& texts, int column) {
    static const std::string kMissing;
    const auto place = static_cast<std::size_t>(column);
    return place < texts.size() ? texts[place] : kMissing;
}

}  // namespace

void TablePreviewModel::show(TablePreview preview, const TableShape& shape, std::vector<TableRole> roles,
                             const QColor& mark) {
    beginResetModel();
    preview_ = std::move(preview);
    shape_ = shape;
    roles_ = std::move(roles);
    mark_ = mark;
    endResetModel();
}

QString TablePreviewModel::columnName(int column) const {
    const std::string& name = textAt(preview_.header, column);
    return name.empty() ? u"Column %1"_s.arg(column + 1) : QString::fromStdString(name);
}

int TablePreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(preview_.lines.size());
}

int TablePreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(preview_.columns);
}

bool TablePreviewModel::isWrong(const QModelIndex& index) const {
    const TableRole role = roles_[static_cast<std::size_t>(index.column())];
    const std::string& text = textAt(preview_.lines[static_cast<std::size_t>(index.row())], index.column());
    const bool letters = role == TableRole::kLongitude || role == TableRole::kLatitude;
    double ignored = 0;
    return role != TableRole::kNothing && !readField(text, shape_.decimalSign, letters, ignored);
}

QVariant TablePreviewModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const std::string& text = textAt(preview_.lines[static_cast<std::size_t>(index.row())], index.column());
    if (role == Qt::DisplayRole) return QString::fromStdString(text);
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::ForegroundRole && role != Qt::ToolTipRole) return {};
    if (!isWrong(index)) return {};
    return role == Qt::ForegroundRole ? QVariant(mark_) : QVariant(u"This is not a number."_s);
}

QVariant TablePreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    const TableRole held = roles_[static_cast<std::size_t>(section)];
    const std::string_view name = held == TableRole::kNothing ? "-" : nameOf(held);
    return columnName(section) + u'\n' + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace tessel
