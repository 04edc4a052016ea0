// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/SurveyImport.h"

#include "base/input_file.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "import/error_log.h"
#include "import/fitting_import.h"
#include "import/frmDataControl.h"
#include "import/frmGeneric.h"
#include "import/frmIniDisplay.h"
#include "import/frmTable.h"
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

SurveyImport::SurveyImport(QWidget& parent, const LayerReader* layers)
    : QObject(&parent), parent_(parent), layers_(layers) {}

void SurveyImport::mnuOpen_Click() {
    askForControl({});
}

void SurveyImport::askForControl(const QString& path) {
    auto* const window = new frmDataControl(&parent_);
    connect(window, &frmDataControl::parametersChosen, this, [this, path](TrimbleOptions options) {
        options.path = toPath(path);
        runGuarded(&parent_, [&] { OpenSensorFile(options); });
    });
    showModal(window);
}

void SurveyImport::importFile(const QString& path) {
    switch (fittingImport(readFirstBytes(toPath(path), kFirstBytes))) {
        case FittingImport::kGeneric:
            return openGeneric().txtGFile->setText(path);
        case FittingImport::kTable:
            return openTable().txtFile->setText(path);
        case FittingImport::kTrimble:
            return askForControl(path);
    }
}

void SurveyImport::importLayer(const QString& path) {
    openTable().txtFile->setText(path);
}

void SurveyImport::OpenSensorFile(TrimbleOptions options) {
    if (options.path.empty())
        options.path = toPath(askOpenFile(&parent_, u"Import a Trimble/EM-38 Sensor file"_s, kAllFiles));
    if (options.path.empty()) return;
    theSession().InputFileName = options.path;
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
    openGeneric();
}

frmGeneric& SurveyImport::openGeneric() {
    auto* const window = new frmGeneric(&parent_);
    serve(*window);
    showModal(window);
    return *window;
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

void SurveyImport::mnuImportTable_Click() {
    openTable();
}

frmTable& SurveyImport::openTable() {
    auto* const window = new frmTable(&parent_, tables_, layers_);
    serve(*window);
    showModal(window);
    return *window;
}

void SurveyImport::serve(frmTable& window) {
    connect(&window, &frmTable::inputChosen, this, [this, &window](TableOptions options) {
        runGuarded(&window, [&] {
            options.errorLogPath = errorLogPath(theSession());
            const auto read = [&] {
                return options.layer.empty() ? importTable(options) : tessel::importLayer(options, *layers_);
            };
            const ImportedRows rows =
                run(window, {read, genericImportReport, u"VARN-Tessel File Import Message"_s});
            if (!isFatal(rows)) window.accept();
        });
    });
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
    Q_EMIT imported(result.summary, result.rows);
}

}  // namespace tessel
