// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/frmSaveTable.h"

#include "app/HelpOpener.h"
#include "app/survey_facts.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/Windows.h"

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 120;

RecordedExport recordOf(const Survey& survey, const TableFormat& format, const std::string& path) {
    RecordedExport file;
    file.file.path = std::filesystem::absolute(path).lexically_normal().string();
    file.time = std::chrono::system_clock::now();
    file.format = tableColumns(format);
    file.sites = survey.NumSites;
    const bool withRows = std::ranges::find(format.columns, TableColumn::kRow) != format.columns.end();
    file.firstRow = withRows ? 1 : 0;
    file.isOfThisState = true;
    noteState(file.file);
    return file;
}

// Not of the survey itself, and in no layout of the generic import.
bool isExtra(TableColumn column) {
    return column == TableColumn::kLine || column == TableColumn::kLongitude ||
           column == TableColumn::kLatitude;
}

}  // namespace

frmSaveTable::frmSaveTable(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    columns_ = {{TableColumn::kSite, chkSite},
                {TableColumn::kX, chkX},
                {TableColumn::kY, chkY},
                {TableColumn::kLongitude, chkLongitude},
                {TableColumn::kLatitude, chkLatitude},
                {TableColumn::kEM1, chkEM1},
                {TableColumn::kEM2, chkEM2},
                {TableColumn::kRow, chkRow},
                {TableColumn::kLine, chkLine}};
    for (QAbstractButton* const button : findChildren<QAbstractButton*>())
        if (button->isCheckable()) colourWhileChecked(*button);
    for (const auto& [column, box] : columns_)
        connect(box, &QCheckBox::toggled, this, guarded(this, [this] { showNotice(); }));
    connect(chkRemoved, &QCheckBox::toggled, this, guarded(this, [this] { showNotice(); }));
    connect(cmdSave, &QPushButton::clicked, this, guarded(this, [this] { cmdSave_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    offerHelp(*this, kHelpDocument, cmdHelp);
    Form_Load();
}

void frmSaveTable::Form_Load() {
    const Survey& survey = theSurvey();
    positionUnit_ = surveyFacts(survey).looksLikeDegrees ? "degrees" : "m";
    for (const auto& [column, box] : columns_) {
        const bool there = hasColumn(survey, column);
        box->setText(QString::fromStdString(columnName(column, positionUnit_)));
        box->setEnabled(there);
        box->setChecked(there && !isExtra(column));
    }
    const SiteIndex removed = removedSites(theJournal());
    chkRemoved->setEnabled(removed > 0);
    lblRemoved->setText(removed > 0 ? u"%1 since the import."_s.arg(removed) : u"None since the import."_s);
    optComma->setChecked(true);
    colourNotice(*lblNotice, true);
    keepRoomWhenHidden(*lblNotice);
    showNotice();
    cmdSave->setFocus();
}

TableFormat frmSaveTable::entries() const {
    TableFormat format;
    for (const auto& [column, box] : columns_)
        if (box->isChecked()) format.columns.push_back(column);
    format.separator = optComma->isChecked() ? ',' : ';';
    format.withRemoved = chkRemoved->isChecked();
    format.positionUnit = positionUnit_;
    return format;
}

void frmSaveTable::showNotice() {
    const TableFormat format = entries();
    const std::string notice = tableNotice(theJournal(), format);
    lblNotice->setText(QString::fromStdString(notice));
    lblNotice->setVisible(!notice.empty());
    cmdSave->setEnabled(!format.columns.empty());
}

void frmSaveTable::cmdSave_Click() {
    const QString chosen =
        askSaveFile(this, windowTitle(), u"Comma-separated values (*.csv)|*.csv|All Files (*.*)|*"_s,
                    u"csv"_s, proposed_);
    if (chosen.isEmpty()) return;
    const Hourglass hourglass(this);
    const std::string path = toPath(chosen);
    const TableFormat format = entries();
    writeTable(theJournal(), path, format);
    Q_EMIT saved(recordOf(theSurvey(), format, path));
    accept();
}

}  // namespace tessel
