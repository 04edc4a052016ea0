// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PlotArea.h"
#include "app/menu_items.h"
#include "app/survey_description.h"
#include "ui_frmMain.h"

#include <QList>
#include <QMainWindow>
#include <QTimer>

#include <functional>

namespace tessel {

/// The main window: the menu tree, the chart area, the place of the row plot editor's controls, the banner,
/// and the question before the program ends. It knows no other window, and none knows it: who opens what is
/// joined in src/program, and the plots put their charts into it as a PlotArea.
class frmMain : public QMainWindow, public Ui::frmMain, public PlotArea {
    Q_OBJECT

  public:
    explicit frmMain(QWidget* parent = nullptr);

    void addChart(QWidget* chart) override;
    void addEditor(QWidget* frame) override;
    /// And says so (plotsHidden).
    void hidePlots() override;

    /// Takes what says what the survey is like; the chart area shows it while no chart is shown.
    void describeWith(std::function<SurveyDescription()> description);
    /// The description is another one now. It is asked for at once if it can be seen, else when it comes into
    /// sight: changes beneath a plot cost nothing. Until the first call the area says how to begin.
    void descriptionChanged();

    /// Enables and disables menu items as the table in menu_items.h has it for the event.
    void menusFollow(MenuEvent event);
    /// Which of the items that follow events are enabled, and the same to go back to.
    MenuState menuState() const;
    void restoreMenus(MenuState state);
    /// The action of a menu item or of a submenu; fails hard on a name that no item has.
    QAction* menuItem(const QString& name) const;

    /// Says something in the line at the foot for some seconds; no box.
    void showMessage(const QString& message);

    /// Whether the program may end: a survey that has not been exported is asked about. False while that
    /// question is open already.
    bool mayLeave();

  Q_SIGNALS:
    void plotsHidden();
    /// A file was dropped on the window.
    void fileDropped(const QString& path);
    /// The window has been closed, and the program with it: the user has been asked.
    void left();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Timer1_Timer();
    void nameSubmenus();
    void showInvitationWhileEmpty();
    void updateDescription();
    void describeSurvey();

    QTimer Timer1{this};
    QTimer messageEnds_{this};
    std::function<SurveyDescription()> description_;
    bool descriptionIsOld_ = false;
    QList<QWidget*> charts_;
    QList<QWidget*> editors_;
    bool asking_ = false;
};

}  // namespace tessel
