// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/HistoryModel.h"

#include "desktop/FileNames.h"

#include <QApplication>
#include <QDateTime>
#include <QFont>
#include <QPalette>

#include <array>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// The day only of acts that are not of today.
QString timeOf(const Act& act) {
    using std::chrono::milliseconds;
    const auto since = std::chrono::duration_cast<milliseconds>(act.time.time_since_epoch());
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(since.count());
    const bool today = time.date() == QDate::currentDate();
    return time.toString(today ? u"hh:mm:ss"_s : u"yyyy-MM-dd hh:mm:ss"_s);
}

QString whatWasBefore() {
    const std::size_t forgotten = theJournal().forgotten();
    if (forgotten == 0) return HistoryModel::tr("Start of the program");
    return HistoryModel::tr(
        "%Ln earlier act(s) can no longer be taken back: there is no more memory for them", nullptr,
        static_cast<int>(forgotten));
}

}  // namespace

int HistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : lines_;
}

int HistoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

void HistoryModel::follow() {
    beginResetModel();
    lines_ = static_cast<int>(theJournal().size()) + 1;
    endResetModel();
}

QString HistoryModel::textOf(int line, int column) const {
    // Acts may have been forgotten that are still shown.
    if (line > static_cast<int>(theJournal().size())) return {};
    if (line == 0) return column == kWhat ? whatWasBefore() : QString();
    const Act& act = theJournal().act(static_cast<std::size_t>(line - 1));
    switch (column) {
        case kNumber:
            return QString::number(theJournal().forgotten() + static_cast<std::size_t>(line));
        case kTime:
            return timeOf(act);
        case kWhat:
            return legible(fromPath(act.words));
        case kSites:
            return QString::number(act.sites);
        default:
            return act.rows > kMaxRows ? u">%1"_s.arg(kMaxRows) : QString::number(act.rows);
    }
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    const auto position = static_cast<int>(theJournal().position());
    switch (role) {
        case Qt::DisplayRole:
            return textOf(index.row(), index.column());
        case Qt::ToolTipRole:
            return index.column() == kWhat ? textOf(index.row(), kWhat) : QVariant();
        case Qt::TextAlignmentRole:
            return index.column() == kTime || index.column() == kWhat
                       ? QVariant()
                       : QVariant(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::FontRole: {
            if (index.row() != position) return {};
            QFont bold = QApplication::font("QTreeView");
            bold.setBold(true);
            return bold;
        }
        case Qt::ForegroundRole:
            return index.row() > position ? QVariant(QPalette().brush(QPalette::Disabled, QPalette::Text))
                                          : QVariant();
        case Qt::AccessibleTextRole: {
            const QString text = textOf(index.row(), index.column());
            if (index.row() == position) return tr("%1, present state").arg(text);
            return index.row() > position ? tr("%1, taken back").arg(text) : text;
        }
        default:
            return {};
    }
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    static const std::array<const char*, kColumns> names = {"No.", "Time", "What was done", "Sites", "Rows"};
    if (role == Qt::DisplayRole) return tr(names.at(static_cast<std::size_t>(section)));
    if (role == Qt::TextAlignmentRole)
        return section == kTime || section == kWhat ? Qt::AlignLeft : Qt::AlignRight;
    return {};
}

}  // namespace tessel
