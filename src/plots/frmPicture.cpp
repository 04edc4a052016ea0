// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/frmPicture.h"

#include "app/HelpOpener.h"
#include "base/file_replacement.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 111;

}  // namespace

frmPicture::frmPicture(QWidget* parent, const PlotPicture& picture) : QDialog(parent), picture_(picture) {
    setupUi(this);
    for (QRadioButton* const option : {optPNG, optSVG, optPDF})
        colourWhileChecked(*option);
    optPNG->setChecked(true);
    // Twice the dots of the screen: fine enough for a column of a journal.
    spinWidth->setValue(2 * picture.size().width());
    connect(optPNG, &QRadioButton::toggled, spinWidth, &QWidget::setEnabled);
    connect(cmdSave, &QPushButton::clicked, this, guarded(this, [this] { cmdSave_Click(); }));
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            guarded(this, [this] { openHelp(this, kHelpDocument); }));
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmPicture::Format frmPicture::format() const {
    if (optSVG->isChecked()) return {u"SVG Files (*.svg)|*.svg|All Files (*.*)|*"_s, u"svg"_s};
    if (optPDF->isChecked()) return {u"PDF Files (*.pdf)|*.pdf|All Files (*.*)|*"_s, u"pdf"_s};
    return {u"PNG Files (*.png)|*.png|All Files (*.*)|*"_s, u"png"_s};
}

QByteArray frmPicture::file() const {
    if (optSVG->isChecked()) return picture_.svg();
    return optPDF->isChecked() ? picture_.pdf() : picture_.png(spinWidth->value());
}

void frmPicture::cmdSave_Click() {
    const QString path = askSaveFile(this, windowTitle(), format().filter, format().suffix);
    if (path.isEmpty()) return;
    const Hourglass hourglass(this);
    FileReplacement target(toPath(path));
    const QByteArray bytes = file();
    target.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    target.commit();
    accept();
}

}  // namespace tessel
