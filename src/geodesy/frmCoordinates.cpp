// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/frmCoordinates.h"

#include "app/HelpOpener.h"
#include "app/survey_facts.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/SpokenNames.h"
#include "desktop/Windows.h"
#include "geodesy/coordinate_systems.h"

#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 121;
// As many as anybody looks through.
constexpr std::size_t kMostSystems = 200;

}  // namespace

frmCoordinates::frmCoordinates(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    nameClearButton(*txtSystem);
    for (QRadioButton* const option : {optGrid, optDegrees, optMinutes, optCRS}) {
        colourWhileChecked(*option);
        connect(option, &QRadioButton::toggled, this, guarded(this, [this, option] {
                    if (option->isChecked()) kindChosen();
                }));
    }
    colourWhileChecked(*chkLatitudeFirst);
    connect(chkLatitudeFirst, &QCheckBox::toggled, this, guarded(this, [this] { kindChosen(); }));
    connect(txtSystem, &QLineEdit::textChanged, this, guarded(this, [this] { findSystems(); }));
    connect(lstSystems, &QListWidget::currentRowChanged, this, guarded(this, [this] { showNotices(); }));
    connect(cmdApply, &QPushButton::clicked, this, guarded(this, [this] { cmdApply_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    offerHelp(*this, kHelpDocument, cmdHelp);
    Form_Load();
}

void frmCoordinates::Form_Load() {
    const int system = theSurvey().PositionsCRS;
    const bool degrees = system == 0 && surveyFacts(theSurvey()).looksLikeDegrees;
    {
        const QSignalBlocker quiet(txtSystem);
        if (system != 0) txtSystem->setText(QString::number(system));
    }
    lstSystems->setMinimumHeight(6 * lstSystems->fontMetrics().lineSpacing());
    colourNotice(*lblNotice, true);
    (system != 0 ? optCRS : degrees ? optDegrees : optGrid)->setChecked(true);
}

PositionRequest frmCoordinates::entries() const {
    PositionRequest request;
    request.kind = optDegrees->isChecked()   ? PositionKind::kDegrees
                   : optMinutes->isChecked() ? PositionKind::kDegreesMinutes
                   : optCRS->isChecked()     ? PositionKind::kCRS
                                             : PositionKind::kGrid;
    request.latitudeFirst = chkLatitudeFirst->isChecked();
    const int chosen = lstSystems->currentRow();
    if (chosen >= 0) request.system = systems_[static_cast<std::size_t>(chosen)]->number;
    return request;
}

void frmCoordinates::kindChosen() {
    const Hourglass hourglass(this);
    const PositionRequest request = entries();
    check_ = request.converts() ? checkPositions(theSurvey(), request) : PositionCheck();
    chkLatitudeFirst->setEnabled(request.converts());
    fraSystem->setEnabled(request.kind != PositionKind::kGrid);
    fraSystem->setTitle(request.converts() ? u"Convert them to metres in"_s : u"The coordinate system"_s);
    if (check_.middle) {
        const QSignalBlocker quiet(txtSystem);
        txtSystem->setText(QString::number(utmZoneAt(*check_.middle)));
    }
    findSystems();
}

void frmCoordinates::findSystems() {
    systems_ = findCoordinateSystems(txtSystem->text().toStdString(), check_.middle, kMostSystems);
    {
        const QSignalBlocker quiet(lstSystems);
        lstSystems->clear();
        for (const CoordinateSystem* const system : systems_) {
            lstSystems->addItem(QString::fromStdString(shownName(*system)));
            lstSystems->item(lstSystems->count() - 1)->setToolTip(QString::fromStdString(system->area));
        }
        // What nobody has asked for is not chosen: the first system of all is nobody's.
        lstSystems->setCurrentRow(systems_.empty() || txtSystem->text().trimmed().isEmpty() ? -1 : 0);
    }
    showNotices();
}

// Why the request cannot be carried out; empty if it can.
QString frmCoordinates::whatIsWrong() const {
    const PositionRequest request = entries();
    if (request.kind == PositionKind::kGrid) return {};
    if (request.converts() && check_.positions == 0) return u"No position can be one in degrees."_s;
    if (coordinateSystems().empty()) return u"The list of coordinate systems (proj.db) was not found."_s;
    if (systems_.empty()) return u"No coordinate system has this number or these words."_s;
    if (request.system == 0) return u"Type a number or words of a name, and choose a system."_s;
    return QString::fromStdString(whyNotInMetres(request.system));
}

void frmCoordinates::showNotices() {
    const QString wrong = whatIsWrong();
    const PositionRequest request = entries();
    cmdApply->setEnabled(wrong.isEmpty());
    QStringList notices;
    if (!wrong.isEmpty()) notices << wrong;
    if (const std::string bad = badPositionsInWords(theSurvey(), check_); !bad.empty())
        notices << QString::fromStdString(bad);
    lblNotice->setText(notices.join(u'\n'));
    lblRows->setText(!request.converts()
                         ? u"X and Y stay as they are."_s
                         : u"The row numbers stay as they are. Find the rows anew afterwards, "
                           u"with a distance in metres."_s);
}

void frmCoordinates::cmdApply_Click() {
    const PositionRequest request = entries();
    if (changesSurvey(theSurvey(), request)) {
        const Hourglass hourglass(this);
        ConvertedPositions positions = convertedPositions(theSurvey(), request);
        theJournal().perform(describe(positions),
                             [&](Survey& survey) { return replacePositions(survey, std::move(positions)); });
        Q_EMIT positionsChanged();
    }
    accept();
}

}  // namespace tessel
