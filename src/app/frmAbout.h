// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui_frmAbout.h"

#include <QDialog>

namespace tessel {

/// Says what the program is, which version, and under which licence it may be used.
class frmAbout : public QDialog, public Ui::frmAbout {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent = nullptr);
};

}  // namespace tessel
