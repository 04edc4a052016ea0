// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmTurns.h"

#include "app/HelpOpener.h"
#include "app/survey.h"
#include "base/numbers.h"
#include "base/whole_numbers.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/OptionButtons.h"
#include "journal/journal.h"
#include "rows/row_acts.h"
#include "rows/row_detection.h"

#include <QHideEvent>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 118;
constexpr int kStepsOfProposal = 100;  // a slider stands there when it means the value proposed

// Two decimals, or three digits of what is small: coordinates may be degrees.
QString metres(double value) {
    if (value == 0 || value >= 1) return QString::fromStdString(pictureFormat(value, 2));
    return QString::number(value, 'g', 3);
}

QString counted(SiteIndex count, const QString& one, const QString& many) {
    return count == 1 ? u"1 "_s + one : u"%1 "_s.arg(count) + many;
}

QString inWords(const RowTurns& found) {
    QString words = u"%1, %2 to %3 m long. %4."_s.arg(
        counted(found.rows, u"row"_s, u"rows"_s), metres(found.shortest), metres(found.longest),
        counted(found.sitesInTurns, u"site in turns"_s, u"sites in turns"_s));
    if (found.gaps > 0)
        words += u" %1 longer than %2%3 m."_s.arg(
            counted(found.gaps, u"gap is"_s, u"gaps are"_s),
            theSurvey().MinDistance > 0 ? u"the minimum distance of "_s : QString(),
            metres(turnGap(theSurvey())));
    return words;
}

}  // namespace

frmTurns::frmTurns(QWidget* parent)
    : QDialog(parent), proposed_(proposedTurnParameters(theSurvey())), searchedWith_(proposed_) {
    setupUi(this);
    inputs_ = {{txtTurn, sldTurn, 1},
               {txtChord, sldChord, proposed_.chord / kStepsOfProposal},
               {txtShortest, sldShortest, proposed_.shortest / kStepsOfProposal}};
    showProposal();
    for (const Input& input : inputs_)
        joinInput(input);
    for (QRadioButton* option : {optTurnsKeep, optTurnsDelete})
        colourWhileChecked(*option);
    tabToChosenOptions(*this);
    connect(cmdOk, &QPushButton::clicked, this, guarded(this, [this] { cmdOk_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
    offerHelp(*this, kHelpDocument, cmdHelp);
    lblTurns->setMinimumHeight(3 * fontMetrics().lineSpacing());
}

// By then those who show what is found listen.
void frmTurns::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) search();
}

void frmTurns::showProposal() {
    txtTurn->setText(metres(proposed_.turnAngle));
    txtChord->setText(metres(proposed_.chord));
    txtShortest->setText(metres(proposed_.shortest));
    sldTurn->setValue(nearestInt(proposed_.turnAngle));
    sldChord->setValue(kStepsOfProposal);
    sldShortest->setValue(kStepsOfProposal);
}

// Box and slider say the same; what is typed stands, whatever the slider can reach.
void frmTurns::joinInput(const Input& input) {
    input.box->setFixedWidth(fontMetrics().horizontalAdvance(u"0000000000"_s) + 16);
    connect(input.slider, &QSlider::valueChanged, this, guarded(this, [this, input] {
                input.box->setText(metres(input.slider->value() * input.unit));
                search();
            }));
    connect(input.box, &QLineEdit::textEdited, this, guarded(this, [this, input] {
                const auto typed = numericValue(input.box->text().toStdString());
                const QSignalBlocker blocker(input.slider);
                if (typed && input.unit > 0) input.slider->setValue(nearestInt(*typed / input.unit));
                search();
            }));
}

std::optional<TurnParameters> frmTurns::entries(QString& fault) const {
    const auto typed = [](const QLineEdit* box) { return numericValue(box->text().toStdString()); };
    const auto turn = typed(txtTurn), chord = typed(txtChord), shortest = typed(txtShortest);
    if (!turn || *turn <= 0 || *turn >= 180)
        fault = u"The angle is a number of degrees, above 0 and below 180."_s;
    else if (!chord || *chord <= 0)
        fault = u"The length is a number of metres above 0."_s;
    else if (!shortest || *shortest < 0)
        fault = u"The shortest row is a number of metres, 0 or more."_s;
    if (!fault.isEmpty()) return {};
    const Survey& survey = theSurvey();
    return TurnParameters{*turn, *chord, *shortest, turnGap(survey), survey.DistanceMode};
}

void frmTurns::search() {
    QString fault;
    const auto parameters = entries(fault);
    if (!parameters) return refuse(fault);
    const Hourglass hourglass(this);
    found_ = findRowTurns(theSurvey(), *parameters);
    searchedWith_ = *parameters;
    showFound();
}

void frmTurns::refuse(const QString& reason) {
    found_ = {};
    lblTurns->setText(reason);
    colourNotice(*lblTurns, true);
    cmdOk->setEnabled(false);
    Q_EMIT previewEnded();
}

void frmTurns::showFound() {
    if (found_.rows == 0) return refuse(u"No stretch is as long as the shortest row."_s);
    const bool tooMany = found_.rows > kMaxRows;
    lblTurns->setText(tooMany ? u"More than %1 rows."_s.arg(kMaxRows) : inWords(found_));
    colourNotice(*lblTurns, tooMany);
    cmdOk->setEnabled(true);
    if (tooMany)
        Q_EMIT previewEnded();
    else
        Q_EMIT rowsFound(found_);
}

void frmTurns::cmdOk_Click() {
    if (found_.rows > kMaxRows) {
        tell(this, QString::fromLatin1(kTooManyRows));
        return txtShortest->setFocus();
    }
    const TurnSites inTurns = optTurnsDelete->isChecked() ? TurnSites::kDelete : TurnSites::kKeep;
    {
        const Hourglass hourglass(this);
        theJournal().perform(searchByTurns(searchedWith_, found_, inTurns),
                             [&](Survey& survey) { return applyRowTurns(survey, found_, inTurns); });
    }
    close();  // what was found belongs to the survey that was
    Q_EMIT surveyChanged();
    Q_EMIT rowsRecalculated();
}

void frmTurns::hideEvent(QHideEvent* event) {
    // Minimised, the window goes on showing.
    if (!event->spontaneous()) Q_EMIT previewEnded();
    QDialog::hideEvent(event);
}

}  // namespace tessel
