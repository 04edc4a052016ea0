// SPDX-License-Identifier: GPL-3.0-or-later
#include "journeys/random/RandomSession.h"

#include "app/frmMain.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/MessageBox.h"
#include "desktop/Printing.h"
#include "journal/journal.h"
#include "plots/RowPlotEditor.h"
#include "program/Program.h"
#include "support/UserDriver.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

// Menu items, buttons and boxes that other tests drive: what has to do with help, pictures, records, tables,
// coordinates, colours and settings, what a program has left behind, and formats that are offered.
const std::set<std::string> kDrivenElsewhere = {
    "cmdHelp",        "mnuHmain1",       "mnuHmain2",    "mnuHmain3",    "mnuPlotHelp",    "mnuHelpAbout",
    "mnuGSFIhelp",    "mnuGDRH1",        "mnuGDRH2",     "mnuGDRH3",     "mnuSDChelp",     "mnuHisthelp",
    "mnuSavePicture", "mnuRecord",       "chkRecord",    "mnuSaveTable", "mnuImportTable", "mnuCoordinates",
    "mnuColourNone",  "mnuColourEM1",    "mnuColourEM2", "comboRow",     "mnusetDTE",      "mnuEL",
    "mnuDPI300",      "mnuDPI600",       "mnuDPI1200",   "cmdReopen",    "cmdDiscard",     "cmdLast",
    "mnuFormat",      "chkDecimalComma", "actionCopy"};

// The submenus that an item stands in.
const std::map<std::string, std::vector<std::string>> kSubmenus = {
    {"mnuX", {"mnuRow", "mnuInvokeIDE"}}, {"mnuY", {"mnuRow", "mnuInvokeIDE"}}, {"mnuIDEW", {"mnuInvokeIDE"}},
    {"mnuTrue_Dis", {"mnuDistance"}},     {"mnuX_Dis", {"mnuDistance"}},        {"mnuY_Dis", {"mnuDistance"}},
    {"mnuGridEM1", {"mnuGridReading"}},   {"mnuGridEM2", {"mnuGridReading"}}};

}  // namespace

const std::vector<RandomSession::Act>& RandomSession::acts() {
    using S = RandomSession;
    const auto choosing = [](const char* item) {
        return [item](const S& session) { return session.canChoose(item); };
    };
    static const std::vector<Act> all = {
        {"import fixed columns", 6, &S::always, &S::importTrimble},
        {"import delimited", 5, &S::always, &S::importGeneric},
        {"import many rows", 7, &S::always, &S::importManyRows},
        {"open row plots", 20, choosing("mnuX"), &S::openRowPlots},
        {"step to a row", 50, &S::canStepRow, &S::stepRow},
        {"plot a row by number", 12, &S::rowPlotsOpen, &S::plotRowNumber},
        {"pick points", 100, &S::rowPlotsOpen, &S::pickPoints},
        {"delete points", 90, &S::canDelete, &S::deletePoints},
        {"finish row plots", 4, &S::rowPlotsOpen, &S::finishRowPlots},
        {"split a row", 25, &S::canSplit, &S::splitRow},
        {"find rows by turns", 6, choosing("mnuTurns"), &S::findTurns},
        {"find suspicious sites", 6, choosing("mnuSuspects"), &S::findSuspectSites},
        {"edit on the map", 14, choosing("mnuIDEW"), &S::editOnMap},
        {"row dialog", 14, &S::canEditRows, &S::editRows},
        {"survey grid", 4, choosing("mnuGrid"), &S::plotGrid},
        {"lag distances", 10, choosing("mnuTrue_Dis"), &S::plotLag},
        {"drag the red line", 25, &S::canDragDistance, &S::dragDistance},
        {"row statistics", 5, choosing("mnuStat"), &S::reviewRows},
        {"adjust readings", 6, choosing("mnuAdjust"), &S::adjust},
        {"histograms", 4, choosing("mnuHist"), &S::histograms},
        {"correlation", 6, choosing("mnuHist"), &S::correlation},
        {"export", 6, choosing("mnuSave"), &S::exportSurvey},
        {"save and reopen", 6, &S::hasActs, &S::saveAndReopen},
        {"clear screen", 2, choosing("mnuClear"), &S::clearScreen},
        {"walk along a row", 30, &S::rowPlotsOpen, &S::walkAlongRow},
        {"look closer", 25, &S::chartShown, &S::lookCloser},
        {"print a row", 6, &S::canPrint, &S::printRow},
        {"try to close", 2, &S::hasUnsaved, &S::tryToClose},
        {"take back", 14, &S::canTakeBack, &S::takeBack},
    };
    return all;
}

