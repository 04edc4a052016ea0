// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/generic_preview.h"
#include "ui_frmGeneric.h"

#include <QDialog>
#include <QTimer>

namespace tessel {

class GenericPreviewModel;
class frmMain;

/// The generic import: a comma- or blank-delimited file in one of eight column layouts. The file's name may
/// be typed, pasted, dropped or browsed for. Shortly after it has changed, the beginning of the file is shown
/// as the chosen layout reads it.
class frmGeneric : public QDialog, public Ui::frmGeneric {
    Q_OBJECT

  public:
    explicit frmGeneric(frmMain& main);

  Q_SIGNALS:
    /// The survey in memory is another one, whatever its row numbers are worth.
    void imported(const ImportSummary& summary);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void cmdBrowse_Click();
    void cmdImport_Click();
    void mnuFormat_Click();
    void CheckInputs(bool& valid);
    void GetInputData(bool& succeeded);
    void report(const GenericImportResult& result);
    void reportRows(const GenericImportResult& result);
    void replaceSurvey(GenericImportResult& result);
    void refuse(QLineEdit& box, const QString& message);
    std::string inputPath() const;
    GenericLayout chosenLayout() const;

    void preparePreview();
    void fileNameChanged();
    void readBeginning();
    void layoutChanged();
    void showPreview();
    void tellKind();
    void tellFit(const GenericPreview& preview, int columns);
    QString fittingCaptions(const GenericPreview& preview) const;

    frmMain& main_;
    std::array<QRadioButton*, 8> optCF_;
    GenericPreviewModel* preview_ = nullptr;
    QTimer typing_;           // runs from a change of the file's name until its beginning is read
    std::string firstBytes_;  // of the file that is shown
    FileKind kind_;
    QString problem_;  // why there is nothing to show, or empty
};

}  // namespace tessel
