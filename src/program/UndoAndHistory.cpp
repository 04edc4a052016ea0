// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/UndoAndHistory.h"

#include "app/frmMain.h"
#include "desktop/FileNames.h"
#include "desktop/Guarded.h"
#include "desktop/Windows.h"
#include "journal/journal.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

void UndoAndHistory::mnuUndo_Click() {
    goTo(theJournal().positionBefore());
}

void UndoAndHistory::mnuRedo_Click() {
    goTo(theJournal().positionAfter());
}

void UndoAndHistory::mnuHistory_Click() {
    if (!history_) {
        history_ = new frmHistory(&main_);
        history_->addActions({main_.mnuUndo, main_.mnuRedo});
        connect(history_, &frmHistory::positionChosen, this, &UndoAndHistory::goToChosen);
    }
    showBeside(history_);
}

void UndoAndHistory::goToChosen(std::size_t position) {
    runGuarded(history_.data(), [&] { goTo(position); });
}

void UndoAndHistory::goTo(std::size_t position) {
    const Hourglass hourglass(&main_);
    const std::size_t from = theJournal().position();
    try {
        theJournal().goTo(position);
    } catch (...) {
        Q_EMIT moved(from);
        throw;
    }
    Q_EMIT moved(from);
}

void UndoAndHistory::showInMenus() {
    const Journal& journal = theJournal();
    showInMenu(main_.mnuUndo, u"&Undo"_s, journal.positionBefore());
    showInMenu(main_.mnuRedo, u"&Redo"_s, journal.positionAfter());
    main_.mnuHistory->setEnabled(journal.size() + journal.forgotten() > 0);
}

void UndoAndHistory::showInMenu(QAction* item, const QString& name, std::size_t to) {
    const Journal& journal = theJournal();
    const bool can = to != journal.position();
    item->setEnabled(can);
    if (!can) return item->setText(name);
    // Of several acts that go together the first, which the user has chosen.
    const std::string& order = journal.act(std::min(to, journal.position())).order;
    item->setText(name + u": "_s + legible(fromPath(order)).replace(u'&', u"&&"_s));
}

void UndoAndHistory::followSurvey() {
    if (history_) history_->redraw();
}

QString UndoAndHistory::movedInWords(std::size_t from) {
    const std::size_t to = theJournal().position();
    if (from == to) return {};
    const QString did = from > to ? u"Taken back: "_s : u"Done again: "_s;
    const std::size_t acts = from > to ? from - to : to - from;
    if (acts > 1) return did + u"%1 acts"_s.arg(acts);
    return did + legible(fromPath(theJournal().act(std::min(from, to)).words));
}

}  // namespace tessel
