// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/site_runs.h"
#include "desktop/Guarded.h"
#include "journal/journal.h"
#include "plots/frmClip.h"

#include <utility>

// Steps on the map, taken back and done again.

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

QString wordsOf(const MaskStep& step) {
    const SiteIndex sites = sitesIn(step.runs);
    const QString number = sites == 1 ? u"1 site"_s : u"%1 sites"_s.arg(sites);
    switch (step.act) {
        case MaskAct::kRectangle:
            return u"mask "_s + number;
        case MaskAct::kRecovery:
            return u"restore "_s + number;
        case MaskAct::kDeletion:
            return u"delete "_s + number;
    }
    return {};
}

}  // namespace

// Of the window too: their menu is disabled while clipping, and while no site is masked.
void frmClip::joinSteps() {
    mnuClipUndo->setShortcut(Qt::CTRL | Qt::Key_Z);
    mnuClipRedo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    addActions({mnuClipUndo, mnuClipRedo});
    connect(mnuClipUndo, &QAction::triggered, this, guarded(this, [this] { mnuClipUndo_Click(); }));
    connect(mnuClipRedo, &QAction::triggered, this, guarded(this, [this] { mnuClipRedo_Click(); }));
}

void frmClip::noteStep(MaskStep step) {
    steps_.add(std::move(step));
    followSteps();
}

// A rectangle that is open is the last thing that was done.
void frmClip::mnuClipUndo_Click() {
    if (rectangleIsOpen()) return abandonRectangle();
    const bool deletes = steps_.last().act == MaskAct::kDeletion;
    const std::size_t from = theJournal().position();
    if (deletes) goInJournal(steps_.last().actsBefore);
    masked_ = steps_.goBack(SiteMask, theSurvey().NumSites);
    followStep(deletes, from);
}

void frmClip::mnuClipRedo_Click() {
    const bool deletes = steps_.next().act == MaskAct::kDeletion;
    const std::size_t from = theJournal().position();
    if (deletes) goInJournal(steps_.next().actsBefore + 1);
    masked_ = steps_.goForth(SiteMask, theSurvey().NumSites);
    followStep(deletes, from);
}

// Rows that were declared lost since, because somebody was about to leave, come back with the sites.
void frmClip::goInJournal(std::size_t acts) {
    const SiteIndex before = theSurvey().NumSites;
    const std::size_t from = theJournal().position();
    try {
        theJournal().goTo(acts - theJournal().forgotten());
    } catch (...) {
        if (theJournal().position() != from) Q_EMIT journalMoved(from);
        throw;
    }
    deleted_ += before - theSurvey().NumSites;
}

void frmClip::followStep(bool surveyHasChanged, std::size_t from) {
    finder_.clear();
    lblSite->clear();
    showCounts();
    // As they stand when clipping has ended with these masks.
    mnuR->setEnabled(!ClipMode && masked_ > 0);
    cmdDelete->setVisible(!ClipMode && masked_ > 0);
    followSteps();
    if (surveyHasChanged) {
        if (comboRow->count() - 1 != theSurvey().NumRows) fillComboRow();
        Q_EMIT journalMoved(from);
        followReadings();
    }
    redrawBeforeNextPaint();
}

// A deletion that the journal has forgotten ends what can be taken back.
bool frmClip::canGoBack() const {
    if (!steps_.canGoBack()) return false;
    const MaskStep& last = steps_.last();
    return last.act != MaskAct::kDeletion || last.actsBefore >= theJournal().forgotten();
}

void frmClip::followSteps() {
    const auto show = [](QAction* item, const QString& what, bool can, const QString& step) {
        item->setEnabled(can);
        item->setText(can && !step.isEmpty() ? what + u": "_s + step : what);
    };
    show(mnuClipUndo, u"&undo"_s, canGoBack() || rectangleIsOpen(),
         canGoBack() && !rectangleIsOpen() ? wordsOf(steps_.last()) : QString());
    show(mnuClipRedo, u"r&edo"_s, steps_.canGoForth() && !rectangleIsOpen(),
         steps_.canGoForth() ? wordsOf(steps_.next()) : QString());
}

}  // namespace tessel
