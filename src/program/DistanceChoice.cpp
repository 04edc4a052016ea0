// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/DistanceChoice.h"

#include "analysis/LagDistancePlot.h"
#include "desktop/Guarded.h"
#include "plots/SurveyGridPlot.h"
#include "rows/frmDataEdit.h"

namespace tessel {

void joinDistanceChoice(frmDataEdit& dialog, LagDistancePlot& lag, SurveyGridPlot& grid) {
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

}  // namespace tessel
