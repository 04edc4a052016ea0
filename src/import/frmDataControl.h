// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "import/trimble_reader.h"
#include "ui_frmDataControl.h"

#include <QDialog>

namespace tessel {

/// The first window of the Trimble/EM-38 import: cut-off, minimum distance between rows, measure of distance,
/// conversions of the readings.
class frmDataControl : public QDialog, public Ui::frmDataControl {
    Q_OBJECT

  public:
    explicit frmDataControl(QWidget* parent);

  Q_SIGNALS:
    /// The window was accepted and is closing.
    void parametersChosen(const TrimbleOptions& options);

  private:
    // What stands in the widgets.
    struct Entries {
        std::string cutoff, distance;
        TrimbleOptions options;  // the numbers at the beginning of both texts among them
    };

    Entries entries() const;
    void Command1_Click();
    void refuse(QLineEdit& box, const QString& message);
};

}  // namespace tessel
