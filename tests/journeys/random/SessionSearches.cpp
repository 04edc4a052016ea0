// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSuspects.h"
#include "app/frmMain.h"
#include "journal/journal.h"
#include "journeys/random/RandomSession.h"
#include "plots/Chart2D.h"
#include "plots/RowPlotEditor.h"
#include "rows/frmTurns.h"
#include "support/UserDriver.h"

namespace tessel {

void RandomSession::splitRow() {
    const auto place = static_cast<std::size_t>(picked_[0]) - 1;
    clickOn(*editor_, u"cmdSplit"_s);
    splitPlainRow(survey_, survey_.sitesOfRow(row_)[place]);
    counted_ = true;
    setMenus(true, {"mnuRow", "mnuStat", "mnuDistance", "mnuGrid"});
    statisticsFollow();
    compareKeyboardOfRowPlots();
    showRow(row_);
}

// Rows of which the search has found more or fewer are shown on the grid and taken over, or not.
void RandomSession::findTurns() {
    if (!choose(u"mnuTurns"_s, false)) return;
    auto& window = dynamic_cast<frmTurns&>(shownWindow(u"frmTurns"_s));
    bringToFront(window);
    compareTurns(window);
    for (int entries = below(5); entries > 0 && difference_.empty(); --entries)
        enterTurns(window);
    const bool deletes = chance(40);
    clickOn(window, deletes ? u"optTurnsDelete"_s : u"optTurnsKeep"_s);
    if (chance(50) && turns_.rows > 0) {
        if (turns_.rows > 250) expect(u"Too many rows: Please specify a larger distance value"_s);
        const std::vector<int> kept = rowsWithTurnsKept(theSurvey(), turns_);
        noteState();  // the grid may have taken the place of the row plots
        clickOn(window, u"cmdOk"_s);
        if (turns_.rows <= 250) return takeOverTurns(deletes, kept);
    }
    leave(window, u"cmdCancel"_s);
    if (turns_.rows >= 1 && turns_.rows <= 250) plotsFollow();
    turns_ = {};
}

void RandomSession::enterTurns(QWidget& window) {
    const std::vector<QString> entries = {u"abc"_s, u""_s,  u"-1"_s, u"180"_s, u"0"_s,
                                          u"3"_s,   u"9"_s, u"25"_s, u"70"_s,  u"1e3"_s};
    const QString box = oneOf(std::vector<QString>{u"txtTurn"_s, u"txtChord"_s, u"txtShortest"_s});
    if (chance(60))
        typeInto(window, box, oneOf(entries));
    else
        pressKey(control(window, u"sld"_s + box.mid(3)), chance(50) ? Qt::Key_Left : Qt::Key_PageUp);
    compareTurns(window);
}

// What the window shows is what a search in the survey finds now.
void RandomSession::compareTurns(QWidget& window) {
    const auto typed = [&](const QString& box) {
        double value = -1;
        const QString text = controlAs<QLineEdit>(window, box).text();
        return plainNumeric(text.toStdString(), value) ? value : -1;
    };
    const double turn = typed(u"txtTurn"_s), chord = typed(u"txtChord"_s), shortest = typed(u"txtShortest"_s);
    const bool wasShown = turns_.rows >= 1 && turns_.rows <= 250;
    turns_ = {};
    if (turn > 0 && turn < 180 && chord > 0 && shortest >= 0)
        turns_ = findRowTurns(theSurvey(), {turn, chord, shortest, turnGap(theSurvey()), survey_.measure});
    same("enabled cmdOk", control(window, u"cmdOk"_s).isEnabled(), turns_.rows > 0);
    if (turns_.rows >= 1 && turns_.rows <= 250) {
        if (chart_ != u"Chart2D2") plotsHidden();
        chart_ = u"Chart2D2"_s;
        same("series of the rows found", controlAs<Chart2D>(*main_, chart_).seriesCount(Chart2D::kData),
             turns_.rows + 1);
    } else if (wasShown) {
        plotsFollow();
    }
}

void RandomSession::takeOverTurns(bool deleted, const std::vector<int>& kept) {
    std::vector<bool> gone(survey_.sites.size());
    for (std::size_t i = 0; i < gone.size(); ++i) {
        gone[i] = deleted && turns_.row[i] == kInTurn;
        survey_.sites[i].row = turns_.row[i];
    }
    deleteMarkedPlainSites(survey_, gone);
    for (std::size_t i = 0; i < survey_.sites.size() && !deleted; ++i)
        survey_.sites[i].row = kept[i];
    survey_.rows = survey_.rowIndex = turns_.rows;
    counted_ = true;
    setMenus(true, {"mnuRow", "mnuStat", "mnuDistance", "mnuGrid"});
    plotsFollow();
    turns_ = {};
}

// Suspicious sites ------------------------------------------------------------------------------------------

void RandomSession::findSuspectSites() {
    if (!choose(u"mnuSuspects"_s, false)) return;
    auto& window = dynamic_cast<frmSuspects&>(shownWindow(u"frmSuspects"_s));
    bringToFront(window);
    reached_.note("frmSuspects.cmdCancel");  // is there in a search only that takes longer than these
    chooseRules(window);
    const Suspects found = findSuspects(theSurvey(), rulesIn(window));
    same("the sites flagged", static_cast<SiteIndex>(window.tblSuspects->model()->rowCount()), found.sites);
    std::vector<bool> condemned(found.flags.begin(), found.flags.end());
    if (found.sites > 0 && chance(50)) {
        window.tblSuspects->setCurrentIndex(window.tblSuspects->model()->index(0, 0));
        pressKey(*window.tblSuspects, Qt::Key_Space);
        condemned[static_cast<std::size_t>(std::find(condemned.begin(), condemned.end(), true) -
                                           condemned.begin())] = false;
    }
    const bool any = std::find(condemned.begin(), condemned.end(), true) != condemned.end();
    same("enabled cmdDeleteSuspects", window.cmdDeleteSuspects->isEnabled(), any);
    if (any && difference_.empty() && chance(60)) deleteSuspectSites(window, condemned);
    if (isShown(u"frmSuspects"_s)) leave(window, u"cmdClose"_s);
}

void RandomSession::chooseRules(QWidget& window) {
    for (QCheckBox* const rule : window.findChildren<QCheckBox*>())
        if (rule->isEnabled() && chance(40)) clickOn(window, rule->objectName());
    for (QLineEdit* const box : window.findChildren<QLineEdit*>())
        if (box->isVisible() && box->isEnabled() && chance(20))
            typeInto(window, box->objectName(),
                     oneOf(std::vector<QString>{u"2"_s, u"5"_s, u"17"_s, u"40"_s}));
    pickItem(window, u"cboRepeated"_s, below(2));
    pickItem(window, u"cboColours"_s, below(survey_.two ? 3 : 2));
    if (!chance(10)) return;
    typeInto(window, u"txtSpike"_s, u"abc"_s);
    const bool used = controlAs<QCheckBox>(window, u"chkSpikes"_s).isChecked();
    if (used) same("a deletion by no threshold", control(window, u"cmdDeleteSuspects"_s).isEnabled(), false);
    typeInto(window, u"txtSpike"_s, u"3"_s);
}

SuspectParameters RandomSession::rulesIn(QWidget& window) {
    const auto typed = [&](const char* box) {
        return window.findChild<QLineEdit*>(QLatin1StringView(box))->text().toDouble();
    };
    SuspectParameters p;
    std::size_t rule = 0;
    for (const char* const name :
         {"chkLimits", "chkSpikes", "chkAround", "chkJumps", "chkRepeated", "chkFar", "chkStuck", "chkApart"})
        p.uses[rule++] = window.findChild<QCheckBox*>(QLatin1StringView(name))->isChecked();
    p.lowest = {typed("txtLowest1"), typed("txtLowest2")};
    p.highest = {typed("txtHighest1"), typed("txtHighest2")};
    p.spikeNeighbours = static_cast<int>(typed("txtNeighbours"));
    p.spikeThreshold = typed("txtSpike");
    p.radius = typed("txtRadius");
    p.aroundThreshold = typed("txtAround");
    p.jump = typed("txtJump");
    p.repeated = static_cast<RepeatedPlaces>(window.findChild<QComboBox*>(u"cboRepeated"_s)->currentIndex());
    p.farFactor = typed("txtFar");
    p.stuckSites = static_cast<SiteIndex>(typed("txtStuck"));
    p.apartThreshold = typed("txtApart");
    return p;
}

void RandomSession::deleteSuspectSites(QWidget& window, const std::vector<bool>& condemned) {
    const auto count = std::count(condemned.begin(), condemned.end(), true);
    const bool yes = chance(80);
    expectQuestion(yes, count == 1 ? u"Delete the ticked site? The others stay."_s
                                   : u"Delete the %1 ticked sites? The others stay."_s.arg(count));
    if (!yes) return clickOn(window, u"cmdDeleteSuspects"_s);
    const bool closesUp = rowsCanBeShown();
    deleteMarkedPlainSites(survey_, condemned);
    if (survey_.empty()) {
        survey_.rows = survey_.rowIndex = 0;
        noSitesLeft();
    } else if (closesUp) {
        closePlainRows(survey_);
        counted_ = true;
    } else if (!validatePlainRows(survey_)) {
        counted_ = true;
        setMenus(true, {"mnuRow", "mnuStat", "mnuDistance", "mnuGrid", "mnuData"});
    }
    clickOn(window, u"cmdDeleteSuspects"_s);
    plotsFollow();
}

}  // namespace tessel
