// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/frmOutput.h"

#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "base/palette16.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "journal/journal.h"

#include <QSignalBlocker>

#include <filesystem>
#include <limits>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 107;
const QString kFileFilter = u"Text Files (*.txt)|*.TXT|Data Files (*.dat)|*.DAT|All Files (*.*)|*"_s;
const QString kReportTitle = u"VARN-Tesl"_s;

// A box that only shows stands on the window's own ground.
void lookReadOnly(QLineEdit& box) {
    QPalette ground = box.palette();
    ground.setBrush(QPalette::Base, ground.brush(QPalette::Window));
    box.setPalette(ground);
}

}  // namespace

frmOutput::frmOutput(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    connect(chkNoRow, &QCheckBox::toggled, this, guarded(this, [this] { chkNoRow_Click(); }));
    connect(chkRecord, &QCheckBox::toggled, this, guarded(this, [this] { showRecordName(); }));
    connect(txtBRN, &QLineEdit::textChanged, this, guarded(this, [this] { showNotice(); }));
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { Command1_Click(); }));
    connect(Command2, &QPushButton::clicked, this, guarded(this, [this] { Command2_Click(); }));
    connect(Command3, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
    offerHelp(*this, kHelpDocument, cmdHelp);
    Form_Load();
}

void frmOutput::Form_Load() {
    // Room for a path of usual length, and for the largest row number.
    Text2->setMinimumWidth(fontMetrics().averageCharWidth() * 64);
    txtBRN->setFixedWidth(fontMetrics().horizontalAdvance(u"0000000000"_s) + 16);
    lookReadOnly(*Text1);
    lookReadOnly(*Text2);
    colourNotice(*lblNotice, true);
    showRecordFormat();
    showRecordName();
    colourWhileChecked(*chkRecord);
    Command2->setEnabled(false);
    txtBRN->setText(u"1"_s);
    lookAtRows();
    Command1->setFocus();
}

std::optional<double> frmOutput::beginningRow() const {
    return numericValue(txtBRN->text().toStdString());
}

TransectFormat frmOutput::entries() const {
    return {!chkNoRow->isChecked(), roundToInt(beginningRow().value_or(1))};
}

void frmOutput::showRecordFormat() {
    const Survey& survey = theSurvey();
    Text1->setText(
        QString::fromStdString(recordFormat(survey.SiteIDPresent, survey.TwoEMColumns, entries().withRows)));
}

void frmOutput::lookAtRows() {
    withoutRow_ = sitesWithoutRow(theSurvey());
    showNotice();
}

void frmOutput::showNotice() {
    const std::string notice = exportNotice(theSurvey(), withoutRow_, entries());
    lblNotice->setText(QString::fromStdString(notice));
    lblNotice->setVisible(!notice.empty());
}

void frmOutput::changeEvent(QEvent* event) {
    // The survey may have changed while another window was in front.
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) lookAtRows();
    QDialog::changeEvent(event);
}

void frmOutput::chkNoRow_Click() {
    if (!entries().withRows &&
        !ask(this,
             u"Attention: This will create a GRID file format, without any row numbers.\n"
             u"Are you sure that you wish to do this?"_s)) {
        const QSignalBlocker quiet(chkNoRow);
        chkNoRow->setChecked(false);
    }
    colourCaption(*chkNoRow, entries().withRows ? kBlack : kLightBlue);
    showRecordFormat();
    showNotice();
}

void frmOutput::Command1_Click() {
    const QString chosen = askSaveFile(this, u"Specify the Output File Name"_s, kFileFilter);
    if (chosen.isEmpty()) return;
    outputPath_ = toPath(chosen);
    Text2->setText(legible(fromPath(outputPath_)));
    Text2->setToolTip(Text2->text());
    Command2->setEnabled(true);
    Command2->setFocus();
    showRecordName();
}

// Which file the record will be, and whether one goes for it, which the file dialog has not asked about.
void frmOutput::showRecordName() {
    const bool isShown = chkRecord->isChecked() && !outputPath_.empty();
    lblRecord->setVisible(isShown);
    if (!isShown) return;
    const std::string path = recordPath(outputPath_);
    std::error_code error;
    const bool replaces = std::filesystem::exists(path, error);
    // Not the name itself, which may be too long for a line.
    const QString name = u"Its name is the file's with .record.yaml behind it."_s;
    lblRecord->setText(replaces ? name + u" It replaces the one that is there."_s : name);
    lblRecord->setToolTip(legible(fromPath(path)));
    colourNotice(*lblRecord, replaces);
}

RecordedExport frmOutput::write() {
    const Hourglass hourglass(this);
    const Survey& survey = theSurvey();
    const TransectFormat format = entries();
    RecordedExport file = beginExport(survey, outputPath_, format);
    if (!chkRecord->isChecked()) {
        writeTransectFile(survey, outputPath_, format);
    } else {
        writeTransectFileAndRecord(survey, outputPath_, format, [&](const WrittenFile& written) {
            file.file.state.size = written.size;
            file.file.sha256 = written.sha256;
            ProcessingRecord record = record_();
            record.exports.push_back(file);
            return recordText(record);
        });
    }
    noteState(file.file);
    return file;
}

bool frmOutput::beginningRowIsValid() {
    const std::optional<double> value = beginningRow();
    if (!value) {
        beep();
        tell(this, u"Error! The beginning row number is non-numeric!"_s);
        return false;
    }
    const double row = roundHalfToEven(*value);
    constexpr int kLargest = std::numeric_limits<int>::max();
    if (row >= 1 && row <= kLargest) return true;
    beep();
    tell(this, row < 1 ? u"Error! The specified beginning row number is < 1!"_s
                       : u"Error! The specified beginning row number is > %1!"_s.arg(kLargest));
    return false;
}

void frmOutput::Command2_Click() {
    if (!beginningRowIsValid()) return;
    const RecordedExport file = write();
    beep();
    tell(this, u"Output data saved to "_s + fromPath(outputPath_), kReportTitle);
    theSession().DataSaved = true;
    Q_EMIT exported(file);
    close();
}

}  // namespace tessel
