// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "export/processing_record.h"
#include "export/transect_file.h"
#include "ui_frmOutput.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace tessel {

/// Writes the cleaned survey as a transect file: its name, the row number that the first row gets, or no row
/// numbers at all.
class frmOutput : public QDialog, public Ui::frmOutput {
    Q_OBJECT

  public:
    explicit frmOutput(QWidget* parent = nullptr);

    /// Who knows what has been done to the survey so far. Until told, a record holds the export alone.
    void recordWith(std::function<ProcessingRecord()> record) { record_ = std::move(record); }

  Q_SIGNALS:
    /// The file has been written and DataSaved is set.
    void exported(const RecordedExport& file);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    std::optional<double> beginningRow() const;  // none where its box holds no number
    TransectFormat entries() const;
    void Form_Load();
    void chkNoRow_Click();
    void Command1_Click();
    void Command2_Click();
    bool beginningRowIsValid();
    void showRecordFormat();
    void lookAtRows();
    void showNotice();
    void showRecordName();
    RecordedExport write();

    std::function<ProcessingRecord()> record_ = [] { return ProcessingRecord(); };
    std::string outputPath_;
    SiteIndex withoutRow_ = 0;  // sites that have no row number
};

}  // namespace tessel
