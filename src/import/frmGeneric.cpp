// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmGeneric.h"

#include "app/HelpOpener.h"
#include "app/frmMain.h"
#include "app/survey.h"
#include "base/input_file.h"
#include "base/numbers.h"
#include "base/session.h"
#include "base/survey_changes.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "import/ImportMessages.h"
#include "import/error_log.h"
#include "import/import_report.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 106;

// The first file of what was dropped; empty when it holds none.
QString droppedFile(const QMimeData& data) {
    for (const QUrl& url : data.urls())
        if (const QString path = localPath(url); !path.isEmpty()) return path;
    return {};
}

}  // namespace

frmGeneric::frmGeneric(frmMain& main) : QDialog(&main), main_(main) {
    setupUi(this);
    layout()->setMenuBar(menuBar);
    // A file dropped onto the box is to replace its text, as it is anywhere else in the window.
    txtGFile->setAcceptDrops(false);
    optCF_ = {optCF_0, optCF_1, optCF_2, optCF_3, optCF_4, optCF_5, optCF_6, optCF_7};
    for (QRadioButton* option : optCF_)
        colourWhileChecked(*option);
    connect(cmdBrowse, &QPushButton::clicked, this, guarded(this, [this] { cmdBrowse_Click(); }));
    connect(cmdImport, &QPushButton::clicked, this, guarded(this, [this] { cmdImport_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, guarded(this, [this] { reject(); }));
    connect(mnuFormat, &QAction::triggered, this, guarded(this, [this] { mnuFormat_Click(); }));
    const auto help = guarded(this, [this] { openHelp(this, kHelpDocument); });
    connect(cmdHelp, &QPushButton::clicked, this, help);
    connect(mnuGSFIhelp, &QAction::triggered, this, help);
    preparePreview();
    txtGFile->setFocus();
}

void frmGeneric::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFile(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void frmGeneric::dropEvent(QDropEvent* event) {
    txtGFile->setText(droppedFile(*event->mimeData()));
    event->acceptProposedAction();
}

void frmGeneric::cmdBrowse_Click() {
    const QString path = askOpenFile(this, windowTitle(), kAllFiles);
    if (!path.isEmpty()) txtGFile->setText(path);
}

void frmGeneric::mnuFormat_Click() {
    tell(this,
         u"A generic signal data file must satisfy the following format restrictions:\n"
         u"1.  All records must be either comma or space delimited.\n"
         u"2.  The file column structure must exactly match one of the 8 choices shown on the screen.\n"
         u"       (no extra data columns can be present in the file)\n"
         u"3.  There can be no missing data records.\n"
         u"4.  If your file contains row numbers, then the first row must start at 1\n"
         u"       and all remaining rows must increase in a sequential, incremental order."_s);
}

void frmGeneric::cmdImport_Click() {
    bool valid = false;
    CheckInputs(valid);
    if (!valid) return;
    // After a fatal error the window stays, and shows the file that was read.
    if (typing_.isActive()) readBeginning();
    bool succeeded = false;
    GetInputData(succeeded);
    if (succeeded) accept();
}

void frmGeneric::CheckInputs(bool& valid) {
    valid = false;
    if (!isNumeric(txtminEC->text().toStdString())) {
        refuse(*txtminEC, u"Error!  Non-numeric minimum EC cutoff value."_s);
        return;
    }
    if (!isInputFile(inputPath())) {
        refuse(*txtGFile, u"Please enter a valid input filename."_s);
        return;
    }
    valid = true;
}

void frmGeneric::refuse(QLineEdit& box, const QString& message) {
    tell(this, message);
    box.setFocus();
    box.selectAll();
}

void frmGeneric::GetInputData(bool& succeeded) {
    GenericOptions options;
    options.path = inputPath();
    options.errorLogPath = errorLogPath(theSession());
    options.cutoff = numericValue(txtminEC->text().toStdString()).value_or(0);
    options.layout = chosenLayout();
    options.decimalCommas = chkDecimalComma->isChecked();

    const Hourglass hourglass(this);
    GenericImportResult result = importGenericFile(options, theSurvey());
    report(result);
    replaceSurvey(result);
    reportRows(result);
    succeeded = result.rowCheck == RowCheck::Passed;
}

void frmGeneric::report(const GenericImportResult& result) {
    tellLogProblem(this, result.summary.logProblem);
    tell(this, QString::fromStdString(genericImportReport(result.survey.NumSites, result.dropped)),
         u"VARN-Tessel File Import Message"_s);
}

void frmGeneric::replaceSurvey(GenericImportResult& result) {
    theSession().InputFileName = std::filesystem::absolute(inputPath()).lexically_normal().string();
    theSession().DataSaved = false;
    theSurvey() = std::move(result.survey);
    noteSurveyChange();
    Q_EMIT imported(result.summary);
    if (result.rowCheck != RowCheck::Passed)
        main_.menusFollow(MenuEvent::ImportRefused);
    else
        main_.menusFollow(theSurvey().NumSites > 0 ? MenuEvent::SitesImported : MenuEvent::NothingImported);
}

void frmGeneric::reportRows(const GenericImportResult& result) {
    if (result.rowCheck == RowCheck::FirstRowNotOne)
        tell(this, u"Fatal Error! Initial row # not equal to 1. Input aborted."_s);
    else if (result.rowCheck == RowCheck::NotSequential)
        tell(this, u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s);
    else if (theSurvey().NumRows > kMaxRows)
        tell(this,
             u"Warning! Row count > 250.\n"
             u"This input data file may cause the VARN-Tessel program to crash."_s);
}

// A file copied in a file manager is pasted as an address, a path copied in a terminal may bring blanks.
std::string frmGeneric::inputPath() const {
    return pathMeantBy(txtGFile->text());
}

GenericLayout frmGeneric::chosenLayout() const {
    const auto checked = std::find_if(optCF_.begin(), optCF_.end(), [](auto* o) { return o->isChecked(); });
    return kGenericLayouts.at(static_cast<std::size_t>(checked - optCF_.begin()));
}

}  // namespace tessel
