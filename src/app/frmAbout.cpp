// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmAbout.h"

#include "app/HelpOpener.h"
#include "desktop/Guarded.h"

namespace tessel {

namespace {

constexpr int kHelpDocument = 101;

}  // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    QFont title = lblName->font();
    title.setPointSizeF(title.pointSizeF() * 1.8);
    title.setBold(true);
    lblName->setFont(title);
    offerHelp(*this, kHelpDocument);
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
}

}  // namespace tessel
