// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/ReviewWindows.h"

#include "app/frmMain.h"
#include "desktop/Windows.h"

namespace tessel {

void ReviewWindows::mnuStat_Click() {
    showAfresh(statistics_);
}

void ReviewWindows::mnuHist_Click() {
    showAfresh(histograms_);
}

void ReviewWindows::mnuSigCorr_Click() {
    showAfresh(correlation_);
}

template <typename Window>
void ReviewWindows::showAfresh(QPointer<Window>& shown) {
    auto* const window = new Window(&main_);
    takeAway(shown);
    shown = window;
    window->addActions({main_.mnuUndo, main_.mnuRedo});
    showBeside(window);
}

void ReviewWindows::followSurvey() {
    if (statistics_) statistics_->redraw();
    if (histograms_) histograms_->redraw();
    if (correlation_) correlation_->redraw();
}

}  // namespace tessel
