// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmAdjustData.h"

#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "base/session.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "desktop/Windows.h"
#include "journal/journal.h"

#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 113;

void showCaption(QLabel* label, const QString& text) {
    label->setText(text);
    label->repaint();
}

template <typename Number>
void showValue(QLabel* label, const std::optional<Number>& value, int decimals) {
    showCaption(label, value ? QString::fromStdString(pictureFormat(static_cast<double>(*value), decimals))
                             : u"n/a"_s);
}

struct SummaryLabels {
    QLabel *n, *u, *s, *m, *x, *z;
};

void showSummary(const SummaryLabels& labels, const ReadingSummary& summary) {
    showValue(labels.n, std::optional(summary.sites), 0);
    showValue(labels.u, summary.mean, 2);
    showValue(labels.s, summary.sd, 2);
    showValue(labels.m, summary.minimum, 2);
    showValue(labels.x, summary.maximum, 2);
    showValue(labels.z, summary.notPositive, 0);
}

template <typename Action>
std::exception_ptr failureOf(Action action) {
    try {
        action();
    } catch (...) {
        return std::current_exception();
    }
    return {};
}

}  // namespace

frmAdjustData::frmAdjustData(QWidget* parent) : QDialog(parent) {
    setupUi(this);
    for (QWidget* entry : QList<QWidget*>{txtAdjEC1, txtAdjEC2, lblEM1, txtScale1, lblEM2, txtScale2})
        keepRoomWhenHidden(*entry);
    for (QLineEdit* box : {txtAdjEC1, txtAdjEC2, txtScale1, txtScale2})
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(u"-00000.00000"_s));
    for (QAbstractButton* option : QList<QAbstractButton*>{optAddEM1, optAddEM2, optScale})
        colourWhileChecked(*option);
    const auto onChoice = [this](QRadioButton* option, auto choose) {
        auto chosen = guarded(this, [this, choose] { (this->*choose)(); });
        connect(option, &QRadioButton::toggled, this, [chosen](bool checked) mutable {
            if (checked) chosen();
        });
    };
    onChoice(optAddEM1, &frmAdjustData::chooseAddEM1);
    onChoice(optAddEM2, &frmAdjustData::chooseAddEM2);
    onChoice(optScale, &frmAdjustData::chooseScale);
    connect(cmdCompute, &QPushButton::clicked, this, guarded(this, [this] { cmdCompute_Click(); }));
    connect(cmdFinished, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
    offerHelp(*this, kHelpDocument, cmdHelp);

    chooseAddEM1();
    showTotals();
    try {
        refresh();
    } catch (const RunTimeError& error) {
        errorOfOpening_.emplace(error);
    }
}

void frmAdjustData::chooseAddEM1() {
    showEntries({txtAdjEC1}, txtAdjEC1);
}

void frmAdjustData::chooseAddEM2() {
    showEntries({txtAdjEC2}, txtAdjEC2);
}

void frmAdjustData::chooseScale() {
    if (theSurvey().TwoEMColumns)
        showEntries({lblEM1, txtScale1, lblEM2, txtScale2}, txtScale1);
    else
        showEntries({lblEM1, txtScale1}, txtScale1);
    txtScale1->setText(u"1.000"_s);
    txtScale2->setText(u"1.000"_s);
    txtScale1->selectAll();
}

// Empties every box, shows those that belong to the option chosen and sets the focus on the first.
void frmAdjustData::showEntries(const QList<QWidget*>& shown, QLineEdit* first) {
    cmdCompute->show();
    for (QLineEdit* box : {txtAdjEC1, txtAdjEC2, txtScale1, txtScale2})
        box->clear();
    for (QWidget* entry : QList<QWidget*>{txtAdjEC1, txtAdjEC2, lblEM1, txtScale1, lblEM2, txtScale2})
        entry->setVisible(shown.contains(entry));
    first->setFocus(Qt::TabFocusReason);
    // An option chosen with the arrow keys takes the focus once more after it has been checked.
    const auto takeOver = [this, first] {
        if (qobject_cast<QRadioButton*>(focusWidget()) && first->isVisibleTo(this))
            first->setFocus(Qt::TabFocusReason);
    };
    QMetaObject::invokeMethod(this, takeOver, Qt::QueuedConnection);
}

AdjustmentRequest frmAdjustData::request() const {
    AdjustmentRequest request;
    if (optAddEM2->isChecked()) request.kind = AdjustmentKind::kAddToEM2;
    if (optScale->isChecked()) request.kind = AdjustmentKind::kScale;
    request.shift1 = txtAdjEC1->text().toStdString();
    request.shift2 = txtAdjEC2->text().toStdString();
    request.factor1 = txtScale1->text().toStdString();
    request.factor2 = txtScale2->text().toStdString();
    return request;
}

// Whatever stops the adjustment, those who show readings hear of a change before the user is told.
void frmAdjustData::cmdCompute_Click() {
    std::exception_ptr failure;
    std::string_view refusal;
    bool changed = false;
    {
        const Hourglass hourglass(this);
        lblNotice->clear();
        Adjustment done = adjustment(theSurvey(), request());
        failure = done.failure;
        refusal = done.refusal;
        changed = done.changesReadings();
        if (changed) apply(std::move(done));
        if (!failure && refusal.empty()) failure = failureOf([this] { refresh(); });
    }
    if (changed) Q_EMIT readingsChanged();
    if (failure) std::rethrow_exception(failure);
    if (!refusal.empty())
        tell(this, QString::fromUtf8(refusal.data(), static_cast<qsizetype>(refusal.size())));
}

// Said before anything else can fail: nobody shall apply an adjustment again because its figures are missing.
void frmAdjustData::apply(Adjustment adjustment) {
    const QString step = QString::fromStdString(stepText(adjustment.applied));
    theJournal().perform(describe(adjustment),
                         [&](Survey& survey) { return adjustReadings(survey, std::move(adjustment)); });
    showCaption(lblNotice, step);
    showTotals();
    // Whoever presses Enter once more ends the work and does not adjust again.
    cmdFinished->setFocus();
}

void frmAdjustData::showTotals() {
    showCaption(lblTotals, QString::fromStdString(totalsText(theSurvey().applied, theSurvey().TwoEMColumns)));
}

void frmAdjustData::refresh() {
    const EMSummary summary = summariseReadings(theSurvey());
    showSummary({lble1n, lble1u, lble1s, lble1m, lble1x, lble1z}, summary.em1);
    if (summary.em2) {
        showSummary({lble2n, lble2u, lble2s, lble2m, lble2x, lble2z}, *summary.em2);
        showValue(lblRatio, summary.slope, 3);
        showValue(lblShift, summary.shift, 1);
    } else {
        showNoEM2();
    }
    if (summary.error) throw RunTimeError(*summary.error);
}

void frmAdjustData::showNoEM2() {
    for (QLabel* label : {lble2n, lble2u, lble2s, lble2m, lble2x, lble2z, lblRatio, lblShift})
        showCaption(label, u"n/a"_s);
    optAddEM2->setEnabled(false);
}

// An error met while opening is reported over the window it concerns.
void frmAdjustData::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (errorOfOpening_)
        QMetaObject::invokeMethod(this, guarded(this, [this] { reportOnceShown(); }), Qt::QueuedConnection);
}

void frmAdjustData::reportOnceShown() {
    if (!errorOfOpening_) return;
    const RunTimeError error = *std::exchange(errorOfOpening_, std::nullopt);
    throw RunTimeError(error);
}

}  // namespace tessel
