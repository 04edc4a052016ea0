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
    if (isShown(turns_)) return showBeside(turns_);
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
    const QRect screen = main_.screen()->availableGeometry();
    turns_->move(placedAtRight(main_.geometry(), turns_->sizeHint(), screen).topLeft());
    showBeside(turns_);
}

void SearchWindows::mnuSuspects_Click() {
    if (isShown(suspects_)) return showBeside(suspects_);
    import_ = theSurvey().importNumber;
    suspects_ = new frmSuspects(&main_);
    suspects_->addActions({main_.mnuUndo, main_.mnuRedo});
    connect(suspects_, &frmSuspects::surveyChanged, this, &SearchWindows::surveyChanged);
    connect(suspects_, &frmSuspects::rowsLost, this, &SearchWindows::rowsLost);
    connect(suspects_, &frmSuspects::noSitesLeft, this, &SearchWindows::noSitesLeft);
    showBeside(suspects_);
}

void SearchWindows::followSurvey() {
    if (theSurvey().NumSites == 0 || theSurvey().importNumber != import_) {
        takeAway(turns_);
        takeAway(suspects_);
        turns_.clear();
        return suspects_.clear();
    }
    if (isShown(turns_)) followInTurns();
    if (isShown(suspects_)) suspects_->followSurvey();
}

void SearchWindows::followInTurns() {
    const QScopedValueRollback following(turnsFollow_, true);
    turns_->search();
}

}  // namespace tessel
