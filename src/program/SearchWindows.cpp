// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/SearchWindows.h"

#include "app/frmMain.h"
#include "desktop/Windows.h"
#include "journal/journal.h"
#include "plots/SurveyGridPlot.h"

#include <QScopedValueRollback>
#include <QScreen>

namespace tessel {

SearchWindows::SearchWindows(frmMain& main, SurveyGridPlot& grid) : main_(main), grid_(grid) {}

// What it finds is shown on the survey grid.
void SearchWindows::mnuTurns_Click() {
    if (turnsAreShown()) return showBeside(turns_);
    import_ = theSurvey().importNumber;
    turns_ = new frmTurns(&main_);
    turns_->addActions({main_.mnuUndo, main_.mnuRedo});
    connect(turns_, &frmTurns::rowsFound, this, [this](const RowTurns& found) {
        // What the user looks at stays when the survey changes beside the window.
        if (!turnsFollow_ || grid_.isShown()) grid_.showFound(found);
    });
    connect(turns_, &frmTurns::previewEnded, &grid_, &SurveyGridPlot::endFound);
    connect(turns_, &frmTurns::surveyChanged, this, &SearchWindows::surveyChanged);
    connect(turns_, &frmTurns::rowsRecalculated, this, &SearchWindows::rowsRecalculated);
    place(*turns_);
    showBeside(turns_);
}

void SearchWindows::place(QWidget& window) {
    const QRect screen = main_.screen()->availableGeometry();
    window.move(placedAtRight(main_.geometry(), window.sizeHint(), screen).topLeft());
}

void SearchWindows::followSurvey() {
    followInTurns();
}

void SearchWindows::followInTurns() {
    if (!turnsAreShown()) return;
    if (theSurvey().NumSites == 0 || theSurvey().importNumber != import_) {
        takeAway(turns_);
        return turns_.clear();
    }
    const QScopedValueRollback following(turnsFollow_, true);
    turns_->search();
}

}  // namespace tessel
