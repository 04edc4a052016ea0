// SPDX-License-Identifier: GPL-3.0-or-later
#include "plots/frmPicture.h"

#include "app/HelpOpener.h"
#include "base/file_replacement.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"

#include <QFileInfo>
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

QString frmPicture::chosenKind() const {
    return optSVG->isChecked() ? u"svg"_s : optPDF->isChecked() ? u"pdf"_s : u"png"_s;
}

QByteArray frmPicture::file(const QString& kind) const {
    if (kind == u"svg"_s) return picture_.svg();
    return kind == u"pdf"_s ? picture_.pdf() : picture_.png(spinWidth->value());
}

void frmPicture::cmdSave_Click() {
    const QString chosen = chosenKind();
    const QString filter = u"%1 Files (*.%2)|*.%2|All Files (*.*)|*"_s.arg(chosen.toUpper(), chosen);
    const QString path = askSaveFile(this, windowTitle(), filter, chosen);
    if (path.isEmpty()) return;
    // Other programs go by the name.
    const QString ending = QFileInfo(path).suffix().toLower();
    const bool isKind = ending == u"png"_s || ending == u"svg"_s || ending == u"pdf"_s;
    const Hourglass hourglass(this);
    FileReplacement target(toPath(path));
    const QByteArray bytes = file(isKind ? ending : chosen);
    target.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    target.commit();
    accept();
}

}  // namespace tessel