RandomSession::RandomSession(std::uint64_t seed) : seed_(seed), random_(seed), reached_(kDrivenElsewhere) {
    startAfresh();
    theSession() = Session{};
    theSession().AppDir = theSession().DataDir = folder_.path();
    setMenus(false, kSurveyItems);
    menus_["mnuSave"] = true;
    setMessageResponder([this](const MessageBox& box) { return respond(box); });
    setFileResponder([this](const FileQuestion& question) { return respondWithFile(question.toSave); });
    setDefaultPrinterName([this] { return printer_; });
    wantKeys();
    wantSituations();
    main_ = createProgram();
    main_->show();
    editor_ = main_->findChild<RowPlotEditor*>();
    letWindowsGo();
    noteState();
}

RandomSession::~RandomSession() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window != main_.get()) window->hide();
    main_.reset();
    setMessageResponder({});
    setFileResponder({});
    setDefaultPrinterName({});
}

std::string RandomSession::run(long acts) {
    for (long number = 1; number <= acts; ++number) {
        std::vector<const Act*> possible;
        for (const Act& act : RandomSession::acts())
            if (act.possible(*this))
                possible.insert(possible.end(), static_cast<std::size_t>(act.weight), &act);
        const Act& act = *oneOf(possible);
        ++made_[act.name];
        try {
            (this->*act.make)();
            letWindowsGo();
            compare();
        } catch (const std::exception& error) {
            differ(error.what());
        }
        if (!difference_.empty())
            return "seed " + std::to_string(seed_) + ", act " + std::to_string(number) + " (" + act.name +
                   "): " + difference_;
    }
    const std::string difference = wayBackAndForth();
    return difference.empty() ? difference
                              : "seed " + std::to_string(seed_) + ", the way back and forth: " + difference;
}

// Boxes and files -------------------------------------------------------------------------------------------

void RandomSession::expect(const QString& text, const QString& title) {
    boxes_.append({title, text, false, true});
}

void RandomSession::expectFailure(const std::string& part) {
    boxes_.append({u"VARN-Tessel"_s, QString::fromStdString(part), false, true, false});
}

void RandomSession::expectQuestion(bool answer, const QString& text) {
    boxes_.append({u"VARN-Tessel"_s, text, true, answer});
}

bool RandomSession::respond(const MessageBox& box) {
    if (boxes_.isEmpty()) {
        differ("unexpected box: " + box.text.toStdString());
        return false;
    }
    const ExpectedBox wanted = boxes_.takeFirst();
    if (wanted.whole || !box.text.contains(wanted.text)) sameText("a box's text", box.text, wanted.text);
    sameText("the title of the box " + box.text.toStdString(), box.title, wanted.title);
    same("the kind of the box " + box.text.toStdString(), box.question, wanted.question);
    return wanted.answer;
}

QString RandomSession::respondWithFile(bool toSave) {
    if (files_.isEmpty()) {
        differ("unexpected file dialog");
        return {};
    }
    const ExpectedFile wanted = files_.takeFirst();
    same("whether a file is to be saved", toSave, wanted.toSave);
    return wanted.answer;
}

void RandomSession::differ(const std::string& what) {
    if (difference_.empty()) difference_ = what;
}

void RandomSession::sameText(const std::string& what, const QString& actual, const QString& wanted) {
    if (actual != wanted)
        differ(what + " is \"" + actual.toStdString() + "\", expected \"" + wanted.toStdString() + "\"");
}

