// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/ProcessingRecords.h"

#include "app/frmMain.h"
#include "base/file_system.h"
#include "desktop/FileNames.h"
#include "desktop/Guarded.h"
#include "export/RecordSaving.h"
#include "export/frmOutput.h"
#include "export/frmSaveTable.h"

#include <QTimer>

#include <filesystem>
#include <limits>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

// Its digest is calculated in less time than anybody notices.
constexpr std::int64_t kSmallFile = std::int64_t{8} << 20;

}  // namespace

ProcessingRecords::ProcessingRecords(frmMain& main) : QObject(&main), main_(main) {}

void ProcessingRecords::noteImport(const ImportSummary& summary) {
    keeper_.noteImport(theJournal(), summary);
    Q_EMIT noted();
    identifyFilesSoon();
}

QString ProcessingRecords::nameBesideSource(const std::string& suffix) const {
    const ImportSummary* const import = importOf(theSurvey());
    if (import == nullptr) return {};
    return fromPath(freeNameBeside(std::filesystem::absolute(import->path).string(), suffix));
}

void ProcessingRecords::serve(frmOutput& window) {
    window.recordWith([this] { return keeper_.record(theJournal()); });
    connect(&window, &frmOutput::exported, this, [this](const RecordedExport& file) {
        keeper_.noteExport(theJournal(), file);
        Q_EMIT noted();
        identifyFilesSoon();
    });
}

void ProcessingRecords::serve(frmSaveTable& window) {
    window.propose(nameBesideSource("csv"));
    connect(&window, &frmSaveTable::saved, this, [this](const RecordedExport& file) {
        keeper_.noteExport(theJournal(), file);
        Q_EMIT noted();
        identifyFilesSoon();
        tellSaved(u"Table"_s, file.file.path);
    });
}

void ProcessingRecords::mnuRecord_Click() {
    const std::string path =
        saveRecord(&main_, nameBesideSource("record.yaml"), [this] { return keeper_.record(theJournal()); });
    if (path.empty()) return;
    tellSaved(u"Processing record"_s, path);
}

void ProcessingRecords::tellSaved(const QString& what, const std::string& path) {
    const std::string name = std::filesystem::path(path).filename().string();
    main_.showMessage(what + u" saved to "_s + legible(fromPath(name)));
}

const SavedRecords& ProcessingRecords::completeRecords() {
    keeper_.identifyFiles(std::numeric_limits<std::int64_t>::max());
    return keeper_.records();
}

// As long as a card is in its slot. A large file is looked at only when its digest is wanted.
void ProcessingRecords::identifyFilesSoon() {
    QTimer::singleShot(0, this, guarded(&main_, [this] { keeper_.identifyFiles(kSmallFile); }));
}

}  // namespace tessel
