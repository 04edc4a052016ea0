// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/frmHistory.h"

#include "app/HelpOpener.h"
#include "desktop/Guarded.h"
#include "desktop/Windows.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace tessel {

namespace {

constexpr int kHelpDocument = 117;

}  // namespace

frmHistory::frmHistory(QWidget* parent) : QDialog(parent), model_(new HistoryModel(this)) {
    setupUi(this);
    lstHistory->setModel(model_);
    QHeaderView* const header = lstHistory->header();
    header->setSectionsMovable(false);
    header->setStretchLastSection(false);
    const auto width = [this](const char* text) { return fontMetrics().horizontalAdvance(tr(text)) + 24; };
    header->resizeSection(HistoryModel::kNumber, width("10000"));
    // As wide as the lines in sight need, however many there are.
    header->setResizeContentsPrecision(0);
    for (const int column : {HistoryModel::kTime, HistoryModel::kSites, HistoryModel::kRows})
        header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(HistoryModel::kWhat, QHeaderView::Stretch);
    connect(lstHistory, &QTreeView::clicked, this, [this](const QModelIndex& line) { choose(line); });
    lstHistory->installEventFilter(this);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::close);
    offerHelp(*this, kHelpDocument, cmdHelp);
    resizeOnScreen(*this, QSize(680, 420));
    redraw();
}

void frmHistory::redraw() {
    model_->follow();
    const QModelIndex present = model_->index(static_cast<int>(theJournal().position()), 0);
    lstHistory->setCurrentIndex(present);
    lstHistory->scrollTo(present);
}

// Enter on a line goes there, and does not press the default button as well.
bool frmHistory::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return QDialog::eventFilter(watched, event);
    choose(lstHistory->currentIndex());
    return true;
}

// Where the survey cannot stay as it was, it goes to where it can.
void frmHistory::choose(const QModelIndex& line) {
    const std::size_t position = theJournal().restNear(static_cast<std::size_t>(line.row()));
    if (position != theJournal().position()) Q_EMIT positionChosen(position);
}

}  // namespace tessel
