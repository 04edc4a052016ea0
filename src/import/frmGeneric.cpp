// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmGeneric.h"

#include "app/HelpOpener.h"
#include "base/input_file.h"
#include "base/numbers.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"

#include <QDragEnterEvent>
#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 106;

}  // namespace

frmGeneric::frmGeneric(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    layout()->setMenuBar(menuBar);
    // A file dropped onto the box is to replace its text, as it is anywhere else in the window.
    txtGFile->setAcceptDrops(false);
    optCF_ = {optCF_0, optCF_1, optCF_2, optCF_3, optCF_4, optCF_5, optCF_6, optCF_7};
    for (QRadioButton* option : optCF_)
        colourWhileChecked(*option);
    connect(cmdBrowse, &QPushButton::clicked, this, guarded(this, [this] { cmdBrowse_Click(); }));
    connect(cmdImport, &QPushButton::clicked, this, guarded(this, [this] { cmdImport_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, guarded(this, [this] { reject(); }));
    connect(mnuFormat, &QAction::triggered, this, guarded(this, [this] { mnuFormat_Click(); }));
    const auto help = guarded(this, [this] { openHelp(this, kHelpDocument); });
    connect(cmdHelp, &QPushButton::clicked, this, help);
    connect(mnuGSFIhelp, &QAction::triggered, this, help);
    preparePreview();
    txtGFile->setFocus();
}

void frmGeneric::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFile(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void frmGeneric::dropEvent(QDropEvent* event) {
    txtGFile->setText(droppedFile(*event->mimeData()));
    event->acceptProposedAction();
}

void frmGeneric::cmdBrowse_Click() {
    const QString path = askOpenFile(this, windowTitle(), kAllFiles);
    if (!path.isEmpty()) txtGFile->setText(path);
}

void frmGeneric::mnuFormat_Click() {
    tell(this,
         u"A generic signal data file must satisfy the following format restrictions:\n"
         u"1.  All records must be either comma or space delimited.\n"
         u"2.  The file column structure must exactly match one of the 8 choices shown on the screen.\n"
         u"       (no extra data columns can be present in the file)\n"
         u"3.  There can be no missing data records.\n"
         u"4.  If your file contains row numbers, then the first row must start at 1\n"
         u"       and all remaining rows must increase in a sequential, incremental order."_s);
}

void frmGeneric::cmdImport_Click() {
    bool valid = false;
    CheckInputs(valid);
    if (!valid) return;
    // After a fatal error the window stays, and shows the file that was read.
    if (typing_.isActive()) readBeginning();
    Q_EMIT inputChosen(entries().options);
}

// A file copied in a file manager is pasted as an address, a path copied in a terminal may bring blanks.
frmGeneric::Entries frmGeneric::entries() const {
    Entries entered{numericValue(txtminEC->text().toStdString()), {}};
    entered.options.path = pathMeantBy(txtGFile->text());
    entered.options.cutoff = entered.cutoff.value_or(0);
    const auto checked = std::find_if(optCF_.begin(), optCF_.end(), [](auto* o) { return o->isChecked(); });
    entered.options.layout = kGenericLayouts.at(static_cast<std::size_t>(checked - optCF_.begin()));
    entered.options.decimalCommas = chkDecimalComma->isChecked();
    return entered;
}

void frmGeneric::CheckInputs(bool& valid) {
    const Entries entered = entries();
    valid = false;
    if (!entered.cutoff) return refuse(*txtminEC, u"Error!  Non-numeric minimum EC cutoff value."_s);
    valid = isInputFile(entered.options.path);
    if (!valid) refuse(*txtGFile, u"Please enter a valid input filename."_s);
}

void frmGeneric::refuse(QLineEdit& box, const QString& message) {
    tell(this, message);
    box.setFocus();
    box.selectAll();
}

}  // namespace tessel