void RandomSession::sameFigure(const std::string& what, const QString& actual, double wanted, int decimals,
                               double size) {
    const double unit = std::pow(10, -decimals);
    const bool format =
        actual.size() - actual.indexOf(u'.') - 1 == decimals || (decimals == 0 && !actual.contains(u'.'));
    const double off = std::abs(actual.toDouble() - wanted);
    if (!format || !(off <= 0.5 * unit + 1e-9 * std::abs(wanted) + 1e-9 * unit + 1e-12 * size))
        differ(what + " is " + actual.toStdString() + ", expected " + std::to_string(wanted));
}

// Menus and plots -------------------------------------------------------------------------------------------

bool RandomSession::canChoose(const std::string& item) const {
    const auto isEnabled = [this](const std::string& name) {
        const auto found = menus_.find(name);
        return found == menus_.end() || found->second;
    };
    const auto submenus = kSubmenus.find(item);
    if (submenus != kSubmenus.end())
        for (const std::string& submenu : submenus->second)
            if (!isEnabled(submenu)) return false;
    return isEnabled(item);
}

void RandomSession::setMenus(bool enabled, const std::vector<std::string>& items) {
    for (const std::string& item : items)
        menus_[item] = enabled;
    menus_["mnuGridReading"] = menus_["mnuGrid"];
    menus_["mnuTurns"] = menus_["mnuSuspects"] = menus_["mnuIDEW"];
}

void RandomSession::plotsHidden() {
    if (editing_ && !survey_.sites.empty()) setMenus(true, {"mnuData"});
    chart_.clear();
    editing_ = false;
    picked_.clear();
    cursor_ = 0;
}

void RandomSession::plotsFollow() {
    statisticsFollow();
    const bool readable = chart_ != u"Chart2D2" || survey_.two || !gridOfEM2_;
    const bool drawn = !survey_.empty() && (chart_ == u"Chart2D1" || (rowsCanBeShown() && readable));
    if (!drawn) return plotsHidden();
    redLine_ = survey_.minDistance;
    if (!editing_) return;
    reached_.note("a row plot that followed");
    counted_ = true;
    showRow(std::clamp(row_, 1, static_cast<int>(survey_.rowSizes().size())));
}

void RandomSession::surveyImported() {
    plotsHidden();
    statisticsFollow();
    content_ = ++contents_;
    rowDialog_ = false;
    setMenus(!survey_.empty(), kSurveyItems);
    if (!survey_.empty()) setMenus(true, {"mnuSave"});
}

void RandomSession::noSitesLeft() {
    reached_.note("no sites left");
    expect(u"There is no more point left in the file!"_s);
    setMenus(false,
             {"mnuSave", "mnuRecord", "mnuSaveTable", "mnuCoordinates", "mnuInvokeIDE", "mnuIDEW", "mnuRow",
              "mnuData", "mnuStat", "mnuDistance", "mnuGrid", "mnuSigCorr", "mnuHist", "mnuClear"});
}

bool RandomSession::choose(const QString& item, bool wantsRows) {
    const bool opens = !survey_.empty() && (!wantsRows || survey_.rowsUsable());
    if (survey_.empty()) {
        expect(u"There is no more point left in the file!"_s);
    } else if (!opens) {
        expect(u"Too many rows: Please specify a larger distance value"_s);
        reached_.note("too many rows for a view");
        rowDialog_ = true;
    } else if (wantsRows && survey_.rowSizes().size() > 250 && item != u"mnuStat"_s) {
        expect(
            u"Subscript out of range\nNo more than 250 rows can be shown or edited. Choose Delete / Join / "
            u"Re-calculate Rows in the Edit menu and recalculate the row numbering with a larger distance."_s);
        reached_.note("a view of more rows than there may be");
        chooseItem(*main_, item);
        return false;
    }
    chooseItem(*main_, item);
    return opens;
}

}  // namespace tessel
