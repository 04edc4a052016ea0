// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/generic_preview.h"
#include "ui_frmGeneric.h"

#include <QDialog>
#include <QTimer>

#include <optional>

namespace tessel {

class GenericPreviewModel;

/// Asks for a comma- or blank-delimited file and which of eight column layouts it has. The file's name may be
/// typed, pasted, dropped or browsed for. Shortly after it has changed, the beginning of the file is shown as
/// the chosen layout reads it.
class frmGeneric : public QDialog, public Ui::frmGeneric {
    Q_OBJECT

  public:
    explicit frmGeneric(QWidget* parent);

  Q_SIGNALS:
    /// The file can be read and is to be imported. The window stays until whoever imports it closes it; where
    /// the error log lies is left to them.
    void inputChosen(const GenericOptions& options);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // What stands in the widgets.
    struct Entries {
        std::optional<double> cutoff;  // none where its box holds no number
        GenericOptions options;
    };

    Entries entries() const;
    void cmdBrowse_Click();
    void cmdImport_Click();
    void mnuFormat_Click();
    void CheckInputs(bool& valid);
    void refuse(QLineEdit& box, const QString& message);

    void preparePreview();
    void fileNameChanged();
    void readBeginning();
    void layoutChanged();
    void showPreview();
    void tellKind();
    void tellFit(const GenericPreview& preview, const GenericOptions& options);
    QString fittingCaptions(const GenericPreview& preview) const;

    std::array<QRadioButton*, 8> optCF_;
    GenericPreviewModel* preview_ = nullptr;
    QTimer typing_;           // runs from a change of the file's name until its beginning is read
    std::string firstBytes_;  // of the file that is shown
    FileKind kind_;
    QString problem_;  // why there is nothing to show, or empty
};

}  // namespace tessel
