// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/RowDialog.h"

#include "analysis/LagDistancePlot.h"
#include "app/frmMain.h"
#include "desktop/Guarded.h"
#include "desktop/Windows.h"
#include "plots/SurveyGridPlot.h"

#include <QScreen>

namespace tessel {

namespace {

void joinPlots(frmDataEdit& dialog, LagDistancePlot& lag, SurveyGridPlot& grid) {
    QObject::connect(&dialog, &frmDataEdit::distanceTyped, &lag, &LagDistancePlot::showTyped);
    QObject::connect(&dialog, &frmDataEdit::shownChanged, &lag, &LagDistancePlot::offerChoice);
    QObject::connect(&dialog, &frmDataEdit::rowsForeseen, &grid, [&](const std::vector<IndexRange>& rows) {
        runGuarded(&dialog, [&] { grid.showForeseen(rows); });
    });
    // One that has been closed may still wait to be destroyed.
    const auto onDialog = [&dialog](auto act) {
        return [&dialog, act](auto... chosen) {
            if (dialog.isVisible()) runGuarded(&dialog, [&] { act(dialog, chosen...); });
        };
    };
    QObject::connect(
        &lag, &LagDistancePlot::distanceChosen, &dialog,
        onDialog([](frmDataEdit& d, int mode, double distance) { d.enterDistance(mode, distance); }));
    QObject::connect(&lag, &LagDistancePlot::choiceAccepted, &dialog,
                     onDialog([](frmDataEdit& d) { d.Command1->click(); }));
    QObject::connect(&lag, &LagDistancePlot::choiceGivenUp, &dialog,
                     onDialog([](frmDataEdit& d) { d.close(); }));
}

}  // namespace

RowDialog::RowDialog(frmMain& main, LagDistancePlot& lag, SurveyGridPlot& grid)
    : main_(main), lag_(lag), grid_(grid) {}

// One that has been closed and still waits to be destroyed does not come up again.
void RowDialog::mnuData_Click() {
    if (!dialog_ || dialog_->isHidden()) open();
    showBeside(dialog_);
}

void RowDialog::open() {
    dialog_ = new frmDataEdit(&main_);
    dialog_->addActions({main_.mnuUndo, main_.mnuRedo});
    connect(dialog_, &frmDataEdit::surveyChanged, this, &RowDialog::surveyChanged);
    connect(dialog_, &frmDataEdit::rowsRecalculated, this, &RowDialog::rowsRecalculated);
    connect(dialog_, &frmDataEdit::noSitesLeft, this, &RowDialog::noSitesLeft);
    joinPlots(*dialog_, lag_, grid_);
    const QRect screen = main_.screen()->availableGeometry();
    dialog_->move(placedAtRight(main_.geometry(), dialog_->sizeHint(), screen).topLeft());
}

void RowDialog::followSurvey() {
    if (dialog_) dialog_->followSurvey();
}

void RowDialog::takeAway() {
    tessel::takeAway(dialog_);
    dialog_.clear();
}

}  // namespace tessel
