// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "desktop/FileNames.h"
#include "export/transect_file.h"
#include "journal/frmHistory.h"
#include "journal/journal.h"
#include "journeys/random/RandomSession.h"
#include "support/UserDriver.h"
#include "support/survey_bits.h"

namespace tessel {

namespace {

constexpr std::size_t kMostSites = 3000;  // of a survey that is kept to compare with
constexpr std::size_t kMostStates = 60;

std::string written(const Survey& survey, const std::string& path) {
    writeTransectFile(survey, path, TransectFormat{});
    return readFile(path);
}

}  // namespace

std::string RandomSession::wayBackAndForth() {
    const std::size_t position = theJournal().position();
    if (position <= 1) return {};
    const std::string path = folder_ / "way.dat";
    // Leaves the parameters behind of an import that came to nothing.
    theJournal().goTo(position - 1);
    theJournal().goTo(position);
    const Survey last = theSurvey();
    const std::string lastFile = written(last, path);
    const std::string firstFile = written(first_, path);
    theJournal().goTo(1);
    std::string difference = differences(theSurvey(), first_);
    if (written(theSurvey(), path) != firstFile) difference += " first file";
    theJournal().goTo(theJournal().size());
    theJournal().goTo(position);
    difference += differences(theSurvey(), last);
    if (written(theSurvey(), path) != lastFile) difference += " last file";
    return difference;
}

// What the survey and the program are like behind so many acts. Of several acts at once only the last is
// known.
void RandomSession::noteState() {
    const std::size_t now = theJournal().position();
    states_.resize(theJournal().size() + 1);
    for (std::size_t between = acts_ + 1; between < now; ++between)
        states_[between].reset();
    if (now != acts_) ownDistance_ = survey_.minDistance;
    if (survey_.sites.size() <= kMostSites) {
        states_[now] = State{survey_, menus_, totalA_, totalB_, counted_, measured_, content_};
        states_[now]->survey.minDistance = ownDistance_;
    } else {
        states_[now].reset();
    }
    if (now == 1) {
        const SurveyParameters own = now == acts_ ? first_ : theSurvey();
        first_ = theSurvey();
        static_cast<SurveyParameters&>(first_) = own;
    }
    if (now > kMostStates) states_[now - kMostStates].reset();
    acts_ = now;
}

bool RandomSession::canTakeBack() const {
    return theJournal().size() > 0;
}

void RandomSession::takeBack() {
    bool back = chance(65);
    if (!canStep(back)) back = !back;
    if (canStep(back) && chance(60))
        step(back);
    else
        jumpInHistory();
    if (difference_.empty() && theJournal().position() != acts_) adoptState();
}

// Whether there is a step to a survey that is known.
bool RandomSession::canStep(bool back) const {
    const Journal& journal = theJournal();
    const std::size_t target = back ? journal.positionBefore() : journal.positionAfter();
    return target != journal.position() && states_[target];
}

void RandomSession::step(bool back) {
    const std::size_t target = back ? theJournal().positionBefore() : theJournal().positionAfter();
    useOrPress(*main_, back ? u"mnuUndo"_s : u"mnuRedo"_s, back ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
    same("the position in the journal", theJournal().position(), target);
}

void RandomSession::jumpInHistory() {
    std::vector<std::size_t> known;
    for (std::size_t position = 0; position < states_.size(); ++position)
        if (states_[position] && theJournal().canRestAt(position)) known.push_back(position);
    chooseItem(*main_, u"mnuHistory"_s);
    auto& window = dynamic_cast<frmHistory&>(shownWindow(u"frmHistory"_s));
    bringToFront(window);
    same<long>("lines of the history", window.lstHistory->model()->rowCount(),
               static_cast<long>(theJournal().size()) + 1);
    const std::size_t target = oneOf(known);
    const QModelIndex line = window.lstHistory->model()->index(static_cast<int>(target), 2);
    window.lstHistory->scrollTo(line);
    if (chance(50)) {
        QTest::mouseClick(window.lstHistory->viewport(), Qt::LeftButton, {},
                          window.lstHistory->visualRect(line).center());
    } else {
        window.lstHistory->setCurrentIndex(line);
        QTest::keyClick(window.lstHistory, Qt::Key_Return);
    }
    same("the position in the history", theJournal().position(), target);
    leave(window, u"cmdClose"_s);
}

// Without row plots nothing but the row dialog can divide a single row.
void RandomSession::offerSingleRow() {
    if (!rowPlotsOpen() && survey_.rows == 1) setMenus(true, {"mnuData"});
}

// The survey goes into its file, and comes back now and then.
void RandomSession::saveAndReopen() {
    const QString path = fromPath(folder_ / "session.gpkg");
    const bool underANewName = chance(30);
    if (!std::exchange(hasFile_, true) || underANewName) expectFile(path, true);
    if (underANewName)
        chooseItem(*main_, u"mnuSaveSurveyAs"_s);
    else
        useOrPress(*main_, u"mnuSaveSurvey"_s, Qt::Key_S, Qt::ControlModifier);
    if (chance(60)) reopen(path);
}

void RandomSession::reopen(const QString& path) {
    expectFile(path);
    useOrPress(*main_, u"mnuOpenSurvey"_s, Qt::Key_O, Qt::ControlModifier);
    plotsHidden();
    // The error log that lies there may be another import's.
    setMenus(false, {"mnuEL"});
    for (auto& state : states_)
        if (state) state->menus["mnuEL"] = false;
    // Without row plots the row dialog is there for any rows.
    if (menus_["mnuHist"]) setMenus(true, {"mnuData"});
    statisticsFollow();
    rowDialog_ = false;
    reached_.note("a survey reopened");
}

void RandomSession::adoptState() {
    const State state = *states_[theJournal().position()];
    survey_ = state.survey;
    totalA_ = state.totalA;
    totalB_ = state.totalB;
    content_ = notedContent_ = state.content;
    noted_ = survey_.sites;
    counted_ = state.counted;
    measured_ = state.measured;
    plotsFollow();
    menus_ = state.menus;
    offerSingleRow();
    acts_ = theJournal().position();
    ownDistance_ = survey_.minDistance;
}

}  // namespace tessel
