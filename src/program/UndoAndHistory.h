// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/frmHistory.h"

#include <QObject>
#include <QPointer>

namespace tessel {

class frmMain;

/// Taking acts back and doing them again: by the menu items, which say what they would do, and in the
/// history.
class UndoAndHistory : public QObject {
    Q_OBJECT

  public:
    explicit UndoAndHistory(frmMain& main) : main_(main) {}

    void mnuUndo_Click();
    void mnuRedo_Click();
    void mnuHistory_Click();

    /// What the journal can do has changed: the items say it.
    void showInMenus();
    /// The survey has changed: the history shows it.
    void followSurvey();
    /// What has been taken back or done again since the journal stood at `from`, of several acts how many.
    static QString movedInWords(std::size_t from);

  Q_SIGNALS:
    /// The journal stood at `from`; whatever stopped it on its way, all that shows the survey has to follow.
    void moved(std::size_t from);

  private:
    void goTo(std::size_t position);
    void goToChosen(std::size_t position);
    void showInMenu(QAction* item, const QString& name, std::size_t to);

    frmMain& main_;
    QPointer<frmHistory> history_;
};

}  // namespace tessel
