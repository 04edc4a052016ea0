// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/SurveyFiles.h"

#include "app/frmMain.h"
#include "base/file_system.h"
#include "base/run_time_error.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "program/ProcessingRecords.h"
#include "rows/row_acts.h"
#include "rows/row_editing.h"
#include "storage/point_layers.h"
#include "storage/survey_file.h"

#include <filesystem>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

const QString kSurveyFiles = u"Survey files (*.gpkg)|*.gpkg|All Files (*.*)|*"_s;
constexpr int kWidestName = 200;  // pixels

QString nameOf(const std::string& path) {
    return legible(fromPath(std::filesystem::path(path).filename().string()));
}

std::string absolutePath(const std::string& path) {
    return std::filesystem::absolute(path).lexically_normal().string();
}

// Nothing for a file that went away as soon as it was there.
std::optional<FileState> stateOf(const std::string& path) {
    try {
        return stateOfInputFile(path);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

template <typename Change>
void changeMenus(Journal& journal, Change change) {
    Journal::forEachField(journal, [&](auto&, auto&, auto& acts, auto&, auto&, auto& before, auto&...) {
        before = change(before);
        for (Act& act : acts)
            act.menus = change(act.menus);
    });
}

// Another version counts menu items otherwise.
void countMenusAsToday(Journal& journal, const std::vector<std::string>& names) {
    if (!names.empty()) changeMenus(journal, [&](MenuState menus) { return menusOfToday(menus, names); });
}

// The error log that lies there now is another import's.
void forgetLogs(Journal& journal, SavedRecords& records) {
    changeMenus(journal, [](MenuState menus) { return menus & ~bitOf("mnuEL"); });
    for (SavedImport& import : records.imports) {
        import.summary.logPath.clear();
        import.summary.logProblem.clear();
        import.summary.firstLogLines.clear();
    }
}

// Whether it was left in the middle of the map, perhaps before it was noted that the survey cannot stay so.
bool hasGapsBetweenRows(const Journal& journal) {
    const std::size_t position = journal.position();
    if (journal.survey().NumSites == 0) return false;
    return !journal.canRestAt(position) ||
           (position > 0 && journal.act(position - 1).kind == ActKind::kDeleteMasked &&
            !ValidateRowInfo(journal.survey()));
}

}  // namespace

SurveyFiles::SurveyFiles(frmMain& main, ProcessingRecords& records, const std::string& stateFolder)
    : QObject(&main),
      main_(main),
      records_(records),
      keeper_(stateFolder, [this](const std::string& problem) { tellOfRecovery(problem); }),
      left_(findLeftWork(stateFolder)) {
    theJournal().watch(
        [this](JournalEvent event) { keeper_.follow(event, theJournal(), records_.records()); });
    connect(&records_, &ProcessingRecords::noted, this, [this] {
        if (!isSaved()) keeper_.follow(theJournal(), records_.records());
        followJournal();
    });
    connect(&main_, &frmMain::left, this, [this] { keeper_.discard(); });
    connect(main_.cmdReopen, &QPushButton::clicked, this, guarded(&main_, [this] { reopenLeftWork(); }));
    connect(main_.cmdDiscard, &QPushButton::clicked, this, guarded(&main_, [this] { discardLeftWork(); }));
    offerLeftWork();
}

SurveyFiles::~SurveyFiles() {
    theJournal().watch({});
}

void SurveyFiles::mnuOpenSurvey_Click() {
    const QString chosen = askOpenFile(&main_, u"Open a saved survey"_s, kSurveyFiles);
    if (!chosen.isEmpty()) open(toPath(chosen));
}

void SurveyFiles::mnuSaveSurvey_Click() {
    if (path_.empty() || !fileIsAsWeKnowIt()) return mnuSaveSurveyAs_Click();
    save(path_);
}

void SurveyFiles::mnuSaveSurveyAs_Click() {
    const QString proposed = path_.empty() ? records_.nameBesideSource(kSurveyFileSuffix)
                                           : fromPath(freeNameBeside(path_, kSurveyFileSuffix));
    const QString chosen = askSaveFile(&main_, u"Save the survey"_s, kSurveyFiles,
                                       QString::fromLatin1(kSurveyFileSuffix), proposed);
    if (!chosen.isEmpty()) save(toPath(chosen));
}

// Whoever has changed it meanwhile, in a GIS say, keeps what he has done unless he says otherwise. Throws
// where that cannot be known.
bool SurveyFiles::fileIsAsWeKnowIt() const {
    try {
        return state_ == stateOfInputFile(path_);
    } catch (const RunTimeError&) {
        std::error_code error;
        const auto type = std::filesystem::status(path_, error).type();
        if (type == std::filesystem::file_type::none)
            throw RunTimeError::file(path_, "cannot be written", error.value());
        return type == std::filesystem::file_type::not_found;
    }
}

void SurveyFiles::save(const std::string& chosen) {
    const Hourglass hourglass(&main_);
    const std::string path = absolutePath(chosen);
    saveSurvey(path, theJournal(), records_.completeRecords());
    keeper_.setAside();
    noteFile(path, stateOf(path));
    main_.showMessage(u"Survey saved to "_s + nameOf(path));
}

bool SurveyFiles::isSurveyFile(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    return fromPath(extension).compare(u'.' + QString::fromLatin1(kSurveyFileSuffix), Qt::CaseInsensitive) ==
               0 ||
           geoPackageLayers().layersIn(path).has_value();
}

// What of another program's file can be read is imported, which the user can take back.
void SurveyFiles::open(const std::string& path) {
    if (isForeignGeoPackage(path) &&
        !geoPackageLayers().layersIn(path).value_or(std::vector<PointLayer>()).empty()) {
        Q_EMIT foreignChosen(fromPath(path));
        return;
    }
    if (!mayReplaceSurvey()) return;
    const Hourglass hourglass(&main_);
    const std::string absolute = absolutePath(path);
    std::optional<FileState> known;
    adopt(openSurvey(absolute, &known));
    keeper_.discard();
    noteFile(absolute, known);
    Q_EMIT opened();
    main_.showMessage(u"Survey opened from "_s + nameOf(path));
}

void SurveyFiles::adopt(SavedWork work) {
    countMenusAsToday(work.journal, work.records.menuItems);
    forgetLogs(work.journal, work.records);
    records_.become(std::move(work.records));
    theJournal().become(std::move(work.journal));
}

bool SurveyFiles::mayReplaceSurvey() {
    return isSaved() || ask(&main_,
                            u"The survey has changes that have not been saved.\n"
                            u"Are you sure that you wish to open another one?"_s);
}

void SurveyFiles::noteFile(const std::string& path, const std::optional<FileState>& state) {
    path_ = path;
    state_ = state;
    saved_ = placeNow();
    letGoOfReopened();
    followJournal();
}

// In the middle of an act perhaps, behind which the line is to follow whatever comes.
void SurveyFiles::tellOfRecovery(const std::string& problem) {
    recoveryProblem_ = problem.empty() ? QString() : legible(fromPath(problem));
    if (problem.empty()) letGoOfReopened();
    QMetaObject::invokeMethod(this, &SurveyFiles::followJournal, Qt::QueuedConnection);
}

void SurveyFiles::letGoOfReopened() {
    if (reopened_) reopened_->remove();
    reopened_.reset();
}

void SurveyFiles::offerLeftWork() {
    main_.recoveryOffer->setVisible(!left_.empty());
}

// What cannot be read stays, and so does what is offered.
void SurveyFiles::reopenLeftWork() {
    if (left_.empty() || !mayReplaceSurvey()) return;
    const Hourglass hourglass(&main_);
    bool isAll = true;
    adopt(readLeftWork(isAll));
    keeper_.discard();
    path_.clear();
    saved_ = Place();
    const bool isTorn = hasGapsBetweenRows(theJournal());
    if (isTorn) theJournal().cannotRest();
    if (isTorn) theJournal().perform(lossOfRows(), makeOneRow);
    Q_EMIT opened();
    if (isTorn) Q_EMIT rowsLost();
    keeper_.begin(theJournal(), records_.records());
    letGoOfReopened();
    if (isAll) reopened_.emplace(std::move(left_.front()));
    left_.pop_front();
    if (keeper_.isKeeping()) letGoOfReopened();
    offerLeftWork();
    if (!isAll)
        main_.showMessage(u"Not all of it could be brought back; it is offered again with the next start"_s);
}

// What cannot be read does not bar the way to the others.
SavedWork SurveyFiles::readLeftWork(bool& isAll) {
    try {
        // Twice what is known here, so that a way back leads to nothing that is forgotten.
        return left_.front().read(2 * theJournal().mostBytes(), &isAll);
    } catch (...) {
        left_.push_back(std::move(left_.front()));
        left_.pop_front();
        throw;
    }
}

void SurveyFiles::discardLeftWork() {
    if (left_.empty()) return;
    left_.front().remove();
    left_.pop_front();
    offerLeftWork();
}

SurveyFiles::Place SurveyFiles::placeNow() const {
    const Journal& journal = theJournal();
    const std::size_t exports = records_.records().exports.size();
    if (journal.position() == 0) return {journal.actsInForce(), {}, exports};
    return {journal.actsInForce(), journal.act(journal.position() - 1).time, exports};
}

void SurveyFiles::followJournal() {
    const bool isAny = theJournal().size() + theJournal().forgotten() > 0;
    main_.mnuSaveSurvey->setEnabled(isAny);
    main_.mnuSaveSurveyAs->setEnabled(isAny);
    QStringList parts;
    if (!path_.empty()) parts << main_.fontMetrics().elidedText(nameOf(path_), Qt::ElideMiddle, kWidestName);
    if (isAny && !isSaved()) parts << (path_.empty() ? u"Survey not saved"_s : u"changes not saved"_s);
    if (!recoveryProblem_.isEmpty()) parts << u"not kept for a crash"_s;
    main_.lblSurveyFile->setText(parts.join(u" \u2013 "_s));
    main_.lblSurveyFile->setToolTip(
        QStringList({legible(fromPath(path_)), recoveryProblem_}).join(u'\n').trimmed());
}

}  // namespace tessel
