// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plots/PlotPicture.h"
#include "ui_frmPicture.h"

#include <QDialog>

namespace tessel {

/// Asks how a plot is to be saved as a picture, and where, and saves it. The file is the old one or the new
/// one, whole.
class frmPicture : public QDialog, public Ui::frmPicture {
    Q_OBJECT

  public:
    /// Requires a picture that is not empty.
    frmPicture(QWidget* parent, const PlotPicture& picture);

  private:
    /// "png", "svg" or "pdf".
    QString chosenKind() const;
    QByteArray file(const QString& kind) const;
    void cmdSave_Click();

    PlotPicture picture_;
};

}  // namespace tessel
