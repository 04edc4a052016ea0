// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows/frmDataEdit.h"

#include "app/HelpOpener.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "journal/journal.h"
#include "rows/row_acts.h"

#include <QHideEvent>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 112;

QString rowsInWords(int rows) {
    if (rows > kMaxRows) return u"more than %1 rows"_s.arg(kMaxRows);
    return rows == 1 ? u"1 row"_s : u"%1 rows"_s.arg(rows);
}

// Two things: the rows may come from a file, and an import that was given up may have left its distance.
QString inForce(const Survey& survey) {
    const int rows = rowsAreUsable(survey) ? survey.NumRows : std::max(survey.RowIndex, 0);
    if (survey.DistanceMode < 1 || survey.DistanceMode > 3)
        return u"In force now: %1"_s.arg(rowsInWords(rows));
    const QString measures[] = {u"true distance"_s, u"X distance"_s, u"Y distance"_s};
    return u"In force now: %1, minimum distance %3 m (%2)"_s.arg(
        rowsInWords(rows), measures[survey.DistanceMode - 1],
        QLocale::c().toString(survey.MinDistance, 'g', QLocale::FloatingPointShortest));
}

RowDetection findRows(QWidget* window, int distanceMode, double minDistance) {
    const Hourglass hourglass(window);
    return theJournal()
        .perform(searchForRows(distanceMode, minDistance),
                 [=](Survey& survey) { return Recalculate_Rows(survey, distanceMode, minDistance); })
        .outcome;
}

}  // namespace

frmDataEdit::frmDataEdit(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    operations_ = {
        {Option1, {{lblText2, Text2}, {lblText3, Text3}}, &frmDataEdit::joinRows, 0},
        {Option2, {{lblText4, Text4}}, &frmDataEdit::deleteRow, 0},
        {Option3, {{lblText1, Text1, lblUnit1}}, &frmDataEdit::recalculate, 1},
        {Option4, {{lblText5, Text5, lblUnit5}}, &frmDataEdit::recalculate, 2},
        {Option5, {{lblText6, Text6, lblUnit6}}, &frmDataEdit::recalculate, 3},
    };
    for (const Operation& operation : operations_) {
        colourWhileChecked(*operation.option);
        connect(operation.option, &QRadioButton::toggled, this,
                guarded(this, [this, &operation] { Option_Click(operation); }));
        for (const Input& input : operation.inputs) {
            for (QWidget* widget : widgetsOf(input))
                keepRoomWhenHidden(*widget);
            if (operation.distanceMode > 0)
                connect(input.box, &QLineEdit::textChanged, this, guarded(this, [this] { showForecast(); }));
            input.box->setFixedWidth(fontMetrics().horizontalAdvance(u"0000000000"_s) + 16);
        }
    }
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { Command1_Click(); }));
    connect(Command2, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
    offerHelp(*this, kHelpDocument, cmdHelp);
    Form_Load();
}

QList<QWidget*> frmDataEdit::widgetsOf(const Input& input) {
    QList<QWidget*> widgets{input.label, input.box};
    if (input.unit != nullptr) widgets << input.unit;
    return widgets;
}

frmDataEdit::Entries frmDataEdit::entries() const {
    const auto chosen =
        std::find_if(operations_.cbegin(), operations_.cend(),
                     [](const Operation& operation) { return operation.option->isChecked(); });
    if (chosen == operations_.cend()) return {};
    const auto text = [](const Input& input) { return input.box->text().toStdString(); };
    return {&*chosen, text(chosen->inputs.first()), text(chosen->inputs.last())};
}

// The dialog as it opens: nothing chosen, nothing entered.
void frmDataEdit::Form_Load() {
    for (const Operation& operation : operations_) {
        operation.option->setAutoExclusive(false);
        operation.option->setChecked(false);
        operation.option->setAutoExclusive(true);
        for (const Input& input : operation.inputs)
            input.box->clear();
        Option_Click(operation);
    }
    followRowLimit();
    showInForce();
    lblRows->setMinimumHeight(fontMetrics().height());
    Option1->isEnabled() ? Option1->setFocus() : Option3->setFocus();
}

// Rows beyond the limit can only be found anew.
void frmDataEdit::followRowLimit() {
    const bool editable = theSurvey().RowIndex <= kMaxRows;
    const Entries entered = entries();
    if (!editable && entered.operation != nullptr && !entered.isRecalculation()) {
        Option1->setEnabled(false);
        Option2->setEnabled(false);
        Form_Load();
        return;
    }
    Option1->setEnabled(editable);
    Option2->setEnabled(editable);
}

void frmDataEdit::followSurvey() {
    followRowLimit();
    // A number that was typed for one row would delete or join another.
    if (numRows_ != theSurvey().NumRows || importNumber_ != theSurvey().importNumber)
        for (QLineEdit* box : {Text2, Text3, Text4})
            box->clear();
    showInForce();
    lookAhead();
}

