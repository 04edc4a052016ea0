// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/processing_record.h"
#include "export/table_file.h"
#include "ui_frmSaveTable.h"

#include <QDialog>

#include <utility>
#include <vector>

namespace tessel {

/// Writes the survey as a table for other programs: which columns, what stands between them, and whether the
/// sites that were taken out are listed too.
class frmSaveTable : public QDialog, public Ui::frmSaveTable {
    Q_OBJECT

  public:
    explicit frmSaveTable(QWidget* parent = nullptr);

    /// The path that is offered for the table.
    void propose(const QString& path) { proposed_ = path; }

  Q_SIGNALS:
    /// The table has been written.
    void saved(const RecordedExport& file);

  private:
    TableFormat entries() const;
    void Form_Load();
    void showNotice();
    void cmdSave_Click();

    std::vector<std::pair<TableColumn, QCheckBox*>> columns_;
    std::string positionUnit_;
    QString proposed_;
};

}  // namespace tessel
