// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/SurveyImport.h"

#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "import/error_log.h"
#include "import/frmDataControl.h"
#include "import/frmGeneric.h"
#include "import/frmIniDisplay.h"
#include "import/import_report.h"
#include "journal/journal.h"

#include <filesystem>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

void tellLogProblem(QWidget& window, const std::string& problem) {
    if (problem.empty()) return;
    tell(&window, u"The error log could not be written:\n"_s + fromPath(problem) +
                      u"\n\nThe file has been read without it."_s);
}

}  // namespace

SurveyImport::SurveyImport(QWidget& parent) : QObject(&parent), parent_(parent) {}

void SurveyImport::mnuOpen_Click() {
    auto* const window = new frmDataControl(&parent_);
    connect(window, &frmDataControl::parametersChosen, this, [this](const TrimbleOptions& options) {
        runGuarded(&parent_, [&] { OpenSensorFile(options); });
    });
    showModal(window);
}

void SurveyImport::OpenSensorFile(TrimbleOptions options) {
    const QString path = askOpenFile(&parent_, u"Import a Trimble/EM-38 Sensor file"_s, kAllFiles);
    if (path.isEmpty()) return;
    options.path = theSession().InputFileName = toPath(path);
    options.errorLogPath = errorLogPath(theSession());
    auto* const window = new frmIniDisplay(&parent_, options, lastLayout_);
    connect(window, &frmIniDisplay::formatChosen, this, [this](const TrimbleOptions& complete) {
        lastLayout_ = complete;
        runGuarded(&parent_, [&] { Import(complete); });
    });
    showModal(window);
}

void SurveyImport::Import(const TrimbleOptions& options) {
    run(parent_, {[&] { return importTrimbleFile(options); }, trimbleImportReport,
                  u"VARN-Tesl File Import Message"_s});
}

void SurveyImport::mnuOpen2_Click() {
    auto* const window = new frmGeneric(&parent_);
    serve(*window);
    showModal(window);
}

void SurveyImport::serve(frmGeneric& window) {
    connect(&window, &frmGeneric::inputChosen, this, [this, &window](const GenericOptions& options) {
        runGuarded(&window, [&] {
            bool succeeded = false;
            GetInputData(window, options, succeeded);
            if (succeeded) window.accept();
        });
    });
}

void SurveyImport::GetInputData(frmGeneric& window, GenericOptions options, bool& succeeded) {
    options.errorLogPath = errorLogPath(theSession());
    succeeded = !isFatal(run(window, {[&] { return importGenericFile(options, theSurvey()); },
                                      genericImportReport, u"VARN-Tessel File Import Message"_s}));
}

ImportedRows SurveyImport::run(QWidget& window, const Reader& reader) {
    const Hourglass hourglass(&window);
    ImportResult result = reader.read();
    tellLogProblem(window, result.summary.logProblem);
    tell(&window, QString::fromStdString(reader.report(result.survey.NumSites, result.rejected)),
         reader.title);
    putInPlace(result);
    const std::string rows = importedRowsReport(result.rows);
    if (!rows.empty()) tell(&window, QString::fromStdString(rows));
    if (result.rows == ImportedRows::kTooManyRows) Q_EMIT tooManyRows();
    return result.rows;
}

void SurveyImport::putInPlace(ImportResult& result) {
    std::string path = std::filesystem::absolute(result.summary.path).lexically_normal().string();
    theJournal().replaceSurvey(describe(result), std::move(result.survey));
    theSession().InputFileName = std::move(path);
    theSession().DataSaved = false;
    Q_EMIT imported(result.summary, result.rows);
}

}  // namespace tessel
