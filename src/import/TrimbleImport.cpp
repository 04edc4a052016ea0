// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/TrimbleImport.h"

#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "base/survey_changes.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "import/ImportMessages.h"
#include "import/error_log.h"
#include "import/frmDataControl.h"
#include "import/frmIniDisplay.h"
#include "import/import_report.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace tessel {

TrimbleImport::TrimbleImport(frmMain& main) : QObject(&main), main_(main) {}

void TrimbleImport::mnuOpen_Click() {
    auto* const window = new frmDataControl(&main_);
    connect(window, &frmDataControl::parametersChosen, this, [this](const TrimbleOptions& options) {
        guarded(&main_, [this, options] { OpenSensorFile(options); })();
    });
    showModal(window);
}

void TrimbleImport::OpenSensorFile(TrimbleOptions options) {
    const QString path = askOpenFile(&main_, main_.mnuOpen->text().remove(u'&'), kAllFiles);
    if (path.isEmpty()) return;
    options.path = theSession().InputFileName = toPath(path);
    options.errorLogPath = errorLogPath(theSession());
    auto* const window = new frmIniDisplay(&main_, options, lastLayout_);
    connect(window, &frmIniDisplay::formatChosen, this, [this](const TrimbleOptions& complete) {
        lastLayout_ = complete;
        guarded(&main_, [this, complete] { Import(complete); })();
    });
    showModal(window);
}

void TrimbleImport::Import(const TrimbleOptions& options) {
    const Hourglass hourglass(&main_);
    TrimbleImportResult result = importTrimbleFile(options);
    report(result);
    theSession().DataSaved = false;
    theSurvey() = std::move(result.survey);
    noteSurveyChange();
    Q_EMIT imported(result.summary);
    if (result.rows == RowDetection::TooManyRows) {
        tell(&main_, QString::fromLatin1(kTooManyRows));
        Q_EMIT tooManyRows();
    }
    main_.menusFollow(theSurvey().NumSites > 0 ? MenuEvent::SitesImported : MenuEvent::NothingImported);
}

void TrimbleImport::report(const TrimbleImportResult& result) {
    tellLogProblem(&main_, result.summary.logProblem);
    tell(&main_, QString::fromStdString(trimbleImportReport(result.survey.NumSites, result.errors)),
         u"VARN-Tesl File Import Message"_s);
}

}  // namespace tessel
