// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmStat.h"

#include "app/HelpOpener.h"
#include "base/run_time_error.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/Windows.h"
#include "journal/journal.h"
#include "rows/row_detection.h"

#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>

#include <numeric>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kAbsolute = 1;
constexpr int kRelative = 2;
constexpr int kHelpDocument = 102;  // the main menu, which leads here

// Takes the statistics and leaves the row count, and the sites of each row as far as the survey holds them.
RowStatistics countRows() {
    RowStatistics statistics = rowStatistics(theSurvey());
    theJournal().recount([&](const Survey& survey, SurveyCounts& counts) {
        if (statistics.rows.size() <= kMaxRows && survey.NumSites > 0) countPoints(survey, counts);
        counts.RowIndex = static_cast<int>(statistics.rows.size());
    });
    return statistics;
}

RowStatistics rowsThatAreThere(const Survey& survey) {
    if (!rowsAreUsable(survey)) return {};
    try {
        return rowStatistics(survey);
    } catch (const RunTimeError&) {
        return {};
    }
}

}  // namespace

frmStat::frmStat(QWidget* parent) : QMainWindow(parent) {
    setupUi(this);
    model_ = new RowStatisticsModel(countRows(), this);
    showCount();
    Stats->setModel(model_);
    Stats->addAction(actionCopy);
    fitColumns();

    connect(optDSA, &QRadioButton::clicked, this, guarded(this, [this] { showDistanceScale(kAbsolute); }));
    connect(optDSR, &QRadioButton::clicked, this, guarded(this, [this] { showDistanceScale(kRelative); }));
    connect(actionCopy, &QAction::triggered, this, guarded(this, [this] { copyToClipboard(); }));
    connect(Stats, &QWidget::customContextMenuRequested, this,
            [this](QPoint place) { showMenu(Stats->viewport()->mapToGlobal(place)); });
    connect(mnuStatExit, &QAction::triggered, this, guarded(this, [this] { close(); }));
    offerHelp(*this, kHelpDocument);
    colourWhileChecked(*optDSA);
    colourWhileChecked(*optDSR);
    optDSA->setChecked(true);
}

void frmStat::redraw() {
    const int place = Stats->verticalScrollBar()->value();
    model_->replace(rowsThatAreThere(theSurvey()));
    Stats->verticalScrollBar()->setValue(place);
    showCount();
}

void frmStat::showCount() {
    const Survey& survey = theSurvey();
    const bool rowsAreRefused = survey.RowIndex > kMaxRows && !rowsAreUsable(survey);
    const bool tooMany = model_->rowCount() == 0 && survey.NumSites > 0 && rowsAreRefused;
    lblInfo->setText(tooMany ? QString::fromLatin1(kTooManyRows)
                             : u"Total # of detected rows = %1"_s.arg(model_->rowCount()));
}

void frmStat::showDistanceScale(int scale) {
    model_->showRelativeLengths(scale == kRelative);
}

// Without an event loop of its own, in which the window could be closed beneath it.
void frmStat::showMenu(QPoint place) {
    auto* const menu = new QMenu(Stats);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(Stats->actions());
    menu->popup(place);
}

void frmStat::copyToClipboard() const {
    QApplication::clipboard()->setText(model_->tabSeparated(linesToCopy()));
}

// The selected lines from above to below; the whole table when none is selected.
QList<int> frmStat::linesToCopy() const {
    QList<int> lines;
    for (const QModelIndex& index : Stats->selectionModel()->selectedRows())
        lines << index.row();
    if (lines.isEmpty()) {
        lines.resize(model_->rowCount());
        std::iota(lines.begin(), lines.end(), 0);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

// As wide as the figures, which share the room that the window has beyond that; on a small display they
// scroll.
void frmStat::fitColumns() {
    QHeaderView* const header = Stats->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setMinimumSectionSize(fontMetrics().horizontalAdvance(u"0000000000.00"_s));
    Stats->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    resizeOnScreen(*this, {fontMetrics().horizontalAdvance(u'0') * 22 * model_->columnCount(), 520});
}

}  // namespace tessel
