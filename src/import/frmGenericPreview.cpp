// SPDX-License-Identifier: GPL-3.0-or-later
// What frmGeneric shows of the file before it is imported.
#include "base/input_file.h"
#include "base/run_time_error.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "import/GenericPreviewModel.h"
#include "import/frmGeneric.h"

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kTypingPause = 150;  // milliseconds without a change after which a file's name counts as typed
constexpr int kLeastLines = 5;     // of the table, its header among them
constexpr int kKindLines = 2;
constexpr int kFitLines = 3;

// Room for so many lines whatever the text, so that nothing moves when it changes.
void giveRoom(QLabel& label, int lines) {
    label.setFixedHeight(lines * label.fontMetrics().lineSpacing());
}

void tellIn(QLabel& label, const QString& text, bool warning) {
    label.setText(text);
    // Its height is fixed; a height that follows the width would let the window squeeze what is below.
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    colourNotice(label, warning);
}

}  // namespace

void frmGeneric::preparePreview() {
    preview_ = new GenericPreviewModel(this);
    tblPreview->setModel(preview_);
    tblPreview->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    const int line = tblPreview->fontMetrics().lineSpacing() * 5 / 4;
    tblPreview->verticalHeader()->setMinimumSectionSize(line);
    tblPreview->verticalHeader()->setDefaultSectionSize(line);
    tblPreview->setMinimumHeight(kLeastLines * line);
    giveRoom(*lblKind, kKindLines);
    giveRoom(*lblFit, kFitLines);
    typing_.setSingleShot(true);
    typing_.setInterval(kTypingPause);
    connect(&typing_, &QTimer::timeout, this, guarded(this, [this] { readBeginning(); }));
    connect(txtGFile, &QLineEdit::textChanged, this, guarded(this, [this] { fileNameChanged(); }));
    connect(chkDecimalComma, &QCheckBox::clicked, this, guarded(this, [this] { showPreview(); }));
    for (QRadioButton* option : optCF_)
        connect(option, &QRadioButton::toggled, this, guarded(this, [this, option] {
                    if (option->isChecked()) layoutChanged();
                }));
    readBeginning();
}

// The tick was meant for the file before.
void frmGeneric::fileNameChanged() {
    chkDecimalComma->setChecked(false);
    typing_.start();
}

void frmGeneric::readBeginning() {
    typing_.stop();
    firstBytes_.clear();
    kind_ = {};
    problem_.clear();
    const std::string path = entries().options.path;
    if (path.empty())
        problem_ = u"Choose a file: its first lines are shown here as the layout reads them."_s;
    else if (!isInputFile(path))
        problem_ = u"There is no such file, or it is none that can be read."_s;
    else
        try {
            firstBytes_ = readFirstBytes(path, kFirstBytes);
            kind_ = recogniseFileKind(std::string_view(firstBytes_));
        } catch (const RunTimeError& error) {
            problem_ = legible(fromPath(error.description()));
        }
    tellKind();
    showPreview();
}

void frmGeneric::layoutChanged() {
    if (typing_.isActive())
        readBeginning();
    else
        showPreview();
}

void frmGeneric::tellKind() {
    const QString notice = QString::fromStdString(fileKindNotice(kind_));
    tellIn(*lblKind, notice, !kind_.isText);
    lblKind->setVisible(!notice.isEmpty());
    chkDecimalComma->setVisible(kind_.decimalCommas);
    if (!kind_.decimalCommas) chkDecimalComma->setChecked(false);
}

void frmGeneric::showPreview() {
    const GenericOptions options = entries().options;
    GenericPreview preview = previewGenericFile(firstBytes_, kind_, options.layout, options.decimalCommas);
    if (problem_.isEmpty())
        tellFit(preview, options);
    else
        tellIn(*lblFit, problem_, false);
    preview_->show(std::move(preview), options.layout, captionColour(kWarningColour, *tblPreview));
}

void frmGeneric::tellFit(const GenericPreview& preview, const GenericOptions& options) {
    const int columns = options.layout.columns();
    QString sentence = kind_.isText ? QString::fromStdString(fitSentence(preview, columns)) : QString();
    const bool untickedCommas = kind_.decimalCommas && !options.decimalCommas;
    if (untickedCommas)
        sentence = u"No value with a decimal comma is read as a number unless the box above is ticked."_s;
    else if (kind_.isText && preview.lines > 0 && preview.valuesOfMost != columns)
        sentence += u' ' + fittingCaptions(preview);
    const bool fits = preview.lines == 0 || preview.fits(columns);
    const QString doubt = fits ? QString::fromStdString(doubtSentence(preview, options.layout)) : QString();
    if (!doubt.isEmpty()) sentence += u' ' + doubt;
    tellIn(*lblFit, sentence, untickedCommas || !fits || !doubt.isEmpty());
}

QString frmGeneric::fittingCaptions(const GenericPreview& preview) const {
    QStringList captions;
    for (const std::size_t layout : fittingLayouts(preview))
        captions << u'“' + optCF_[layout]->text().simplified() + u'”';
    if (captions.isEmpty()) return u"No layout takes as many."_s;
    return (captions.size() == 1 ? u"This layout would fit: "_s : u"These layouts would fit: "_s) +
           captions.join(u"; "_s) + u'.';
}

}  // namespace tessel
