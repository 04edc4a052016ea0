// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/GenericPreviewModel.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

QStringList columnNames(const GenericLayout& layout) {
    QStringList names{u"X-cord"_s, u"Y-cord"_s, u"Ec1"_s};
    if (layout.siteNumber) names.prepend(u"Site_#"_s);
    if (layout.secondReading) names << u"Ec2"_s;
    if (layout.rowNumber) names << u"Row_#"_s;
    return names;
}

const PreviewValue& valueOf(const PreviewRecord& record, int column) {
    static const PreviewValue kMissing;
    const auto place = static_cast<std::size_t>(column);
    return place < record.values.size() ? record.values[place] : kMissing;
}

}  // namespace

void GenericPreviewModel::show(GenericPreview preview, const GenericLayout& layout, const QColor& mark) {
    beginResetModel();
    preview_ = std::move(preview);
    columns_ = columnNames(layout);
    mark_ = mark;
    endResetModel();
}

int GenericPreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(preview_.records.size());
}

int GenericPreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GenericPreviewModel::data(const QModelIndex& index, int role) const {
    // A table without lines asks for none when its content is to be copied.
    if (!index.isValid()) return {};
    const PreviewRecord& record = preview_.records[static_cast<std::size_t>(index.row())];
    const PreviewValue& value = valueOf(record, index.column());
    const bool missing = value.text.empty();
    if (role == Qt::DisplayRole) return missing ? u"(missing)"_s : QString::fromStdString(value.text);
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (value.numeric) return {};
    if (role == Qt::ForegroundRole) return mark_;
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole)
        return missing ? u"This value is missing."_s : u"This is not a number."_s;
    return {};
}

QVariant GenericPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal) return columns_.at(section);
    return QString::number(preview_.records[static_cast<std::size_t>(section)].line);
}

}  // namespace tessel