void frmDataEdit::showInForce() {
    numRows_ = theSurvey().NumRows;
    importNumber_ = theSurvey().importNumber;
    lblInForce->setText(inForce(theSurvey()));
}

// Once for each choice and each change of the survey, so that a key press costs nothing.
void frmDataEdit::lookAhead() {
    const Entries entered = entries();
    forecast_ =
        entered.isRecalculation() ? RowForecast(theSurvey(), entered.operation->distanceMode) : RowForecast();
    showForecast();
}

void frmDataEdit::showForecast() {
    const Entries entered = entries();
    std::optional<double> typed;
    if (entered.isRecalculation()) {
        const DistanceEntry entry = checkDistance(entered.first);
        if (entry.fault == EntryFault::kNone) typed = entry.distance;
    }
    const int rows = typed ? forecast_.rows(*typed) : 0;
    lblRows->setText(rows > 0 ? rowsInWords(rows) : QString());
    colourNotice(*lblRows, rows > kMaxRows);
    Q_EMIT distanceTyped(entered.isRecalculation() ? entered.operation->distanceMode : 0, typed);
    Q_EMIT rowsForeseen(typed ? forecast_.rowSites(*typed) : std::vector<IndexRange>());
}

void frmDataEdit::enterDistance(int distanceMode, double distance) {
    for (const Operation& operation : operations_) {
        if (operation.distanceMode != distanceMode) continue;
        operation.option->setChecked(true);
        operation.inputs.first().box->setText(
            QLocale::c().toString(distance, 'f', QLocale::FloatingPointShortest));
    }
}

void frmDataEdit::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) Q_EMIT shownChanged(true);
    QDialog::showEvent(event);
}

void frmDataEdit::hideEvent(QHideEvent* event) {
    // Minimised, the dialog comes back with what was typed.
    if (!event->spontaneous()) {
        Q_EMIT distanceTyped(0, {});
        Q_EMIT rowsForeseen({});
        Q_EMIT shownChanged(false);
    }
    QDialog::hideEvent(event);
}

void frmDataEdit::changeEvent(QEvent* event) {
    // The survey may have changed while another window was in front.
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        followRowLimit();
        showInForce();
    }
    QDialog::changeEvent(event);
}

void frmDataEdit::Option_Click(const Operation& operation) {
    const Operation* const chosen = entries().operation;
    for (const Input& input : operation.inputs)
        for (QWidget* widget : widgetsOf(input))
            widget->setVisible(chosen == &operation);
    if (chosen == &operation) operation.inputs.first().box->setFocus();
    // One option is unchecked when another is chosen, which looks ahead itself.
    if (chosen == &operation || chosen == nullptr) lookAhead();
}

void frmDataEdit::Command1_Click() {
    const Entries entered = entries();
    if (entered.operation == nullptr) return;
    if (theSurvey().NumSites > 0) return (this->*entered.operation->run)(entered);
    tellNoSitesLeft();
    close();
}

void frmDataEdit::joinRows(const Entries& entered) {
    const RowPairEntry entry = checkRowPair(entered.first, entered.second, theSurvey().NumRows);
    if (refused(entry.fault, true)) return;
    theJournal().perform(joinOf(entry.row1, entry.row2),
                         [&](Survey& survey) { return Joint_Row(survey, entry.row1, entry.row2); });
    Q_EMIT surveyChanged();
    close();
}

void frmDataEdit::deleteRow(const Entries& entered) {
    const RowEntry entry = checkRow(entered.first, theSurvey().NumRows);
    if (refused(entry.fault, false)) return;
    theJournal().perform(deletionOfRow(theSurvey(), entry.row),
                         [&](Survey& survey) { return Delete_Row(survey, entry.row); });
    Q_EMIT surveyChanged();
    if (theSurvey().NumSites == 0) tellNoSitesLeft();
    close();
}

void frmDataEdit::tellNoSitesLeft() {
    tell(this, u"There is no more point left in the file!"_s);
    Q_EMIT noSitesLeft();
}

void frmDataEdit::recalculate(const Entries& entered) {
    const Operation& operation = *entered.operation;
    const DistanceEntry entry = checkDistance(entered.first);
    if (refused(entry.fault, false)) return;
    const RowDetection outcome = findRows(this, operation.distanceMode, entry.distance);
    Q_EMIT surveyChanged();
    if (outcome == RowDetection::kAssigned) {
        Q_EMIT rowsRecalculated();
        close();
        return;
    }
    tell(this, QString::fromLatin1(kTooManyRows));
    followRowLimit();
    operation.inputs.first().box->setFocus();
    operation.inputs.first().box->selectAll();
}

// Says what is wrong with an entry and puts the dialog back to how it opened; false when nothing is.
bool frmDataEdit::refused(EntryFault fault, bool twoNumbers) {
    if (fault == EntryFault::kNone) return false;
    tell(this, QString::fromLatin1(entryMessage(fault, twoNumbers)));
    Form_Load();
    return true;
}

}  // namespace tessel
